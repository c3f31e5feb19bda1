#include "workbench/store/NameRules.h"

namespace NameRules
{
namespace
{

// The length of the UTF-8 sequence starting at `i`, or 0 when it is not one:
// overlong forms, surrogates and values past U+10FFFF included.
size_t SequenceLength(std::string_view s, size_t i)
{
    const auto byte = [&](size_t k) { return static_cast<unsigned char>(s[k]); };
    const unsigned char c = byte(i);
    if (c < 0x80)
        return 1;
    size_t length = c >= 0xC2 && c <= 0xDF ? 2 : c >= 0xE0 && c <= 0xEF ? 3 : c >= 0xF0 && c <= 0xF4 ? 4 : 0;
    if (length == 0 || i + length > s.size())
        return 0;
    for (size_t k = 1; k < length; ++k)
        if ((byte(i + k) & 0xC0) != 0x80)
            return 0;
    const unsigned char second = byte(i + 1);
    if ((c == 0xE0 && second < 0xA0) || (c == 0xED && second > 0x9F) || (c == 0xF0 && second < 0x90) ||
        (c == 0xF4 && second > 0x8F))
        return 0;
    return length;
}

} // namespace

std::string FoldCase(std::string_view name)
{
    std::string folded(name);
    for (char& c : folded)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return folded;
}

bool Check(std::string_view what, std::string_view name, std::string& error)
{
    const std::string The = "The " + std::string(what) + " name ";
    if (name.empty()) {
        error = "A " + std::string(what) + " needs a name";
        return false;
    }
    if (name.size() > kMaxLength) {
        error = The + "is too long (" + std::to_string(name.size()) + " bytes, at most " +
                std::to_string(kMaxLength) + ")";
        return false;
    }
    if (name == "." || name == "..") {
        error = The + "may not be '.' or '..'";
        return false;
    }
    for (size_t i = 0; i < name.size();) {
        const size_t length = SequenceLength(name, i);
        if (length == 0) {
            error = The + "is not valid UTF-8";
            return false;
        }
        const auto c = static_cast<unsigned char>(name[i]);
        const bool c1 = c == 0xC2 && static_cast<unsigned char>(name[i + 1]) <= 0x9F;
        if (c < 0x20 || c == 0x7F || c1) {
            error = The + "may not hold control characters";
            return false;
        }
        if (c == '/' || c == '\\') {
            error = The + "may not hold '/' or '\\'";
            return false;
        }
        i += length;
    }
    return true;
}

} // namespace NameRules
