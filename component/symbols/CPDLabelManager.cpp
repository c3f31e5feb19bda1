#include "component/symbols/CPDLabelManager.h"

#include "boundary/Ids.h"

HRESULT CPDLabelManager::OnPlatformAttached(IQServiceRegistry*)
{
    // The registry the platform attached to is the one this manager was made
    // with. Nothing of an earlier platform survives a new attachment.
    valueToSymbol_ = nullptr;
    symbolToValue_ = nullptr;
    if (auto* functions = GetServiceAs<IQPlatformFunctions>(registry_, Ids::IQPlatformFunctions)) {
        valueToSymbol_ = LookUpPlatformFunction<PlatformValToSymFn>(*functions, "LOAD_ValToSym");
        symbolToValue_ = LookUpPlatformFunction<PlatformSymToValFn>(*functions, "LOAD_SymToVal");
    }
    if (registry_ == nullptr)
        return E_FAIL;
    IUnknown* list = nullptr;
    const HRESULT hr = registry_->GetService(Ids::IQPlatformFreeRun, &list);
    list_ = Failed(hr) ? nullptr : static_cast<IQPlatformFreeRun*>(list);
    return hr;
}

HRESULT CPDLabelManager::GetLabelCopy(uint32_t index, LabelRecord& record)
{
    return list_ != nullptr ? list_->GetLabelCopy(index, record) : E_FAIL;
}

HRESULT CPDLabelManager::GetLabelPointer(uint32_t index, const LabelRecord*& record)
{
    return list_ != nullptr ? list_->GetLabelPointer(index, record) : E_FAIL;
}

HRESULT CPDLabelManager::GetLabelCount(uint32_t& count)
{
    return list_ != nullptr ? list_->GetLabelCount(count) : E_FAIL;
}

HRESULT CPDLabelManager::FindLabelByAddress(LabelRecord& record)
{
    if (valueToSymbol_ == nullptr)
        return E_FAIL;
    const char* name = valueToSymbol_(0, record.Address.Value());
    if (name == nullptr || *name == '\0')
        return E_FAIL;
    record.Name = name;
    return S_OK;
}

HRESULT CPDLabelManager::FindLabelByName(LabelRecord& record, int32_t)
{
    if (symbolToValue_ == nullptr)
        return E_FAIL;
    uint32_t value = 0;
    if (symbolToValue_(0, record.Name.c_str(), &value) == 0)
        return E_FAIL;
    record.Address = value;
    return S_OK;
}

HRESULT CPDLabelManager::GetRecordByNameIndex(uint32_t index, const LabelRecord*& record)
{
    return GetLabelPointer(index, record);
}

bool CPDLabelManager::FindLabelInModule(LabelRecord& record, uint32_t, bool exact)
{
    return !Failed(FindLabelByName(record, exact ? 1 : 0));
}
