#include "workbench/TerminalText.h"

#include <cstdio>

namespace TerminalText
{

std::string Lines(std::string_view text)
{
    std::string lines;
    lines.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i)
        if (!(text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n'))
            lines += text[i];
    return lines;
}

std::string Visible(std::string_view text)
{
    std::string shown;
    shown.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c == '\n' || c == '\t') {
            shown += text[i];
        } else if (c < 0x20 || c == 0x7F) {
            shown += '^';
            shown += static_cast<char>(c ^ 0x40);
        } else if (c == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) >= 0x80 &&
                   static_cast<unsigned char>(text[i + 1]) <= 0x9F) {
            char code[8];
            std::snprintf(code, sizeof code, "\\u%04X", static_cast<unsigned char>(text[++i]));
            shown += code;
        } else {
            shown += text[i];
        }
    }
    return shown;
}

} // namespace TerminalText
