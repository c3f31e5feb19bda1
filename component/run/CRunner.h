#pragma once
#include "boundary/interfaces/Debugger.h"
#include "boundary/interfaces/Workbench.h"

class CDebuggerState;
class CPCBreakManager;

// Run control of the session. Lives from the state's construction to its
// destruction; it answers the runner versions it implements and no others.
class CRunner : public IQRunner
{
public:
    CRunner(CDebuggerState& state, CPCBreakManager& breaks);
    virtual ~CRunner() = default;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    void SetRegistry(IQServiceRegistry* registry) { registry_ = registry; }
    void DropRegistry() { registry_ = nullptr; }
    IQServiceRegistry* Registry() const { return registry_; }
    bool IsRunning() const { return false; }

private:
    CDebuggerState& state_;
    CPCBreakManager& breaks_;
    IQServiceRegistry* registry_ = nullptr;
};
