#pragma once
#include <memory>
#include <utility>
#include <vector>

#include "boundary/Event.h"
#include "boundary/interfaces/Disassembly.h"
#include "boundary/interfaces/Workbench.h"
#include "component/disassembly/CDisassemble.h"

class CDebuggerState;

// One disassembly server per view, in the order the views asked for them, and
// the forwarding of events to them.
class ViewServers
{
public:
    // The server's face for the view; null when there is no view.
    IQDisassemblyClient* Create(CDebuggerState& state, IQServiceRegistry* registry,
                                IQDisassemblyDataClient* view);
    bool Release(const IUnknown* view);
    void Clear() { servers_.clear(); }

    // Two passes: every server drops what the event made stale before any of
    // them tells its view, so that no view redraws from a server behind.
    void Forward(const Event& event);
    // Bit 0: a step sequence is under way; bit 1: it runs without refresh.
    void SetDisplayFlags(uint32_t flags);

private:
    std::vector<std::pair<IQDisassemblyDataClient*, std::unique_ptr<CDisassemble>>> servers_;
};
