#pragma once
#include "component/command/memory/CCmdMemory.h"

// "memory_test <start> <end>": the platform's own test of a range. The test
// overwrites what it tests, so views are told even when it fails.
class CCmdMemoryTest : public CCmdMemory
{
public:
    struct Args {
        TargetAddress Start, End;
    };

    CCmdMemoryTest(IQServiceRegistry* host, MemoryChanged memoryChanged);
    static Parsed<Args> Parse(const std::string& text, AddressRange map, const CCmdEvaluator& evaluator);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};
