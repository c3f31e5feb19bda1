#include "component/symbols/CLabelManager.h"

#include "boundary/Ids.h"
#include "component/util/ObjectSerial.h"

uint64_t CLabelManager::NextSerial()
{
    return NextObjectSerial();
}

HRESULT CLabelManager::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQLabelManager, Ids::IQLabelManager2}, iid,
                      static_cast<IQLabelManager2*>(this), out);
}
