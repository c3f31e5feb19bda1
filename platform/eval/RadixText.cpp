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

std::string RadixText::Signed(int64_t value, int radix)
{
    if (value >= 0)
        return Unsigned(static_cast<uint64_t>(value), radix);
    // Negating in unsigned arithmetic keeps the most negative value defined.
    return "-" + Unsigned(0 - static_cast<uint64_t>(value), radix);
}
