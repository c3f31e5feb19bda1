#pragma once
#include "component/command/memory/CCmdMemory.h"

// "memory_fill <start> <end> <data> [<mode>] [<verify>]": writes one value
// over a range. A range that is no multiple of the value's size loses its
// tail rather than being written in part.
class CCmdMemoryFill : public CCmdMemory
{
public:
    struct Args {
        AddressRange Range;
        // One unit of the value, in this system's byte order.
        std::vector<uint8_t> Value;
        AccessSize Size;
        VariantBool Verify;
    };

    CCmdMemoryFill(IQServiceRegistry* host, MemoryChanged memoryChanged);
    static Parsed<Args> Parse(const std::string& text, AddressRange map, const CCmdEvaluator& evaluator);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};
