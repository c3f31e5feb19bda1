#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "boundary/Variant.h"

// The stored form of a Variant. Every field of the Variant is kept, not only
// the ones its type code suggests, so whatever a caller builds reads back equal.
//
//   blob   := 'T' 'V' version(1 byte, = 1) node
//   node   := varint type, fields(1 byte),
//             [varint length, bytes]  when fields & 1 (text)
//             [varint number]         when fields & 2 (number)
//             [varint count, node...] when fields & 4 (elements)
//   varint := unsigned LEB128, at most 5 bytes, value within 32 bits
//
// A field is written only when it differs from its default, so an empty
// Variant takes 5 bytes and an empty array of strings 6. A Variant can carry a
// text only as a string and a number only as an unsigned, so the decoder
// refuses either field on another type, as it refuses an unknown version or
// field bit, a type above 16 bits, a length or count beyond the bytes left,
// more than kMaxDepth levels of arrays below the top and bytes after the node.
namespace VariantCodec
{

inline constexpr uint8_t kVersion = 1;
inline constexpr int kMaxDepth = 32;

// Nothing for a Variant the decoder would refuse: nested deeper than kMaxDepth,
// or a text or list longer than 32 bits can count.
std::optional<std::vector<uint8_t>> Encode(const Variant& value);

// Nothing, and the reason in `error`, for a blob that is not a whole stored Variant.
std::optional<Variant> Decode(std::span<const uint8_t> blob, std::string& error);

} // namespace VariantCodec
