#pragma once
#include <cstdint>
#include <vector>

#include "boundary/HResult.h"

class CDebuggerState;

// One command of the debug menu and toolbar; the ids are the workbench's.
struct DebugCommandRow {
    uint32_t id;
    const char* text; // empty for the workbench's own toolbar ids
};

// The debug commands as the workbench's menus and toolbars ask for them:
// whether each can run now, which entry of a group is marked, and what it
// does. The rules read the session as it is at each call; nothing is cached.
class DebugCommandTable
{
public:
    explicit DebugCommandTable(CDebuggerState& state) : state_(state) {}

    static const std::vector<DebugCommandRow>& Rows();
    bool IsEnabled(uint32_t id) const;
    // The present radix and the present step mode are marked.
    bool IsChecked(uint32_t id) const;
    // E_FAIL for a command that cannot run now or that the table does not hold.
    HRESULT Run(uint32_t id);

    // 0 automatic, 1 assembly, 2 source.
    int32_t StepMode() const { return stepMode_; }

private:
    bool Running() const;
    bool Connected() const;
    bool PlatformNamed() const;
    int32_t Radix() const;

    CDebuggerState& state_;
    int32_t stepMode_ = 0;
};
