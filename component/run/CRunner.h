#pragma once
#include "boundary/interfaces/Debugger.h"
#include "boundary/interfaces/Workbench.h"
#include "component/run/RunState.h"

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

    int32_t GetRunState() const { return runState_; }
    void SetRunState(int32_t state) { runState_ = state; }
    bool IsRunning() const { return runState_ != RUN_HALTED; }
    bool ResetGoInProgress() const { return resetGoInProgress_; }
    bool ResetInProgress() const { return resetInProgress_; }
    // Steps still to do in a repeated step.
    int32_t StepsLeft() const { return stepsLeft_; }

    // The stop of a run or step the runner started: back to halted.
    void OnStopped();
    // The platform has finished a download it carried on by itself.
    void OnDownloadOver();

    // Target control. The platform's run interfaces are not attached in this
    // build, so these refuse with "Not implemented".
    HRESULT Go();
    HRESULT ResetGo();
    HRESULT Reset();
    HRESULT Halt();
    HRESULT Step(int32_t count, int32_t rate, bool over, bool out, bool source);

private:
    CDebuggerState& state_;
    CPCBreakManager& breaks_;
    IQServiceRegistry* registry_ = nullptr;
    int32_t runState_ = RUN_HALTED;
    int32_t stepsLeft_ = 0;
    bool resetGoInProgress_ = false;
    bool resetInProgress_ = false;
};
