#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "boundary/Variant.h"

// Conversions between the boundary's list variants and plain lists. A variant of
// another type, an empty variant, or an array holding an element of the wrong
// type converts to an empty list without a message.
namespace CComUtils
{

Variant StringListToVariant(const std::vector<std::string>& list);
std::vector<std::string> VariantToStringList(const Variant& v);

Variant NumberListToVariant(const std::vector<uint32_t>& list);
std::vector<uint32_t> VariantToNumberList(const Variant& v);

// Stored records are flattened into a string list, `width` strings a record. A
// length that does not divide by `width` reads as no records at all.
Variant RecordsToVariant(const std::vector<std::vector<std::string>>& records);
std::vector<std::vector<std::string>> VariantToRecords(const Variant& v, size_t width);

} // namespace CComUtils
