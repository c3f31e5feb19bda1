#include "platform/objfile/ModuleReader.h"

#include <algorithm>

#include "boundary/Ids.h"
#include "platform/objfile/ObjectCodes.h"

HRESULT ModuleReader::QueryInterface(const Guid& iid, void** out)
{
    if (iid == Ids::IQErrorReporter)
        return AnswerFrom({iid}, iid, static_cast<IQErrorReporter*>(this), out);
    return AnswerFrom({Ids::IUnknown, Ids::IQObjectReader2}, iid, static_cast<IQObjectReader2*>(this), out);
}

HRESULT ModuleReader::CreateModule(IUnknown** handle, IQProgram* program)
{
    if (handle == nullptr)
        return E_POINTER;
    modules_.push_back(make_(program));
    *handle = modules_.back().get();
    return S_OK;
}

HRESULT ModuleReader::DestroyModule(IUnknown* handle)
{
    auto it = std::find_if(modules_.begin(), modules_.end(),
                           [&](const auto& m) { return static_cast<IUnknown*>(m.get()) == handle; });
    if (handle == nullptr || it == modules_.end())
        return E_FAIL;
    modules_.erase(it);
    return S_OK;
}

HRESULT ModuleReader::GetErrorText(HRESULT code, std::string& text)
{
    return ObjectErrorText(code, text);
}
