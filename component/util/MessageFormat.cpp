#include "component/util/MessageFormat.h"

#include <cstdio>
#include <cstring>
#include <vector>

#include "component/frame/StringTable.h"

namespace MessageFormat
{

std::string TranslateFormat64(std::string_view format)
{
    std::string out;
    out.reserve(format.size());
    size_t i = 0;
    while (i < format.size()) {
        char c = format[i++];
        out += c;
        if (c != '%')
            continue;
        if (i < format.size() && format[i] == '%') {
            out += format[i++];
            continue;
        }
        // Flags, width and precision sit between '%' and the length prefix.
        while (i < format.size() && std::strchr("-+ #0123456789.*", format[i]) != nullptr)
            out += format[i++];
        if (format.substr(i, 3) == "I64") {
            out += "ll";
            i += 3;
        }
    }
    return out;
}

std::string FormatV(std::string_view format, va_list args)
{
    std::string translated = TranslateFormat64(format);
    va_list copy;
    va_copy(copy, args);
    // The formats come from the string table, never from the user.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    int length = std::vsnprintf(nullptr, 0, translated.c_str(), copy);
    va_end(copy);
    if (length < 0)
        return {};
    std::vector<char> buffer(static_cast<size_t>(length) + 1);
    std::vsnprintf(buffer.data(), buffer.size(), translated.c_str(), args);
#pragma GCC diagnostic pop
    return std::string(buffer.data(), static_cast<size_t>(length));
}

std::string Format(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    std::string text = FormatV(format, args);
    va_end(args);
    return text;
}

} // namespace MessageFormat

std::string FormatMessageText(uint32_t stringId, ...)
{
    std::string format = StringTable::Load(stringId);
    va_list args;
    va_start(args, stringId);
    std::string text = MessageFormat::FormatV(format, args);
    va_end(args);
    return text;
}
