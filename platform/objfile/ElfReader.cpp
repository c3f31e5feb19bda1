#include "platform/objfile/ElfReader.h"

#include <algorithm>

#include "boundary/Ids.h"
#include "platform/objfile/ObjectCodes.h"

HRESULT ElfReader::QueryInterface(const Guid& iid, void** out)
{
    if (iid == Ids::IQErrorReporter)
        return AnswerFrom({iid}, iid, static_cast<IQErrorReporter*>(this), out);
    return AnswerFrom({Ids::IUnknown, Ids::IQObjectReader2}, iid, static_cast<IQObjectReader2*>(this), out);
}

HRESULT ElfReader::CreateModule(IUnknown** handle, IQProgram* program)
{
    if (handle == nullptr)
        return E_POINTER;
    modules_.push_back(std::make_unique<ElfModule>(registry_, program));
    *handle = static_cast<IQModuleLoader*>(modules_.back().get());
    return S_OK;
}

HRESULT ElfReader::DestroyModule(IUnknown* handle)
{
    auto it = std::find_if(modules_.begin(), modules_.end(),
                           [&](const auto& m) { return static_cast<IQModuleLoader*>(m.get()) == handle; });
    if (handle == nullptr || it == modules_.end())
        return E_FAIL;
    modules_.erase(it);
    return S_OK;
}

HRESULT ElfReader::GetErrorText(HRESULT code, std::string& text)
{
    return ObjectErrorText(code, text);
}
