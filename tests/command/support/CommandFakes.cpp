#include "support/CommandFakes.h"

#include <algorithm>

#include "boundary/Ids.h"

namespace
{

std::string Name(const Guid& id)
{
    if (id == Ids::IQCmdClient)
        return "IQCmdClient";
    if (id == Ids::IQCmdClient2)
        return "IQCmdClient2";
    return "other";
}

} // namespace

HRESULT CommandHost::QueryInterface(const Guid&, void** out)
{
    *out = nullptr;
    return E_NOINTERFACE;
}

HRESULT CommandHost::GetProviders(const Guid& id, int32_t& count, IUnknown**& array)
{
    auto& list = providers[id];
    count = static_cast<int32_t>(list.size());
    array = list.data();
    return S_OK;
}

HRESULT CommandHost::GetService(const Guid& id, IUnknown** out)
{
    *out = nullptr;
    if (id == Ids::CommandHelpService && withHelp_)
        *out = static_cast<IQCommandHelpService*>(this);
    else if (auto it = services_.find(id); it != services_.end())
        *out = it->second;
    return *out ? S_OK : E_NOINTERFACE;
}

HRESULT CommandHost::RegisterProvider(const Guid& id, IUnknown* provider)
{
    log.push_back("register " + Name(id));
    providers[id].push_back(provider);
    return S_OK;
}

HRESULT CommandHost::RegisterService(const Guid& id, IUnknown* service)
{
    services_[id] = service;
    return S_OK;
}

HRESULT CommandHost::UnregisterProvider(const Guid& id, IUnknown* provider)
{
    log.push_back("unregister " + Name(id));
    auto& list = providers[id];
    auto it = std::find(list.begin(), list.end(), provider);
    if (it == list.end())
        return E_FAIL;
    list.erase(it);
    return S_OK;
}

HRESULT CommandHost::UnregisterService(const Guid& id, IUnknown*)
{
    services_.erase(id);
    return S_OK;
}

HRESULT CommandHost::AddCommandHelp(const std::string& name, const std::string& parameterText,
                                    int32_t isAlias)
{
    log.push_back("add help " + name + " " + std::to_string(isAlias));
    help.emplace(name, parameterText, isAlias);
    return S_OK;
}

HRESULT CommandHost::RemoveCommandHelp(const std::string& name, const std::string& parameterText,
                                       int32_t isAlias)
{
    log.push_back("remove help " + name + " " + std::to_string(isAlias));
    return help.erase({name, parameterText, isAlias}) == 1 ? S_OK : E_FAIL;
}

HRESULT FakeBatchState::QueryInterface(const Guid&, void** out)
{
    *out = nullptr;
    return E_NOINTERFACE;
}

HRESULT FakeManager::QueryInterface(const Guid& iid, void** out)
{
    bool answers = iid == Ids::IUnknown || (reports && iid == Ids::IQErrorReporter);
    *out = answers ? static_cast<IQErrorReporter*>(this) : nullptr;
    return answers ? S_OK : E_NOINTERFACE;
}

HRESULT FakeManager::GetErrorText(HRESULT code, std::string& text)
{
    auto it = texts.find(code);
    if (it == texts.end())
        return E_FAIL;
    text = it->second;
    return S_OK;
}

HRESULT FakeManager::Fill(uint64_t start, uint64_t end, uint64_t count, const std::string& mode)
{
    calls.push_back(std::to_string(start) + ".." + std::to_string(end) + " x" + std::to_string(count) + " " +
                    mode);
    return result;
}
