#pragma once
#include "boundary/interfaces/Debugger.h"
#include "boundary/interfaces/Workbench.h"

class CDebuggerState;

// Keeps the session's program-counter breakpoints for the life of the session.
// Lives from the state's construction to its destruction.
class CPCBreakManager : public IQPCBreakManager
{
public:
    CPCBreakManager(CDebuggerState& state, int32_t mode);
    virtual ~CPCBreakManager() = default;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    IQPCBreakManager* Primary() { return this; }
    void SetRegistry(IQServiceRegistry* registry) { registry_ = registry; }
    void DropRegistry() { registry_ = nullptr; }
    IQServiceRegistry* Registry() const { return registry_; }

    // The platform's symbols changed, or a download ended: breakpoints are
    // planted again from what the user asked for. Without breakpoints there is
    // nothing to plant.
    void OnSymbolsChanged() {}
    void ReplantAll() {}
    // The target came or is going: breakpoints are planted or taken back.
    void OnTargetAttached() {}
    void OnTargetDetached() {}

private:
    CDebuggerState& state_;
    int32_t mode_;
    IQServiceRegistry* registry_ = nullptr;
};
