#pragma once
#include "component/command/memory/CCmdMemory.h"

// "memory_compare <start> <end> <destination> [<mode>]": compares a range
// with one of the same length elsewhere. A difference is a finding, not an
// error of the command, so it comes back with S_OK.
class CCmdMemoryCompare : public CCmdMemory
{
public:
    struct Args {
        TargetAddress Start, End, Destination;
        AccessSize Size;
    };

    CCmdMemoryCompare(IQServiceRegistry* host, MemoryChanged memoryChanged);
    static Parsed<Args> Parse(const std::string& text, AddressRange map, const CCmdEvaluator& evaluator);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};
