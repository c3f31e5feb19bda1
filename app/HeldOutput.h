#pragma once
#include <streambuf>
#include <string>

// Text held back from the terminal until the console can print it above the
// line being typed rather than through it.
class HeldOutput final : public std::streambuf
{
public:
    // Everything written since the last call.
    std::string Take()
    {
        std::string text;
        text.swap(text_);
        return text;
    }

protected:
    int_type overflow(int_type c) override
    {
        if (c != traits_type::eof())
            text_ += static_cast<char>(c);
        return traits_type::not_eof(c);
    }
    std::streamsize xsputn(const char* s, std::streamsize n) override
    {
        text_.append(s, static_cast<size_t>(n));
        return n;
    }

private:
    std::string text_;
};
