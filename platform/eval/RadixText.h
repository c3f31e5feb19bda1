#pragma once
#include <cstdint>
#include <string>

// Numbers written the way the evaluator reads them back: a radix prefix
// (H' D' O' B') and upper-case digits. Widths carry no leading zeros unless a
// minimum digit count is asked for.
class RadixText
{
public:
    static bool IsRadix(int radix) { return radix == 2 || radix == 8 || radix == 10 || radix == 16; }

    // A radix failing IsRadix is written as sixteen rather than trusted.
    static std::string Unsigned(uint64_t value, int radix, int minDigits = 1, bool prefix = true);
    // A negative value is a minus sign before the prefixed magnitude, which
    // reads back as the same value.
    static std::string Signed(int64_t value, int radix);
};
