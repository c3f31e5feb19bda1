#include "platform/simdriver/SimCpuDriver.h"

#include "boundary/Ids.h"

HRESULT SimCpuDriver::QueryInterface(const Guid& iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (iid == Ids::IUnknown || iid == Ids::CpuDetails)
        *out = static_cast<IQCpuDetails*>(this);
    else if (iid == Ids::CpuOptions)
        *out = static_cast<IQCpuOptions*>(this);
    return *out ? S_OK : E_NOINTERFACE;
}

HRESULT SimCpuDriver::GetIdentity(uint32_t& first, uint32_t& second)
{
    // CPUID values of the two cores, r1p1 and r0p1.
    first = variant_ == "cortex-m4" ? 0x410FC241u : 0x411FC231u;
    second = 0;
    return S_OK;
}

HRESULT SimCpuDriver::GetDescription(std::string& text)
{
    text = std::string("ARM\n") + (variant_ == "cortex-m4" ? "Cortex-M4" : "Cortex-M3");
    return S_OK;
}
