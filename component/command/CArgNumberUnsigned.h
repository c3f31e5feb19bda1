#pragma once
#include <cstdint>

#include "component/command/CArgNumber.h"

// An unsigned number within inclusive limits. The limits are 64 bits wide
// even for 32-bit addresses, so that a value beyond the address space is
// caught as out of range rather than cut down to fit.
class CArgNumberUnsigned : public CArgNumber
{
public:
    CArgNumberUnsigned(bool required, int32_t radix, const CCmdEvaluator* evaluator, uint64_t defaultValue,
                       uint64_t minimum, uint64_t maximum, std::string name = {});

    // A quoted token counts as empty. An optional number that does not
    // evaluate hands its token on; a range error stops the line either way.
    bool Parse(const std::string& text, int32_t quoteKind) override;

    uint64_t Default;
    uint64_t Minimum;
    uint64_t Maximum;
    uint64_t Value;
};
