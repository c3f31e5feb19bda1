#include "workbench/ServiceRegistry.h"

#include <algorithm>
#include <new>

#include "boundary/Ids.h"

HRESULT ServiceRegistry::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown}, iid, static_cast<IQServiceRegistry*>(this), out);
}

HRESULT ServiceRegistry::Broadcast(const Event& event)
{
    // Components added by a handler must wait for the next broadcast.
    const size_t count = components_.size();
    ++broadcastDepth_;
    struct DepthGuard {
        ServiceRegistry& self;
        ~DepthGuard()
        {
            if (--self.broadcastDepth_ == 0)
                self.CompactComponents();
        }
    } guard{*this};
    for (size_t i = 0; i < count; ++i) {
        // Re-read the slot each time: a handler may have removed a later component.
        if (IQComponent* component = components_[i])
            component->OnEvent(event);
    }
    return S_OK;
}

HRESULT ServiceRegistry::GetProviders(const Guid& id, int32_t& count, IUnknown**& array)
{
    auto it = providers_.find(id);
    if (it == providers_.end() || it->second.empty()) {
        count = 0;
        array = nullptr;
        return S_OK;
    }
    count = static_cast<int32_t>(it->second.size());
    array = it->second.data();
    return S_OK;
}

HRESULT ServiceRegistry::GetService(const Guid& id, IUnknown** out)
{
    if (out == nullptr)
        return E_POINTER;
    auto it = services_.find(id);
    *out = it == services_.end() ? nullptr : it->second;
    return *out != nullptr ? S_OK : E_FAIL;
}

HRESULT ServiceRegistry::RegisterProvider(const Guid& id, IUnknown* provider)
{
    if (provider == nullptr)
        return E_POINTER;
    try {
        auto& list = providers_[id];
        if (std::find(list.begin(), list.end(), provider) == list.end())
            list.push_back(provider);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

HRESULT ServiceRegistry::RegisterService(const Guid& id, IUnknown* service)
{
    if (service == nullptr)
        return E_POINTER;
    try {
        services_[id] = service;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

HRESULT ServiceRegistry::UnregisterProvider(const Guid& id, IUnknown* provider)
{
    auto it = providers_.find(id);
    if (it == providers_.end())
        return E_FAIL;
    auto& list = it->second;
    auto pos = std::find(list.begin(), list.end(), provider);
    if (pos == list.end())
        return E_FAIL;
    list.erase(pos);
    if (list.empty())
        providers_.erase(it);
    return S_OK;
}

HRESULT ServiceRegistry::UnregisterService(const Guid& id, IUnknown* service)
{
    // Only the holder may take a service down, so a late unregister of a
    // replaced service cannot remove its successor.
    auto it = services_.find(id);
    if (it == services_.end() || it->second != service)
        return E_FAIL;
    services_.erase(it);
    return S_OK;
}

HRESULT ServiceRegistry::IsBusy(const Guid& id)
{
    auto it = busy_.find(id);
    return it != busy_.end() && it->second > 0 ? 1 : 0;
}

HRESULT ServiceRegistry::SetBusy(const Guid& id)
{
    try {
        ++busy_[id];
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

HRESULT ServiceRegistry::ClearBusy(const Guid& id)
{
    auto it = busy_.find(id);
    if (it == busy_.end())
        return S_FALSE;
    if (--it->second == 0)
        busy_.erase(it);
    return S_OK;
}

bool ServiceRegistry::AddComponent(IQComponent* component)
{
    if (component == nullptr)
        return false;
    if (std::find(components_.begin(), components_.end(), component) != components_.end())
        return false;
    components_.push_back(component);
    return true;
}

bool ServiceRegistry::RemoveComponent(IQComponent* component)
{
    if (component == nullptr)
        return false;
    auto it = std::find(components_.begin(), components_.end(), component);
    if (it == components_.end())
        return false;
    if (broadcastDepth_ > 0)
        *it = nullptr;
    else
        components_.erase(it);
    return true;
}

size_t ServiceRegistry::ComponentCount() const
{
    return static_cast<size_t>(std::count_if(components_.begin(), components_.end(),
                                             [](const IQComponent* c) { return c != nullptr; }));
}

void ServiceRegistry::CompactComponents()
{
    components_.erase(std::remove(components_.begin(), components_.end(), nullptr), components_.end());
}
