#include "platform/simdriver/SimPlatformMemory.h"

#include <vector>

#include "boundary/Ids.h"
#include "platform/sim/SimTarget.h"

namespace
{

// Bytes from start to end inclusive; 0 when the range is reversed. The whole
// address space is one byte more than 32 bits can count, so the count is 64-bit.
uint64_t Length(TargetAddress start, TargetAddress end)
{
    return end < start ? 0 : uint64_t{end} - start + 1;
}

} // namespace

HRESULT SimPlatformMemory::QueryInterface(const Guid& iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (iid == Ids::IUnknown || iid == Ids::IQPlatformMemory)
        *out = static_cast<IQPlatformMemory*>(this);
    else if (iid == Ids::IQPlatformMemory2)
        *out = static_cast<IQPlatformMemory2*>(this);
    else if (iid == Ids::IQPlatformMemory3)
        *out = static_cast<IQPlatformMemory3*>(this);
    else if (iid == Ids::IQPlatformMemory5)
        *out = static_cast<IQPlatformMemory5*>(this);
    return *out ? S_OK : E_NOINTERFACE;
}

HRESULT SimPlatformMemory::Read(TargetAddress start, TargetAddress end, uint8_t* buffer)
{
    uint64_t length = Length(start, end);
    if (buffer == nullptr || length == 0)
        return E_INVALIDARG;
    return target_.ReadMemory(start, static_cast<size_t>(length), buffer) ? S_OK : kCannotRead;
}

HRESULT SimPlatformMemory::Write(TargetAddress start, TargetAddress end, const uint8_t* buffer)
{
    uint64_t length = Length(start, end);
    if (buffer == nullptr || length == 0)
        return E_INVALIDARG;
    return target_.WriteMemory(start, static_cast<size_t>(length), buffer) ? S_OK : kCannotWrite;
}

HRESULT SimPlatformMemory::ReadSized(TargetAddress start, TargetAddress end, AccessSize, uint8_t* buffer)
{
    return Read(start, end, buffer);
}

HRESULT SimPlatformMemory::WriteSized(TargetAddress start, TargetAddress end, AccessSize,
                                      const uint8_t* buffer)
{
    return Write(start, end, buffer);
}

HRESULT SimPlatformMemory::GetPageSize(uint32_t& size)
{
    // Local memory: a page of a kibibyte keeps a refetch after a write cheap.
    size = 0x400;
    return S_OK;
}

HRESULT SimPlatformMemory::WriteVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                         const uint8_t* buffer)
{
    VariantBool failed = VARIANT_FALSE;
    TargetAddress address = 0;
    int32_t written = 0, found = 0;
    HRESULT hr = WriteVerifiedReporting(start, end, verify, buffer, failed, address, written, found);
    return Failed(hr) ? hr : (failed ? kVerifyFailed : S_OK);
}

HRESULT SimPlatformMemory::WriteSizedVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                              AccessSize, const uint8_t* buffer)
{
    return WriteVerified(start, end, verify, buffer);
}

HRESULT SimPlatformMemory::WriteVerifiedReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                                  const uint8_t* buffer, VariantBool& failed,
                                                  TargetAddress& address, int32_t& written, int32_t& found)
{
    failed = VARIANT_FALSE;
    HRESULT hr = Write(start, end, buffer);
    if (Failed(hr) || verify == VARIANT_FALSE)
        return hr;
    std::vector<uint8_t> back(static_cast<size_t>(Length(start, end)));
    if (Failed(Read(start, end, back.data())))
        return kCannotRead;
    for (size_t i = 0; i < back.size(); ++i) {
        if (back[i] != buffer[i]) {
            failed = VARIANT_TRUE;
            address = start + static_cast<TargetAddress>(i);
            written = buffer[i];
            found = back[i];
            break;
        }
    }
    return S_OK;
}

HRESULT SimPlatformMemory::WriteSizedVerifiedReporting(TargetAddress start, TargetAddress end,
                                                       VariantBool verify, AccessSize, const uint8_t* buffer,
                                                       VariantBool& failed, TargetAddress& address,
                                                       int32_t& written, int32_t& found)
{
    return WriteVerifiedReporting(start, end, verify, buffer, failed, address, written, found);
}
