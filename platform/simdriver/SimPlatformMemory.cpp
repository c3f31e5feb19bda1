// The simulator's memory as the platform offers it: its interfaces, the
// memory map, reads and writes, and the texts of failures. The whole-range
// operations are in SimMemoryOperations.cpp.
#include "platform/simdriver/SimPlatformMemory.h"

#include <algorithm>
#include <bit>
#include <vector>

#include "boundary/Ids.h"
#include "platform/sim/SimTarget.h"
#include "platform/simdriver/SimMemoryText.h"

using SimMemoryText::HexAddress;
using SimMemoryText::Mismatch;

namespace
{

const char* BaseText(HRESULT code)
{
    switch (code) {
    case SimPlatformMemory::kInvalidAddress:
        return "Invalid address value";
    case SimPlatformMemory::kInvalidParameter:
        return "Invalid parameter";
    case SimPlatformMemory::kCompareFailed:
        return "Compare failed";
    case SimPlatformMemory::kFindFailed:
        return "Pattern not found";
    case SimPlatformMemory::kVerifyFailed:
        return "Verify failed";
    case SimPlatformMemory::kStartAboveEnd:
        return "The start address must be lower than the end address.";
    case SimPlatformMemory::kCannotRead:
        return "Can not read memory";
    case SimPlatformMemory::kCannotWrite:
        return "Can not write memory";
    case SimPlatformMemory::kCannotCopy:
        return "Can not copy memory";
    default:
        return nullptr;
    }
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
    else if (iid == Ids::IQErrorReporter)
        *out = static_cast<IQErrorReporter*>(this);
    return *out ? S_OK : E_NOINTERFACE;
}

HRESULT SimPlatformMemory::GetErrorText(HRESULT code, std::string& text)
{
    const char* base = BaseText(code);
    if (base == nullptr)
        return E_FAIL;
    text = base;
    if (code == lastCode_ && !lastDetail_.empty())
        text += ". " + lastDetail_;
    return S_OK;
}

HRESULT SimPlatformMemory::Fail(HRESULT code, std::string detail)
{
    lastCode_ = code;
    lastDetail_ = std::move(detail);
    return code;
}

HRESULT SimPlatformMemory::FailAccess(HRESULT code, const SimResult& result)
{
    if (target_.IsRunning())
        return Fail(code, "The target is running");
    if (target_.Map().Find(result.address) == nullptr)
        return Fail(code, "Address " + HexAddress(result.address) + " is not mapped");
    return Fail(code, "Address " + HexAddress(result.address) + ": " + result.cause);
}

HRESULT SimPlatformMemory::CheckRange(TargetAddress start, TargetAddress end)
{
    return end < start ? Fail(kStartAboveEnd) : S_OK;
}

HRESULT SimPlatformMemory::CheckMapped(TargetAddress start, TargetAddress end, HRESULT code)
{
    uint64_t at = start.Value();
    while (at <= end.Value()) {
        const SimRegion* region = target_.Map().Find(static_cast<uint32_t>(at));
        if (region == nullptr)
            return Fail(code, "Address " + HexAddress(at) + " is not mapped");
        at = region->End();
    }
    return S_OK;
}

HRESULT SimPlatformMemory::CheckPair(TargetAddress start, TargetAddress end, TargetAddress destination,
                                     HRESULT code)
{
    HRESULT hr = CheckRange(start, end);
    if (Failed(hr))
        return hr;
    const auto target = AddressRange::Sized(destination, Length(start, end));
    if (!target)
        return Fail(kInvalidAddress, "The destination range runs past H'FFFFFFFF");
    hr = CheckMapped(start, end, code);
    if (Succeeded(hr))
        hr = CheckMapped(target->First(), target->Last(), code);
    return hr;
}

HRESULT SimPlatformMemory::ReadChunk(TargetAddress address, size_t length, uint8_t* buffer, HRESULT code)
{
    const SimResult result = target_.ReadMemory(address.Value(), length, buffer);
    return result ? S_OK : FailAccess(code, result);
}

HRESULT SimPlatformMemory::WriteChunk(TargetAddress address, size_t length, const uint8_t* buffer,
                                      HRESULT code)
{
    const SimResult result = target_.WriteMemory(address.Value(), length, buffer);
    return result ? S_OK : FailAccess(code, result);
}

HRESULT SimPlatformMemory::GetMemoryInfo(Variant& info)
{
    info = Variant::String(target_.Variant());
    return S_OK;
}

HRESULT SimPlatformMemory::GetAreaCount(uint32_t& count)
{
    count = static_cast<uint32_t>(target_.Map().Regions().size());
    return S_OK;
}

HRESULT SimPlatformMemory::GetArea(uint32_t index, TargetAddress& start, TargetAddress& end,
                                   uint32_t& byteOrder, uint32_t& info, uint32_t& flags)
{
    VariantBool sized = 0, attribute1 = 0, attribute2 = 0, attribute3 = 0;
    const HRESULT hr = GetArea(index, start, end, byteOrder, info, sized, attribute1, attribute2, attribute3);
    flags = 0;
    return hr;
}

HRESULT SimPlatformMemory::GetArea(uint32_t index, TargetAddress& start, TargetAddress& end,
                                   uint32_t& byteOrder, uint32_t& info, VariantBool& sized,
                                   VariantBool& attribute1, VariantBool& attribute2, VariantBool& attribute3)
{
    const auto& regions = target_.Map().Regions();
    if (index >= regions.size())
        return E_INVALIDARG;
    const SimRegion& region = regions[index];
    start = region.base;
    end = static_cast<TargetAddress>(region.End() - 1);
    // The simulated Cortex-M is little-endian: 1 says that is this host's own order.
    byteOrder = std::endian::native == std::endian::little ? 1 : 2;
    info = static_cast<uint32_t>(region.kind);
    sized = attribute1 = attribute2 = attribute3 = VARIANT_FALSE;
    return S_OK;
}

HRESULT SimPlatformMemory::Read(TargetAddress start, TargetAddress end, uint8_t* buffer)
{
    uint64_t length = Length(start, end);
    if (buffer == nullptr || length == 0)
        return E_INVALIDARG;
    return ReadChunk(start, static_cast<size_t>(length), buffer, kCannotRead);
}

HRESULT SimPlatformMemory::Write(TargetAddress start, TargetAddress end, const uint8_t* buffer)
{
    uint64_t length = Length(start, end);
    if (buffer == nullptr || length == 0)
        return E_INVALIDARG;
    return WriteChunk(start, static_cast<size_t>(length), buffer, kCannotWrite);
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

HRESULT SimPlatformMemory::SetDownloadMode(uint32_t flag)
{
    downloadMode_ = flag != 0;
    return S_OK;
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
    if (Failed(hr) || !failed)
        return hr;
    return Fail(kVerifyFailed,
                Mismatch(address, static_cast<uint8_t>(found), static_cast<uint8_t>(written), "written"));
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
    if (hr = Read(start, end, back.data()); Failed(hr))
        return hr;
    const auto diff = std::mismatch(back.begin(), back.end(), buffer);
    if (diff.first != back.end()) {
        failed = VARIANT_TRUE;
        address = start.WrappingAdd(static_cast<uint32_t>(diff.first - back.begin()));
        written = *diff.second;
        found = *diff.first;
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
