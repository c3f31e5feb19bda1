#include "component/symbols/CLabelManager.h"

#include "boundary/Ids.h"
#include "component/util/ObjectSerial.h"

CLabelManager::CLabelManager(IQServiceRegistry* registry, CDebuggerState& owner)
    : registry_(registry), owner_(owner), serial_(NextObjectSerial())
{
    if (registry_ == nullptr)
        return;
    registry_->RegisterService(Ids::IQLabelManager, static_cast<IQLabelManager2*>(this));
    registry_->RegisterService(Ids::IQLabelManager2, static_cast<IQLabelManager2*>(this));
    registry_->RegisterService(Ids::IQLabelManagerInternal, static_cast<IQLabelManagerInternal*>(this));
}

CLabelManager::~CLabelManager()
{
    if (registry_ == nullptr)
        return;
    registry_->UnregisterService(Ids::IQLabelManagerInternal, static_cast<IQLabelManagerInternal*>(this));
    registry_->UnregisterService(Ids::IQLabelManager2, static_cast<IQLabelManager2*>(this));
    registry_->UnregisterService(Ids::IQLabelManager, static_cast<IQLabelManager2*>(this));
}

HRESULT CLabelManager::QueryInterface(const Guid& iid, void** out)
{
    if (iid == Ids::IQLabelManagerInternal)
        return AnswerFrom({iid}, iid, static_cast<IQLabelManagerInternal*>(this), out);
    return AnswerFrom({Ids::IUnknown, Ids::IQLabelManager, Ids::IQLabelManager2}, iid,
                      static_cast<IQLabelManager2*>(this), out);
}

HRESULT CLabelManager::SelectLabel(std::string& name)
{
    name.clear();
    return E_FAIL;
}

bool CLabelManager::GetEntryLabelAddress(uint32_t module, TargetAddress& address)
{
    LabelRecord record;
    record.Name = "_main";
    if (!FindLabelInModule(record, module, false))
        return false;
    address = record.Address;
    return true;
}
