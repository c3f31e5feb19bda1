#pragma once
#include "boundary/interfaces/PlatformFunctions.h"
#include "component/symbols/CLabelManager.h"

// The labels of a platform driven by function name: the platform keeps them
// itself, so this manager keeps nothing. Lookups go to the platform's two
// functions and the list to its label list; nothing can be changed. Until the
// platform is attached every lookup fails.
class CPDLabelManager final : public CLabelManager
{
public:
    using CLabelManager::CLabelManager;

    HRESULT ClearLabels() override { return E_FAIL; }
    HRESULT AddLabel(const LabelRecord&) override { return E_FAIL; }
    HRESULT RemoveLabel(const std::string&) override { return E_FAIL; }
    HRESULT GetLabelCopy(uint32_t index, LabelRecord& record) override;
    HRESULT GetLabelPointer(uint32_t index, const LabelRecord*& record) override;
    HRESULT GetLabelCount(uint32_t& count) override;
    HRESULT FindLabelByAddress(LabelRecord& record) override;
    // The platform knows one spelling of a name: exact is not looked at.
    HRESULT FindLabelByName(LabelRecord& record, int32_t exact) override;
    HRESULT ReplaceLabel(const LabelRecord&, const LabelRecord&) override { return E_FAIL; }

    HRESULT GetRecordByNameIndex(uint32_t index, const LabelRecord*& record) override;
    // The platform's list has no address order.
    HRESULT GetRecordByAddressIndex(uint32_t, const LabelRecord*&) override { return E_FAIL; }

    // The platform's labels have no modules.
    bool FindLabelInModule(LabelRecord& record, uint32_t module, bool exact) override;
    void ClearLabelsQuietly() override {}
    void RemoveModuleLabels(uint32_t) override {}
    void SetCurrentModule(uint32_t) override {}
    void SetDeferred(bool) override {}
    void ReassignModule(uint32_t, uint32_t) override {}
    // Binds the two functions (either may be missing) and the label list; the
    // result is that of asking for the list.
    HRESULT OnPlatformAttached(IQServiceRegistry* registry) override;

    bool IsPlatformFunctionFamily() const override { return true; }

private:
    PlatformValToSymFn valueToSymbol_ = nullptr;
    PlatformSymToValFn symbolToValue_ = nullptr;
    IQPlatformFreeRun* list_ = nullptr;
};
