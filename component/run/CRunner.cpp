#include "component/run/CRunner.h"

#include "boundary/Ids.h"
#include "component/util/ObjectSerial.h"

CRunner::CRunner(CDebuggerState& state, CPCBreakManager& breaks) : state_(state), breaks_(breaks) {}

HRESULT CRunner::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQRunner}, iid, static_cast<IQRunner*>(this), out);
}
