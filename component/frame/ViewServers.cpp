#include "component/frame/ViewServers.h"

#include <algorithm>

IQDisassemblyClient* ViewServers::Create(CDebuggerState& state, IQServiceRegistry* registry,
                                         IQDisassemblyDataClient* view)
{
    if (view == nullptr)
        return nullptr;
    servers_.emplace_back(view, std::make_unique<CDisassemble>(state, registry, view));
    return servers_.back().second.get();
}

bool ViewServers::Release(const IUnknown* view)
{
    auto it = std::find_if(servers_.begin(), servers_.end(),
                           [&](const auto& entry) { return static_cast<IUnknown*>(entry.first) == view; });
    if (it == servers_.end())
        return false;
    servers_.erase(it);
    return true;
}

void ViewServers::Forward(const Event& event)
{
    for (auto& [view, server] : servers_)
        server->OnEvent(event);
    for (auto& [view, server] : servers_)
        server->OnEventNotify(event);
}

void ViewServers::SetDisplayFlags(uint32_t flags)
{
    for (auto& [view, server] : servers_)
        server->SetDisplayFlags(flags);
}
