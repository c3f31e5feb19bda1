#include "workbench/ErrorTableService.h"

#include <new>

#include "boundary/Ids.h"

HRESULT ErrorTableService::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::ErrorTable}, iid, static_cast<IQErrorTable*>(this), out);
}

HRESULT ErrorTableService::GetText(HRESULT code, std::string& text)
{
    auto it = texts_.find(code);
    if (it == texts_.end())
        return E_FAIL;
    try {
        text = it->second;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

HRESULT ErrorTableService::AddText(HRESULT code, const std::string& text)
{
    // An empty row would turn "no text" into a blank message for every reader.
    if (text.empty())
        return E_INVALIDARG;
    try {
        texts_.insert_or_assign(code, text);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

HRESULT ErrorTableService::RemoveText(HRESULT code)
{
    return texts_.erase(code) == 1 ? S_OK : E_FAIL;
}
