#pragma once
#include <cstdint>

#include "boundary/TargetAddress.h"

// Flags of the variant kind are 16 bits at an interface: 0 and 0xFFFF.
// Inside the component a flag is a bool.
using VariantBool = uint16_t;
constexpr VariantBool VARIANT_FALSE = 0;
constexpr VariantBool VARIANT_TRUE = 0xFFFF;

constexpr VariantBool ToVariantBool(bool b)
{
    return b ? VARIANT_TRUE : VARIANT_FALSE;
}
constexpr bool FromVariantBool(VariantBool v)
{
    return v != 0;
}

using AccessSize = uint16_t;
