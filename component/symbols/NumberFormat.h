#pragma once
#include <cstdint>
#include <string>

// The component's two families of number text.
//
// The prefix family (H' D' O' B', fixed width, upper-case hexadecimal) is what
// the evaluator of a platform driven by function name writes, and so what the
// command line shows there. The value family (0x D' O' B', 64-bit values,
// optional padding) is what a variable's text in a disassembly view uses.

// A printf format for one unsigned 32-bit value passed as unsigned long, zero
// filled to the width that the largest value of `size` bytes needs in that
// radix. Radix 8, 10 or 16 and size 1 to 8; anything else gives an empty
// format, which callers take as failure.
std::string MakeNumberFormat(uint32_t size, int32_t radix, bool prefixed);

// A format of MakeNumberFormat filled in; an empty format gives an empty text.
std::string ApplyNumberFormat(const std::string& format, uint32_t value);

// The lowest `bits` bits of value, most significant first; at most 32 digits.
std::string ValueToBinaryText(uint32_t value, uint32_t bits);

// Kinds of value as the platform's variable lookup gives them.
namespace ValueKind
{
constexpr int32_t Boolean = 0;
constexpr int32_t Signed = 1;
constexpr int32_t Unsigned = 2;
constexpr int32_t Floating = 3;
constexpr int32_t Text = 6;
constexpr int32_t TextPointer = 13;
} // namespace ValueKind

// The number text of the value family. Kind Signed sign-extends values of 8,
// 16 and 32 bits first. A radix other than 2, 8, 10 and 16 gives an empty text.
std::string FormatInteger(uint64_t value, int32_t kind, int32_t radix, uint32_t bits, bool padded);

// The text of a value of `size` bytes in memory, its first byte the most
// significant. Kinds without a text, null data, and number kinds wider than
// 64 bits give an empty text.
std::string FormatValue(const uint8_t* data, int32_t kind, int32_t radix, uint32_t size, bool padded);
