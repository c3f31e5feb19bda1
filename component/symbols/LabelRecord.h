#pragma once
#include <cstdint>
#include <string>

#include "boundary/TargetAddress.h"

// The public form of a label, as the label interfaces pass it. The name is
// UTF-8 like all text of the system, so the one string serves both the
// comparisons and the callers that want the name.
struct LabelRecord {
    std::string Name;
    TargetAddress Address{};
    // Kind and Extra are opaque and carried unchanged; the labels this system
    // makes by itself have kind 2 and extra 0.
    uint32_t Kind = 2;
    uint32_t Extra = 0;
};
