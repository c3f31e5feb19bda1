#include "component/memory/CStatusMemoryPane.h"

#include <cctype>

#include "boundary/Ids.h"
#include "component/frame/StringTable.h"

CStatusMemoryPane::CStatusMemoryPane(CDebuggerState& state, IQServiceRegistry* registry)
    : state_(state), registry_(registry)
{
    if (registry_ != nullptr)
        registry_->RegisterProvider(Ids::IQStatusClient, static_cast<IQStatusClient*>(this));
}

CStatusMemoryPane::~CStatusMemoryPane()
{
    if (registry_ != nullptr)
        registry_->UnregisterProvider(Ids::IQStatusClient, static_cast<IQStatusClient*>(this));
}

HRESULT CStatusMemoryPane::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQStatusClient}, iid, static_cast<IQStatusClient*>(this), out);
}

void CStatusMemoryPane::BuildRows()
{
    rows_.clear();
    rows_.push_back(StringTable::Load(57652));
    // Programs add one row per load area once programs can be loaded; until
    // then the page holds its heading alone.
    rowCount_ = static_cast<int32_t>(rows_.size());
}

HRESULT CStatusMemoryPane::GetRowCount(const Guid& page, int32_t& count)
{
    count = 0;
    if (page != Ids::StatusMemoryPage)
        return S_OK;
    BuildRows();
    count = rowCount_;
    return S_OK;
}

HRESULT CStatusMemoryPane::GetRowText(const Guid& page, int32_t index, std::string& text)
{
    text.clear();
    if (page != Ids::StatusMemoryPage)
        return S_OK;
    if (index < 0 || index >= rowCount_ || static_cast<size_t>(index) >= rows_.size())
        return E_FAIL;
    text = rows_[static_cast<size_t>(index)];
    return S_OK;
}

HRESULT CStatusMemoryPane::GetPageInfo(Guid& page, std::string& name, std::string& firstColumn,
                                       std::string& secondColumn, int32_t& firstWidth, int32_t& secondWidth)
{
    page = Ids::StatusMemoryPage;
    name = pageName_;
    firstColumn = firstColumn_;
    secondColumn = secondColumn_;
    firstWidth = firstWidth_;
    secondWidth = secondWidth_;
    return S_OK;
}

std::string CStatusMemoryPane::AreaRow(const std::string& file, TargetAddress start, TargetAddress end,
                                       IQEvaluator2* evaluator)
{
    std::string first, last;
    if (evaluator != nullptr) {
        evaluator->FormatAddress(start.Value(), VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE, first);
        evaluator->FormatAddress(end.Value(), VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE, last);
    }
    std::string range = first + "-" + last;
    for (char& c : range)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    const std::string tail = file.size() > 20 ? file.substr(file.size() - 20) : file;
    return "..." + tail + "\t" + range;
}
