#pragma once
#include <memory>
#include <string>
#include <vector>

#include "component/symbols/CDataLabelArray.h"
#include "component/symbols/CLabelManager.h"

class CCmd;

// The labels of a platform driven by interfaces: kept in the component's own
// store, filled by the object readers during a download and by the symbol
// commands, which this manager owns. What a user does to the labels goes to the
// workbench's command log first, so that a macro replays it.
class CVELLabelManager final : public CLabelManager
{
public:
    CVELLabelManager(IQServiceRegistry* registry, CDebuggerState& owner);
    ~CVELLabelManager() override;

    HRESULT ClearLabels() override;
    HRESULT AddLabel(const LabelRecord& record) override;
    HRESULT RemoveLabel(const std::string& name) override;
    HRESULT GetLabelCopy(uint32_t index, LabelRecord& record) override;
    HRESULT GetLabelPointer(uint32_t index, const LabelRecord*& record) override;
    HRESULT GetLabelCount(uint32_t& count) override;
    HRESULT FindLabelByAddress(LabelRecord& record) override;
    HRESULT FindLabelByName(LabelRecord& record, int32_t exact) override;
    HRESULT ReplaceLabel(const LabelRecord& oldRecord, const LabelRecord& newRecord) override;

    HRESULT GetRecordByNameIndex(uint32_t index, const LabelRecord*& record) override;
    HRESULT GetRecordByAddressIndex(uint32_t index, const LabelRecord*& record) override;

    bool FindLabelInModule(LabelRecord& record, uint32_t module, bool exact) override;
    void ClearLabelsQuietly() override;
    void RemoveModuleLabels(uint32_t module) override;
    void SetCurrentModule(uint32_t module) override;
    void SetDeferred(bool deferred) override;
    void ReassignModule(uint32_t oldModule, uint32_t newModule) override;
    HRESULT OnPlatformAttached(IQServiceRegistry* registry) override;

    bool IsPlatformFunctionFamily() const override { return false; }

private:
    // Silent when the workbench keeps no log or has it switched off.
    void Log(const std::string& command);

    CDataLabelArray store_;
    std::vector<std::unique_ptr<CCmd>> commands_;
    // A download's labels come in deferred and are not logged.
    bool deferred_ = false;
};
