#include "component/symbols/CVELLabelManager.h"

#include "boundary/Ids.h"
#include "component/command/symbol/CCmdLabelSymbolAdd.h"
#include "component/command/symbol/CCmdLabelSymbolClear.h"
#include "component/command/symbol/CCmdLabelSymbolLoad.h"
#include "component/command/symbol/CCmdLabelSymbolSave.h"
#include "component/command/symbol/CCmdLabelSymbolView.h"
#include "component/util/MessageFormat.h"

namespace
{

// The answer of the index operations that hand out a pointer: 1 is no failure
// code, so a caller that only tests for negative results does not see it.
constexpr HRESULT kNoSuchIndex = 1;

HRESULT Lend(const LabelRecord* found, const LabelRecord*& record)
{
    if (found == nullptr)
        return kNoSuchIndex;
    record = found;
    return S_OK;
}

} // namespace

CVELLabelManager::CVELLabelManager(IQServiceRegistry* registry, CDebuggerState& owner)
    : CLabelManager(registry, owner)
{
    // Without a registry no command window could find them.
    if (registry == nullptr)
        return;
    commands_.push_back(std::make_unique<CCmdLabelSymbolAdd>(owner, *this, registry));
    commands_.push_back(std::make_unique<CCmdLabelSymbolClear>(owner, *this, registry));
    commands_.push_back(std::make_unique<CCmdLabelSymbolLoad>(owner, *this, registry));
    commands_.push_back(std::make_unique<CCmdLabelSymbolSave>(owner, *this, registry));
    commands_.push_back(std::make_unique<CCmdLabelSymbolView>(owner, *this, registry));
}

// The commands go first: they hold on to the store through this manager.
CVELLabelManager::~CVELLabelManager()
{
    commands_.clear();
}

void CVELLabelManager::Log(const std::string& command)
{
    auto* recorder = GetServiceAs<IQCommandRecorder>(registry_, Ids::IQCommandRecorder);
    if (recorder != nullptr && recorder->IsLogging() == S_OK)
        recorder->LogCommand(command);
}

HRESULT CVELLabelManager::ClearLabels()
{
    Log("symbol_clear");
    store_.Clear();
    return S_OK;
}

HRESULT CVELLabelManager::AddLabel(const LabelRecord& record)
{
    if (!deferred_)
        Log(MessageFormat::Format("%s %s 0x%X", "symbol_add", record.Name.c_str(), record.Address.Value()));
    return store_.AddLabel(record, currentModule_) ? S_OK : E_FAIL;
}

HRESULT CVELLabelManager::RemoveLabel(const std::string& name)
{
    Log("symbol_clear " + name);
    return store_.RemoveLabel(name) ? S_OK : E_FAIL;
}

HRESULT CVELLabelManager::GetLabelCopy(uint32_t index, LabelRecord& record)
{
    const LabelRecord* found = store_.GetRecordByNameIndex(index);
    if (found == nullptr)
        return E_FAIL;
    record = *found;
    return S_OK;
}

HRESULT CVELLabelManager::GetLabelPointer(uint32_t index, const LabelRecord*& record)
{
    return Lend(store_.GetRecordByNameIndex(index), record);
}

HRESULT CVELLabelManager::GetLabelCount(uint32_t& count)
{
    count = static_cast<uint32_t>(store_.GetCount());
    return S_OK;
}

HRESULT CVELLabelManager::FindLabelByAddress(LabelRecord& record)
{
    return store_.FindByAddress(record);
}

HRESULT CVELLabelManager::FindLabelByName(LabelRecord& record, int32_t exact)
{
    return store_.FindByName(record, 0, exact != 0);
}

HRESULT CVELLabelManager::ReplaceLabel(const LabelRecord& oldRecord, const LabelRecord& newRecord)
{
    return store_.ReplaceLabel(oldRecord, newRecord);
}

HRESULT CVELLabelManager::GetRecordByNameIndex(uint32_t index, const LabelRecord*& record)
{
    return Lend(store_.GetRecordByNameIndex(index), record);
}

HRESULT CVELLabelManager::GetRecordByAddressIndex(uint32_t index, const LabelRecord*& record)
{
    return Lend(store_.GetRecordByAddressIndex(index), record);
}

bool CVELLabelManager::FindLabelInModule(LabelRecord& record, uint32_t module, bool exact)
{
    return !Failed(store_.FindByName(record, module, exact));
}

void CVELLabelManager::ClearLabelsQuietly()
{
    store_.Clear();
}

void CVELLabelManager::RemoveModuleLabels(uint32_t module)
{
    store_.RemoveModuleLabels(module);
}

void CVELLabelManager::SetCurrentModule(uint32_t module)
{
    currentModule_ = module;
}

void CVELLabelManager::SetDeferred(bool deferred)
{
    store_.SetDeferred(deferred);
    deferred_ = deferred;
}

void CVELLabelManager::ReassignModule(uint32_t oldModule, uint32_t newModule)
{
    store_.ReassignModule(oldModule, newModule);
}

HRESULT CVELLabelManager::OnPlatformAttached(IQServiceRegistry*)
{
    return S_OK;
}
