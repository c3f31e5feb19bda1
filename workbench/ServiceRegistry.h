#pragma once
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/Workbench.h"

// The one object a component is handed: services by identifier, providers,
// busy marks and the event broadcast to every component the host holds.
// Main thread only.
class ServiceRegistry final : public IQServiceRegistry
{
public:
    ServiceRegistry() = default;
    ServiceRegistry(const ServiceRegistry&) = delete;
    ServiceRegistry& operator=(const ServiceRegistry&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT Broadcast(const Event& event) override;
    HRESULT GetProviders(const Guid& id, int32_t& count, IUnknown**& array) override;
    HRESULT GetService(const Guid& id, IUnknown** out) override;
    HRESULT RegisterProvider(const Guid& id, IUnknown* provider) override;
    HRESULT RegisterService(const Guid& id, IUnknown* service) override;
    HRESULT UnregisterProvider(const Guid& id, IUnknown* provider) override;
    HRESULT UnregisterService(const Guid& id, IUnknown* service) override;
    HRESULT IsBusy(const Guid& id) override;
    HRESULT SetBusy(const Guid& id) override;
    HRESULT ClearBusy(const Guid& id) override;

    // False when the pointer is null or already held (add) or not held (remove).
    bool AddComponent(IQComponent* component);
    bool RemoveComponent(IQComponent* component);
    size_t ComponentCount() const;

private:
    void CompactComponents();

    std::unordered_map<Guid, IUnknown*> services_;
    // Node-based map: one id's array survives changes to another id's providers.
    std::unordered_map<Guid, std::vector<IUnknown*>> providers_;
    std::unordered_map<Guid, uint32_t> busy_;
    // A removed component leaves a null slot while a broadcast walks the list,
    // so indices stay put; the outermost broadcast squeezes the slots out.
    std::vector<IQComponent*> components_;
    int broadcastDepth_ = 0;
};
