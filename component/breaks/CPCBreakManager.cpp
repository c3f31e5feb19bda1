#include "component/breaks/CPCBreakManager.h"

#include "boundary/Ids.h"
#include "component/util/ObjectSerial.h"

CPCBreakManager::CPCBreakManager(CDebuggerState& state, int32_t mode) : state_(state), mode_(mode) {}

HRESULT CPCBreakManager::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQPCBreakManager, Ids::IQPCBreakManager2, Ids::IQPCBreakManager3},
                      iid, static_cast<IQPCBreakManager*>(this), out);
}
