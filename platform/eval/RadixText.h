#pragma once
#include <cstdint>
#include <string>

// Numbers written the way the evaluator reads them back: a radix prefix
// (H' D' O' B') and upper-case digits. Widths carry no leading zeros unless a
// minimum digit count is asked for, or a fixed width by the value's size.
class RadixText
{
public:
    static bool IsRadix(int radix) { return radix == 2 || radix == 8 || radix == 10 || radix == 16; }

    // A radix failing IsRadix is written as sixteen rather than trusted.
    static std::string Unsigned(uint64_t value, int radix, int minDigits = 1, bool prefix = true);
    // The digits a value of `size` bytes takes at least, so that columns of
    // one size line up: hexadecimal 2 a byte, decimal (size * 12 + 4) / 5,
    // octal (size * 26 + 9) / 10, binary 8 a byte.
    static int Width(int radix, int size);
    // Unsigned with the width of `size`; a wider value keeps all its digits.
    static std::string Fixed(uint64_t value, int radix, int size, bool prefix = true)
    {
        return Unsigned(value, radix, Width(radix, size), prefix);
    }
};
