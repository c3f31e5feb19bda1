#include "workbench/ConsoleMessageBox.h"

#include <cctype>
#include <string_view>

#include "boundary/Ids.h"
#include "workbench/TerminalText.h"

namespace
{

const char* PrefixOf(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::Stop:
        return "Error: ";
    case MessageIcon::Warning:
        return "Warning: ";
    case MessageIcon::Information:
    case MessageIcon::Question:
        return "";
    }
    return nullptr;
}

const char* DefaultText(bool yes)
{
    return yes ? "y (default)" : "n (default)";
}

} // namespace

ConsoleMessageBox::ConsoleMessageBox(std::ostream& out, std::istream* in, bool interactive)
    : out_(out), in_(in), interactive_(interactive)
{
}

HRESULT ConsoleMessageBox::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::MessageBoxService}, iid, static_cast<IQMessageBox*>(this), out);
}

HRESULT ConsoleMessageBox::ShowMessage(const std::string& text, MessageIcon icon)
{
    const char* prefix = PrefixOf(icon);
    if (prefix == nullptr)
        return E_INVALIDARG;
    if (icon == MessageIcon::Stop)
        ++errors_;
    // A closing newline ends the last line rather than starting an empty one.
    std::string_view rest = text;
    if (!rest.empty() && rest.back() == '\n')
        rest.remove_suffix(1);
    for (;;) {
        const size_t end = rest.find('\n');
        std::string_view line = rest.substr(0, end);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        out_ << prefix << TerminalText::Visible(line) << '\n';
        if (end == std::string_view::npos)
            break;
        rest.remove_prefix(end + 1);
    }
    out_.flush();
    return out_ ? S_OK : E_FAIL;
}

HRESULT ConsoleMessageBox::AskYesNo(const std::string& text, VariantBool defaultAnswer, VariantBool& answer)
{
    const bool fallback = FromVariantBool(defaultAnswer);
    answer = ToVariantBool(fallback);
    if (!Interactive()) {
        out_ << text << " [y/n] " << DefaultText(fallback) << '\n';
        out_.flush();
        return S_OK;
    }
    for (int attempt = 1; attempt <= kAttempts; ++attempt) {
        out_ << text << " [y/n] ";
        out_.flush();
        std::string line;
        if (!std::getline(*in_, line)) {
            // The user's Enter never came, so finish the prompt line ourselves.
            out_ << DefaultText(fallback) << '\n';
            return S_OK;
        }
        switch (Classify(line)) {
        case Reply::Yes:
            answer = VARIANT_TRUE;
            return S_OK;
        case Reply::No:
            answer = VARIANT_FALSE;
            return S_OK;
        case Reply::Default:
            return S_OK;
        case Reply::Invalid:
            out_ << "Please answer y or n.\n";
            break;
        }
    }
    out_ << "No valid answer; taking " << DefaultText(fallback) << '\n';
    out_.flush();
    return S_OK;
}

ConsoleMessageBox::Reply ConsoleMessageBox::Classify(std::string line)
{
    const auto blank = [](unsigned char c) { return std::isspace(c) != 0; };
    while (!line.empty() && blank(static_cast<unsigned char>(line.back())))
        line.pop_back();
    size_t start = 0;
    while (start < line.size() && blank(static_cast<unsigned char>(line[start])))
        ++start;
    line.erase(0, start);
    for (char& c : line)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (line.empty())
        return Reply::Default;
    if (line == "y" || line == "yes")
        return Reply::Yes;
    if (line == "n" || line == "no")
        return Reply::No;
    return Reply::Invalid;
}
