#pragma once
#include <cstddef>
#include <cstdint>

// Just enough Thumb decoding to walk instruction boundaries.
class ThumbCode
{
public:
    // 2 or 4: a first halfword of 0b11101, 0b11110 or 0b11111 in its top bits opens a
    // 32-bit instruction.
    static unsigned Length(uint16_t firstHalfword) { return (firstHalfword >> 11) >= 0x1D ? 4 : 2; }
    static uint16_t Halfword(const uint8_t* bytes) { return static_cast<uint16_t>(bytes[0] | bytes[1] << 8); }
    // Instructions of a block of code that start at offset `from` or later; the
    // boundaries are found by decoding from the block's first byte.
    static uint32_t Count(const uint8_t* block, size_t size, size_t from = 0);
};
