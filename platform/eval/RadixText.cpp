#include "platform/eval/RadixText.h"

#include <algorithm>

namespace
{

const char* PrefixOf(int radix)
{
    switch (radix) {
    case 16:
        return "H'";
    case 10:
        return "D'";
    case 8:
        return "O'";
    default:
        return "B'";
    }
}

} // namespace

std::string RadixText::Unsigned(uint64_t value, int radix, int minDigits, bool prefix)
{
    static const char kDigits[] = "0123456789ABCDEF";
    if (!IsRadix(radix))
        radix = 16;
    const auto base = static_cast<uint64_t>(radix);
    std::string digits;
    do {
        digits.push_back(kDigits[value % base]);
        value /= base;
    } while (value != 0);
    while (static_cast<int>(digits.size()) < minDigits)
        digits.push_back('0');
    std::reverse(digits.begin(), digits.end());
    return prefix ? PrefixOf(radix) + digits : digits;
}

int RadixText::Width(int radix, int size)
{
    switch (radix) {
    case 2:
        return size * 8;
    case 8:
        return (size * 26 + 9) / 10;
    case 10:
        return (size * 12 + 4) / 5;
    default:
        return size * 2;
    }
}
