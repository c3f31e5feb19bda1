#pragma once
#include <optional>
#include <vector>

#include "boundary/Ids.h"
#include "boundary/interfaces/Platform.h"
#include "boundary/interfaces/Workbench.h"

// Keeps every broadcast event; the only service is the target's address
// limits, 0 to `highest` with `forwardAnswer`, when a test gives them.
class EventRegistry : public IQServiceRegistry, public IQForwardTarget
{
public:
    std::vector<Event> events;
    std::optional<uint32_t> highest;
    HRESULT forwardAnswer = S_OK;

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
        *out = id == Ids::ForwardTarget && highest ? static_cast<IQForwardTarget*>(this) : nullptr;
        return *out != nullptr ? S_OK : E_FAIL;
    }
    HRESULT Forward(uint32_t& low, uint32_t& limit) override
    {
        low = 0;
        limit = *highest;
        return forwardAnswer;
    }
    HRESULT RegisterProvider(const Guid&, IUnknown*) override { return E_NOTIMPL; }
    HRESULT RegisterService(const Guid&, IUnknown*) override { return E_NOTIMPL; }
    HRESULT UnregisterProvider(const Guid&, IUnknown*) override { return E_NOTIMPL; }
    HRESULT UnregisterService(const Guid&, IUnknown*) override { return E_NOTIMPL; }
    HRESULT IsBusy(const Guid&) override { return 0; }
    HRESULT SetBusy(const Guid&) override { return E_NOTIMPL; }
    HRESULT ClearBusy(const Guid&) override { return E_NOTIMPL; }
};
