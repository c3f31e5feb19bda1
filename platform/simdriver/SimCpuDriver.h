#pragma once
#include <string>

#include "boundary/interfaces/Platform.h"
#include "platform/catalog/PlatformTable.h"

// The CPU driver of a simulated Cortex-M: what the CPU is, for the target
// driver and for the session's descriptions.
class SimCpuDriver final : public PlatformDriver, public IQCpuDetails, public IQCpuOptions
{
public:
    explicit SimCpuDriver(std::string variant) : variant_(std::move(variant)) {}

    IUnknown* Object() override { return static_cast<IQCpuDetails*>(this); }
    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    // First: the CPU's identity register as the part reports it; second: 0.
    HRESULT GetIdentity(uint32_t& first, uint32_t& second) override;
    HRESULT GetDescription(std::string& text) override;
    // A simulator reads any mapped byte cheaply: disassembly need not be limited.
    HRESULT GetLimitDisassemblyDefault() override { return 1; }

private:
    std::string variant_;
};
