#include "platform/simdriver/SimPlatformMemory.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <vector>

#include "boundary/Ids.h"
#include "platform/sim/SimTarget.h"

namespace
{

// Whole-range operations move memory in pieces of this size, so that a range
// as large as the address space never needs a buffer of its size.
constexpr uint64_t kChunk = 0x10000;

// Bytes from start to end inclusive; 0 when the range is reversed. The whole
// address space is one byte more than 32 bits can count, so the count is 64-bit.
uint64_t Length(TargetAddress start, TargetAddress end)
{
    return end < start ? 0 : uint64_t{end} - start + 1;
}

std::string HexAddress(uint64_t value)
{
    char text[16];
    std::snprintf(text, sizeof text, "H'%08X", static_cast<unsigned>(value));
    return text;
}

std::string HexByte(uint8_t value)
{
    char text[8];
    std::snprintf(text, sizeof text, "H'%02X", value);
    return text;
}

// "H'20000010 holds H'00, H'12 was written": what a read-back found.
std::string Mismatch(uint64_t address, uint8_t found, uint8_t wanted, const char* how)
{
    return HexAddress(address) + " holds " + HexByte(found) + ", " + HexByte(wanted) + " was " + how;
}

// visit(offset, length) for consecutive pieces of a range of `total` bytes,
// from the end backward when asked; the first failure ends the walk.
template <class Visit> HRESULT EachChunk(uint64_t total, bool backward, Visit visit)
{
    const uint64_t count = (total + kChunk - 1) / kChunk;
    for (uint64_t i = 0; i < count; ++i) {
        const uint64_t index = backward ? count - 1 - i : i;
        const uint64_t offset = index * kChunk;
        const HRESULT hr = visit(offset, static_cast<size_t>(std::min(kChunk, total - offset)));
        if (Failed(hr))
            return hr;
    }
    return S_OK;
}

// The byte the memory test writes last: it differs between neighbouring
// addresses and between pages, so that address lines that alias are noticed.
uint8_t AddressPattern(uint64_t address)
{
    return static_cast<uint8_t>(address ^ (address >> 8) ^ (address >> 16) ^ (address >> 24));
}

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
    uint64_t at = start;
    while (at <= end) {
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
    const uint64_t last = uint64_t{destination} + Length(start, end) - 1;
    HRESULT hr = CheckRange(start, end);
    if (Succeeded(hr) && last > 0xFFFFFFFFu)
        hr = Fail(kInvalidAddress, "The destination range runs past H'FFFFFFFF");
    if (Succeeded(hr))
        hr = CheckMapped(start, end, code);
    if (Succeeded(hr))
        hr = CheckMapped(destination, static_cast<TargetAddress>(last), code);
    return hr;
}

HRESULT SimPlatformMemory::ReadChunk(TargetAddress address, size_t length, uint8_t* buffer, HRESULT code)
{
    const SimResult result = target_.ReadMemory(address, length, buffer);
    return result ? S_OK : FailAccess(code, result);
}

HRESULT SimPlatformMemory::WriteChunk(TargetAddress address, size_t length, const uint8_t* buffer,
                                      HRESULT code)
{
    const SimResult result = target_.WriteMemory(address, length, buffer);
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

HRESULT SimPlatformMemory::Compare(TargetAddress start, TargetAddress end, TargetAddress destination)
{
    uint8_t first = 0, second = 0;
    TargetAddress address = 0;
    return Compare(start, end, destination, 1, first, second, address);
}

HRESULT SimPlatformMemory::Compare(TargetAddress start, TargetAddress end, TargetAddress destination,
                                   AccessSize, uint8_t& first, uint8_t& second, TargetAddress& address)
{
    if (HRESULT hr = CheckPair(start, end, destination, kCannotRead); Failed(hr))
        return hr;
    const uint64_t total = Length(start, end);
    std::vector<uint8_t> source, target;
    return EachChunk(total, false, [&](uint64_t offset, size_t length) {
        source.resize(length);
        target.resize(length);
        const auto from = static_cast<TargetAddress>(start + offset);
        const auto to = static_cast<TargetAddress>(destination + offset);
        HRESULT step = ReadChunk(from, length, source.data(), kCannotRead);
        if (Succeeded(step))
            step = ReadChunk(to, length, target.data(), kCannotRead);
        if (Failed(step))
            return step;
        const auto diff = std::mismatch(source.begin(), source.end(), target.begin());
        if (diff.first == source.end())
            return S_OK;
        const auto at = static_cast<TargetAddress>(diff.first - source.begin());
        first = *diff.first;
        second = *diff.second;
        address = from + at;
        return Fail(kCompareFailed, HexByte(first) + " at " + HexAddress(from + at) + ", " + HexByte(second) +
                                        " at " + HexAddress(to + at));
    });
}

HRESULT SimPlatformMemory::Copy(TargetAddress start, TargetAddress end, TargetAddress destination)
{
    uint8_t first = 0, second = 0;
    TargetAddress address = 0;
    return Copy(start, end, destination, VARIANT_FALSE, 1, first, second, address);
}

HRESULT SimPlatformMemory::Copy(TargetAddress start, TargetAddress end, TargetAddress destination,
                                VariantBool verify, AccessSize, uint8_t& first, uint8_t& second,
                                TargetAddress& address)
{
    first = second = 0;
    address = 0;
    if (HRESULT hr = CheckPair(start, end, destination, kCannotCopy); Failed(hr))
        return hr;
    const uint64_t total = Length(start, end);
    // A destination inside the source, above its start, is copied from the end
    // down, so that no byte is overwritten before it has been read.
    const bool backward = destination > start && destination <= end;
    std::vector<uint8_t> chunk, back;
    return EachChunk(total, backward, [&](uint64_t offset, size_t length) {
        chunk.resize(length);
        const auto to = static_cast<TargetAddress>(destination + offset);
        HRESULT step =
            ReadChunk(static_cast<TargetAddress>(start + offset), length, chunk.data(), kCannotCopy);
        if (Succeeded(step))
            step = WriteChunk(to, length, chunk.data(), kCannotCopy);
        if (Failed(step) || !FromVariantBool(verify))
            return step;
        back.resize(length);
        step = ReadChunk(to, length, back.data(), kCannotRead);
        if (Failed(step))
            return step;
        const auto diff = std::mismatch(chunk.begin(), chunk.end(), back.begin());
        if (diff.first == chunk.end())
            return S_OK;
        first = *diff.first;
        second = *diff.second;
        address = to + static_cast<TargetAddress>(diff.first - chunk.begin());
        return Fail(kVerifyFailed, Mismatch(address, second, first, "written"));
    });
}

HRESULT SimPlatformMemory::FillPass(TargetAddress start, TargetAddress end, uint32_t patternLength,
                                    const uint8_t* pattern, bool check)
{
    std::vector<uint8_t> chunk, back;
    return EachChunk(Length(start, end), false, [&](uint64_t offset, size_t length) {
        chunk.resize(length);
        for (size_t i = 0; i < length; ++i)
            chunk[i] = pattern[(offset + i) % patternLength];
        const auto at = static_cast<TargetAddress>(start + offset);
        if (!check)
            return WriteChunk(at, length, chunk.data(), kCannotWrite);
        back.resize(length);
        if (HRESULT step = ReadChunk(at, length, back.data(), kCannotRead); Failed(step))
            return step;
        const auto diff = std::mismatch(chunk.begin(), chunk.end(), back.begin());
        if (diff.first == chunk.end())
            return S_OK;
        const auto where = at + static_cast<TargetAddress>(diff.first - chunk.begin());
        return Fail(kVerifyFailed, Mismatch(where, *diff.second, *diff.first, "written"));
    });
}

HRESULT SimPlatformMemory::Fill(TargetAddress start, TargetAddress end, uint32_t patternLength,
                                const uint8_t* pattern)
{
    return FillVerified(start, end, VARIANT_FALSE, patternLength, pattern);
}

HRESULT SimPlatformMemory::FillVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                        uint32_t patternLength, const uint8_t* pattern)
{
    if (pattern == nullptr)
        return E_POINTER;
    HRESULT hr =
        patternLength == 0 ? Fail(kInvalidParameter, "The pattern is empty") : CheckRange(start, end);
    if (Succeeded(hr))
        hr = CheckMapped(start, end, kCannotWrite);
    if (Succeeded(hr))
        hr = FillPass(start, end, patternLength, pattern, false);
    if (Succeeded(hr) && FromVariantBool(verify))
        hr = FillPass(start, end, patternLength, pattern, true);
    return hr;
}

HRESULT SimPlatformMemory::Find(TargetAddress start, TargetAddress end, uint32_t patternLength,
                                const uint8_t* pattern, TargetAddress& found)
{
    return FindEx(start, end, 0, 0, 0, patternLength, pattern, nullptr, found);
}

HRESULT SimPlatformMemory::Find(TargetAddress start, TargetAddress end, uint32_t flag1, uint32_t flag2,
                                uint32_t patternLength, const uint8_t* pattern, const uint8_t* mask,
                                TargetAddress& address)
{
    return FindEx(start, end, flag1, flag2, 0, patternLength, pattern, mask, address);
}

HRESULT SimPlatformMemory::FindEx(TargetAddress start, TargetAddress end, uint32_t, uint32_t, uint32_t,
                                  uint32_t patternLength, const uint8_t* pattern, const uint8_t* mask,
                                  TargetAddress& address)
{
    if (pattern == nullptr)
        return E_POINTER;
    HRESULT hr =
        patternLength == 0 ? Fail(kInvalidParameter, "The pattern is empty") : CheckRange(start, end);
    if (Failed(hr))
        return hr;
    // The mapped stretches of the range; regions that touch make one stretch,
    // since a match may run from one into the next.
    std::vector<std::pair<uint64_t, uint64_t>> stretches;
    for (const SimRegion& region : target_.Map().Regions()) {
        const uint64_t first = std::max<uint64_t>(start, region.base);
        const uint64_t last = std::min<uint64_t>(end, region.End() - 1);
        if (first > last)
            continue;
        if (!stretches.empty() && stretches.back().second + 1 == first)
            stretches.back().second = last;
        else
            stretches.emplace_back(first, last);
    }
    for (const auto& [first, last] : stretches) {
        std::optional<TargetAddress> found;
        hr = FindIn(static_cast<TargetAddress>(first), static_cast<TargetAddress>(last), patternLength,
                    pattern, mask, found);
        if (Failed(hr))
            return hr;
        if (found) {
            address = *found;
            return S_OK;
        }
    }
    return Fail(kFindFailed);
}

HRESULT SimPlatformMemory::FindIn(TargetAddress start, TargetAddress end, uint32_t patternLength,
                                  const uint8_t* pattern, const uint8_t* mask,
                                  std::optional<TargetAddress>& found)
{
    const uint64_t last = end;
    std::vector<uint8_t> window;
    // Each window holds the chunk's candidate starts and the pattern's tail past them.
    for (uint64_t at = start; at + patternLength - 1 <= last; at += kChunk) {
        const uint64_t windowLast = std::min(last, at + kChunk - 1 + patternLength - 1);
        window.resize(static_cast<size_t>(windowLast - at + 1));
        if (HRESULT hr = ReadChunk(static_cast<TargetAddress>(at), window.size(), window.data(), kCannotRead);
            Failed(hr))
            return hr;
        for (size_t offset = 0; offset < kChunk && offset + patternLength <= window.size(); ++offset) {
            bool match = true;
            for (uint32_t i = 0; i < patternLength && match; ++i) {
                const uint8_t bits = mask != nullptr ? mask[i] : 0xFF;
                match = (window[offset + i] & bits) == (pattern[i] & bits);
            }
            if (match) {
                found = static_cast<TargetAddress>(at + offset);
                return S_OK;
            }
        }
    }
    return S_OK;
}

HRESULT SimPlatformMemory::Verify(TargetAddress start, TargetAddress end, const uint8_t* data)
{
    if (data == nullptr)
        return E_POINTER;
    HRESULT hr = CheckRange(start, end);
    if (Succeeded(hr))
        hr = CheckMapped(start, end, kCannotRead);
    if (Failed(hr))
        return hr;
    std::vector<uint8_t> chunk;
    return EachChunk(Length(start, end), false, [&](uint64_t offset, size_t length) {
        chunk.resize(length);
        const auto at = static_cast<TargetAddress>(start + offset);
        if (HRESULT step = ReadChunk(at, length, chunk.data(), kCannotRead); Failed(step))
            return step;
        const uint8_t* expected = data + offset;
        const auto diff = std::mismatch(chunk.begin(), chunk.end(), expected);
        if (diff.first == chunk.end())
            return S_OK;
        const auto where = at + static_cast<TargetAddress>(diff.first - chunk.begin());
        return Fail(kVerifyFailed, Mismatch(where, *diff.first, *diff.second, "expected"));
    });
}

HRESULT SimPlatformMemory::Test(TargetAddress start, TargetAddress end)
{
    HRESULT hr = CheckRange(start, end);
    if (Succeeded(hr))
        hr = CheckMapped(start, end, kCannotWrite);
    if (Failed(hr))
        return hr;
    std::vector<uint8_t> chunk, back;
    return EachChunk(Length(start, end), false, [&](uint64_t offset, size_t length) {
        const uint64_t at = uint64_t{start} + offset;
        chunk.resize(length);
        back.resize(length);
        for (int pass = 0; pass < 3; ++pass) {
            for (size_t i = 0; i < length; ++i)
                chunk[i] = pass == 0 ? 0x55 : pass == 1 ? 0xAA : AddressPattern(at + i);
            HRESULT step = WriteChunk(static_cast<TargetAddress>(at), length, chunk.data(), kCannotWrite);
            if (Succeeded(step))
                step = ReadChunk(static_cast<TargetAddress>(at), length, back.data(), kCannotRead);
            if (Failed(step))
                return step;
            const auto diff = std::mismatch(chunk.begin(), chunk.end(), back.begin());
            if (diff.first != chunk.end())
                return Fail(kVerifyFailed,
                            "Memory test failed at " +
                                HexAddress(at + static_cast<uint64_t>(diff.first - chunk.begin())) + ": " +
                                HexByte(*diff.first) + " written, " + HexByte(*diff.second) + " read");
        }
        return S_OK;
    });
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
        address = start + static_cast<TargetAddress>(diff.first - back.begin());
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
