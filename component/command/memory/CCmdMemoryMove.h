#pragma once
#include "component/command/memory/CCmdMemory.h"

// "memory_move <start> <end> <destination> [<verify>] [<mode>]": copies a
// range. Unlike its siblings it takes <verify> before <mode>.
class CCmdMemoryMove : public CCmdMemory
{
public:
    struct Args {
        TargetAddress Start, End, Destination;
        VariantBool Verify;
        AccessSize Size;
    };

    CCmdMemoryMove(IQServiceRegistry* host, MemoryChanged memoryChanged);
    static Parsed<Args> Parse(const std::string& text, AddressRange map, const CCmdEvaluator& evaluator);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};
