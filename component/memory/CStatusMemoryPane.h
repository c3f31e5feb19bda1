#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "boundary/interfaces/Workbench.h"

class CDebuggerState;

// The "Memory" page of the workbench's status window: which program is loaded
// into which addresses. Built when the state meets the workbench, destroyed
// before the state leaves it.
class CStatusMemoryPane final : public IQStatusClient
{
public:
    CStatusMemoryPane(CDebuggerState& state, IQServiceRegistry* registry);
    ~CStatusMemoryPane();
    CStatusMemoryPane(const CStatusMemoryPane&) = delete;
    CStatusMemoryPane& operator=(const CStatusMemoryPane&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT GetRowCount(const Guid& page, int32_t& count) override;
    HRESULT GetRowText(const Guid& page, int32_t index, std::string& text) override;
    HRESULT GetPageInfo(Guid& page, std::string& name, std::string& firstColumn, std::string& secondColumn,
                        int32_t& firstWidth, int32_t& secondWidth) override;

    // One load area's row: "..." and the last 20 characters of the file,
    // a tab, then start-end in upper-case hexadecimal as the evaluator writes
    // addresses (no prefix, width by the target's highest address).
    static std::string AreaRow(const std::string& file, TargetAddress start, TargetAddress end,
                               IQEvaluator2* evaluator);

private:
    void BuildRows();

    // The programs whose load areas the rows list, once programs can be loaded.
    [[maybe_unused]] CDebuggerState& state_;
    IQServiceRegistry* registry_;
    std::string pageName_ = "Memory";
    std::string firstColumn_ = "Item";
    std::string secondColumn_ = "Status";
    int32_t firstWidth_ = 300;
    int32_t secondWidth_ = 300;
    int32_t rowCount_ = 0;
    std::vector<std::string> rows_;
};
