#pragma once
#include <vector>

#include "boundary/Ids.h"
#include "boundary/interfaces/Workbench.h"

// Keeps every broadcast event; the only service is the target's address
// limits, when a test gives one.
class EventRegistry : public IQServiceRegistry
{
public:
    std::vector<Event> events;
    IUnknown* forwardTarget = nullptr;

    HRESULT QueryInterface(const Guid&, void** out) override
    {
        *out = nullptr;
        return E_NOINTERFACE;
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT Broadcast(const Event& event) override
    {
        events.push_back(event);
        return S_OK;
    }
    HRESULT GetProviders(const Guid&, int32_t& count, IUnknown**& array) override
    {
        count = 0;
        array = nullptr;
        return S_OK;
    }
    HRESULT GetService(const Guid& id, IUnknown** out) override
    {
        *out = id == Ids::ForwardTarget ? forwardTarget : nullptr;
        return *out != nullptr ? S_OK : E_FAIL;
    }
    HRESULT RegisterProvider(const Guid&, IUnknown*) override { return E_NOTIMPL; }
    HRESULT RegisterService(const Guid&, IUnknown*) override { return E_NOTIMPL; }
    HRESULT UnregisterProvider(const Guid&, IUnknown*) override { return E_NOTIMPL; }
    HRESULT UnregisterService(const Guid&, IUnknown*) override { return E_NOTIMPL; }
    HRESULT IsBusy(const Guid&) override { return 0; }
    HRESULT SetBusy(const Guid&) override { return E_NOTIMPL; }
    HRESULT ClearBusy(const Guid&) override { return E_NOTIMPL; }
};
