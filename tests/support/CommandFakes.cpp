#include "support/CommandFakes.h"

#include <algorithm>

#include "boundary/Ids.h"

namespace
{

std::string Name(const Guid& id)
{
    return id == Ids::IQCmdClient ? "IQCmdClient" : id == Ids::IQCmdClient2 ? "IQCmdClient2" : "other";
}

} // namespace

HRESULT HelpRecordingRegistry::GetService(const Guid& id, IUnknown** out)
{
    *out = nullptr;
    if (id == Ids::CommandHelpService && withHelp_)
        *out = static_cast<IQCommandHelpService*>(this);
    else if (auto it = services_.find(id); it != services_.end())
        *out = it->second;
    return *out ? S_OK : E_NOINTERFACE;
}

HRESULT HelpRecordingRegistry::RegisterProvider(const Guid& id, IUnknown* provider)
{
    log.push_back("register " + Name(id));
    providers[id].push_back(provider);
    return S_OK;
}

HRESULT HelpRecordingRegistry::RegisterService(const Guid& id, IUnknown* service)
{
    services_[id] = service;
    return S_OK;
}

HRESULT HelpRecordingRegistry::UnregisterProvider(const Guid& id, IUnknown* provider)
{
    log.push_back("unregister " + Name(id));
    auto& list = providers[id];
    auto it = std::find(list.begin(), list.end(), provider);
    if (it == list.end())
        return E_FAIL;
    list.erase(it);
    return S_OK;
}

HRESULT HelpRecordingRegistry::UnregisterService(const Guid& id, IUnknown*)
{
    services_.erase(id);
    return S_OK;
}

HRESULT HelpRecordingRegistry::AddCommandHelp(const std::string& name, const std::string& parameterText,
                                              int32_t isAlias)
{
    log.push_back("add help " + name + " " + std::to_string(isAlias));
    help.emplace(name, parameterText, isAlias);
    return S_OK;
}

HRESULT HelpRecordingRegistry::RemoveCommandHelp(const std::string& name, const std::string& parameterText,
                                                 int32_t isAlias)
{
    log.push_back("remove help " + name + " " + std::to_string(isAlias));
    return help.erase({name, parameterText, isAlias}) == 1 ? S_OK : E_FAIL;
}
