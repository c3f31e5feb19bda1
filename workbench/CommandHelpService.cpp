#include "workbench/CommandHelpService.h"

#include <algorithm>
#include <strings.h>

#include "boundary/Ids.h"

HRESULT CommandHelpService::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::CommandHelpService}, iid, static_cast<IQCommandHelpService*>(this),
                      out);
}

HRESULT CommandHelpService::AddCommandHelp(const std::string& name, const std::string& parameterText,
                                           int32_t isAlias)
{
    if (name.empty())
        return E_INVALIDARG;
    entries_.push_back({name, parameterText, isAlias != 0});
    return S_OK;
}

HRESULT CommandHelpService::RemoveCommandHelp(const std::string& name, const std::string& parameterText,
                                              int32_t isAlias)
{
    auto it = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) {
        return e.name == name && e.parameterText == parameterText && e.isAlias == (isAlias != 0);
    });
    if (it == entries_.end())
        return E_FAIL;
    entries_.erase(it);
    return S_OK;
}

const CommandHelpService::Entry* CommandHelpService::Find(const std::string& name) const
{
    for (const auto& e : entries_)
        if (strcasecmp(e.name.c_str(), name.c_str()) == 0)
            return &e;
    return nullptr;
}
