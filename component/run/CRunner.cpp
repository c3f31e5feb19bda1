#include "component/run/CRunner.h"

#include "boundary/Ids.h"
#include "component/util/ObjectSerial.h"

CRunner::CRunner(CDebuggerState& state, CPCBreakManager& breaks) : state_(state), breaks_(breaks) {}

HRESULT CRunner::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQRunner}, iid, static_cast<IQRunner*>(this), out);
}

void CRunner::OnStopped()
{
    runState_ = RUN_HALTED;
    stepsLeft_ = 0;
}

void CRunner::OnDownloadOver()
{
    if (runState_ == RUN_DOWNLOADING)
        runState_ = RUN_HALTED;
}

HRESULT CRunner::Go()
{
    return QE_NOT_IMPLEMENTED;
}
HRESULT CRunner::ResetGo()
{
    return QE_NOT_IMPLEMENTED;
}
HRESULT CRunner::Reset()
{
    return QE_NOT_IMPLEMENTED;
}
HRESULT CRunner::Halt()
{
    return QE_NOT_IMPLEMENTED;
}
HRESULT CRunner::Step(int32_t, int32_t, bool, bool, bool)
{
    return QE_NOT_IMPLEMENTED;
}
