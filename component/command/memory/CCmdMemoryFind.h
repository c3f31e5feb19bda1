#pragma once
#include "component/command/memory/CCmdMemory.h"

// "memory_find <start> <end> <string> [<mode>]": looks for one value, given
// as a number, laid out most significant byte first whatever the target's
// byte order.
class CCmdMemoryFind : public CCmdMemory
{
public:
    struct Args {
        TargetAddress Start, End;
        std::vector<uint8_t> Pattern;
    };

    CCmdMemoryFind(IQServiceRegistry* host, MemoryChanged memoryChanged);
    static Parsed<Args> Parse(const std::string& text, AddressRange map, const CCmdEvaluator& evaluator);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;

private:
    // The value's bytes in the order they are searched for, or nothing when
    // its digits do not fit size bytes.
    static std::optional<std::vector<uint8_t>> Pattern(uint64_t value, AccessSize size);
};
