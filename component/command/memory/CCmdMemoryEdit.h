#pragma once
#include "component/command/memory/CCmdMemory.h"

// "memory_edit <address> [<mode>] [<verify>]": walks memory one unit a line.
// Each line is a new value, "^" to step back, an empty line to step on, or
// "." to stop; the prompt shows the unit's address and present value.
class CCmdMemoryEdit : public CCmdMemory
{
public:
    struct Args {
        TargetAddress Start;
        int32_t Mode;
        VariantBool Verify;
    };

    CCmdMemoryEdit(IQServiceRegistry* host, MemoryChanged memoryChanged);
    static Parsed<Args> Parse(const std::string& text, AddressRange map, const CCmdEvaluator& evaluator);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
    HRESULT Continue(const std::string& line, std::string& message, bool& continuing) override;

private:
    void BuildPrompt();
    // Moves to the next unit; false when it would leave the map.
    bool StepOn();
    void Finish(bool& continuing);

    int32_t Mode = -1;
    VariantBool Verify = VARIANT_TRUE;
    TargetAddress Current;
    TargetAddress Last;
    uint32_t UnitSize = 0;
    // Held for the length of one edit only.
    IQMemoryManagerCmdLine5* Manager = nullptr;
};
