#include "component/memory/CMemoryManager.h"

#include "boundary/Ids.h"
#include "component/util/ObjectSerial.h"

CMemoryManager::CMemoryManager(CDebuggerState& state) : state_(state), serial_(NextObjectSerial()) {}

HRESULT CMemoryManager::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQMemoryManager}, iid, static_cast<IQMemoryManager*>(this), out);
}
