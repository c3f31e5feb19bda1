#pragma once
#include "boundary/interfaces/Workbench.h"

class CDebuggerState;

// The memory pane of the workbench's status window: built when the state
// meets the workbench, destroyed before the state leaves it.
class CStatusMemoryPane
{
public:
    CStatusMemoryPane(CDebuggerState& state, IQServiceRegistry* registry) : state_(state), registry_(registry)
    {
    }
    CDebuggerState& State() const { return state_; }
    IQServiceRegistry* Registry() const { return registry_; }

private:
    CDebuggerState& state_;
    IQServiceRegistry* registry_;
};
