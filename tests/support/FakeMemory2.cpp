#include "FakeMemory2.h"

#include "boundary/Ids.h"

using Op = FakeTarget::Op;

HRESULT FakeMemory2::QueryInterface(const Guid& iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (iid == Ids::IUnknown || iid == Ids::IQPlatformMemory2)
        *out = static_cast<IQPlatformMemory2*>(this);
    else if (iid == Ids::IQPlatformMemory3)
        *out = static_cast<IQPlatformMemory3*>(this);
    else if (iid == Ids::IQPlatformMemory5 && offerFifth)
        *out = static_cast<IQPlatformMemory5*>(this);
    return *out != nullptr ? S_OK : E_NOINTERFACE;
}

HRESULT FakeMemory2::Read(TargetAddress start, TargetAddress end, uint8_t* buffer)
{
    return target_.Read(Op::Read, 2, start, end, 1, buffer);
}

HRESULT FakeMemory2::Write(TargetAddress start, TargetAddress end, const uint8_t* buffer)
{
    return target_.Write(Op::Write, 2, start, end, 1, buffer);
}

HRESULT FakeMemory2::ReadSized(TargetAddress start, TargetAddress end, AccessSize accessSize, uint8_t* buffer)
{
    return target_.Read(Op::ReadSized, 2, start, end, accessSize, buffer);
}

HRESULT FakeMemory2::WriteSized(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                const uint8_t* buffer)
{
    return target_.Write(Op::WriteSized, 2, start, end, accessSize, buffer);
}

HRESULT FakeMemory2::GetPageSize(uint32_t& size)
{
    size = pageSize_;
    return pageSizeResult;
}

HRESULT FakeMemory2::WriteVerified(TargetAddress start, TargetAddress end, VariantBool, const uint8_t* buffer)
{
    return target_.Write(Op::WriteVerified, 3, start, end, 1, buffer);
}

HRESULT FakeMemory2::WriteSizedVerified(TargetAddress start, TargetAddress end, VariantBool,
                                        AccessSize accessSize, const uint8_t* buffer)
{
    return target_.Write(Op::WriteSizedVerified, 3, start, end, accessSize, buffer);
}

HRESULT FakeMemory2::WriteVerifiedReporting(TargetAddress start, TargetAddress end, VariantBool,
                                            const uint8_t* buffer, VariantBool& failed,
                                            TargetAddress& address, int32_t& written, int32_t& found)
{
    const HRESULT hr = target_.Write(Op::WriteReporting, 5, start, end, 1, buffer);
    return Report(hr, start, failed, address, written, found);
}

HRESULT FakeMemory2::WriteSizedVerifiedReporting(TargetAddress start, TargetAddress end, VariantBool,
                                                 AccessSize accessSize, const uint8_t* buffer,
                                                 VariantBool& failed, TargetAddress& address,
                                                 int32_t& written, int32_t& found)
{
    const HRESULT hr = target_.Write(Op::WriteSizedReporting, 5, start, end, accessSize, buffer);
    return Report(hr, start, failed, address, written, found);
}

// A failing write reports its first address, with what was meant and what is there.
HRESULT FakeMemory2::Report(HRESULT hr, TargetAddress start, VariantBool& failed, TargetAddress& address,
                            int32_t& written, int32_t& found)
{
    failed = ToVariantBool(Failed(hr));
    address = start;
    written = target_.ByteAt(start);
    found = static_cast<int32_t>(FakeTarget::Pattern(start));
    return hr;
}
