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

HRESULT ErrorTableService::RegisterErrorText(const std::string& text, HRESULT& code)
{
    if (text.empty())
        return E_INVALIDARG;
    // Handed-out codes come from a block of their own, above every fixed code
    // of the components, so that they never shadow a fixed text.
    for (uint32_t candidate = nextCode_; candidate <= kLastRegistered; ++candidate) {
        HRESULT hr = static_cast<HRESULT>(candidate);
        if (texts_.count(hr) != 0)
            continue;
        try {
            texts_.emplace(hr, text);
        } catch (const std::bad_alloc&) {
            return E_OUTOFMEMORY;
        }
        nextCode_ = candidate + 1;
        code = hr;
        return S_OK;
    }
    return E_OUTOFMEMORY;
}

HRESULT ErrorTableService::RemoveText(HRESULT code)
{
    return texts_.erase(code) == 1 ? S_OK : E_FAIL;
}
