// The simulator memory's whole-range operations: compare, copy, fill, find,
// verify and test, each worked in pieces so that no range needs a buffer of
// its own size.
#include "platform/simdriver/SimPlatformMemory.h"

#include <algorithm>
#include <vector>

#include "platform/sim/SimTarget.h"
#include "platform/simdriver/SimMemoryText.h"

using SimMemoryText::HexAddress;
using SimMemoryText::HexByte;
using SimMemoryText::Mismatch;

namespace
{

// Whole-range operations move memory in pieces of this size, so that a range
// as large as the address space never needs a buffer of its size.
constexpr uint64_t kChunk = 0x10000;

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

} // namespace

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
        const auto from = start.WrappingAdd(static_cast<uint32_t>(offset));
        const auto to = destination.WrappingAdd(static_cast<uint32_t>(offset));
        HRESULT step = ReadChunk(from, length, source.data(), kCannotRead);
        if (Succeeded(step))
            step = ReadChunk(to, length, target.data(), kCannotRead);
        if (Failed(step))
            return step;
        const auto diff = std::mismatch(source.begin(), source.end(), target.begin());
        if (diff.first == source.end())
            return S_OK;
        const auto at = static_cast<uint32_t>(diff.first - source.begin());
        first = *diff.first;
        second = *diff.second;
        address = from.WrappingAdd(at);
        return Fail(kCompareFailed, HexByte(first) + " at " + HexAddress(address) + ", " + HexByte(second) +
                                        " at " + HexAddress(to.WrappingAdd(at)));
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
        const auto to = destination.WrappingAdd(static_cast<uint32_t>(offset));
        HRESULT step =
            ReadChunk(start.WrappingAdd(static_cast<uint32_t>(offset)), length, chunk.data(), kCannotCopy);
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
        address = to.WrappingAdd(static_cast<uint32_t>(diff.first - chunk.begin()));
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
        const auto at = start.WrappingAdd(static_cast<uint32_t>(offset));
        if (!check)
            return WriteChunk(at, length, chunk.data(), kCannotWrite);
        back.resize(length);
        if (HRESULT step = ReadChunk(at, length, back.data(), kCannotRead); Failed(step))
            return step;
        const auto diff = std::mismatch(chunk.begin(), chunk.end(), back.begin());
        if (diff.first == chunk.end())
            return S_OK;
        const auto where = at.WrappingAdd(static_cast<uint32_t>(diff.first - chunk.begin()));
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
        const uint64_t first = std::max<uint64_t>(start.Value(), region.base);
        const uint64_t last = std::min<uint64_t>(end.Value(), region.End() - 1);
        if (first > last)
            continue;
        if (!stretches.empty() && stretches.back().second + 1 == first)
            stretches.back().second = last;
        else
            stretches.emplace_back(first, last);
    }
    for (const auto& [first, last] : stretches) {
        std::optional<TargetAddress> found;
        hr = FindIn(TargetAddress(static_cast<uint32_t>(first)), TargetAddress(static_cast<uint32_t>(last)),
                    patternLength, pattern, mask, found);
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
    const uint64_t last = end.Value();
    std::vector<uint8_t> window;
    // Each window holds the chunk's candidate starts and the pattern's tail past them.
    for (uint64_t at = start.Value(); at + patternLength - 1 <= last; at += kChunk) {
        const uint64_t windowLast = std::min(last, at + kChunk - 1 + patternLength - 1);
        window.resize(static_cast<size_t>(windowLast - at + 1));
        if (HRESULT hr = ReadChunk(TargetAddress(static_cast<uint32_t>(at)), window.size(), window.data(),
                                   kCannotRead);
            Failed(hr))
            return hr;
        for (size_t offset = 0; offset < kChunk && offset + patternLength <= window.size(); ++offset) {
            bool match = true;
            for (uint32_t i = 0; i < patternLength && match; ++i) {
                const uint8_t bits = mask != nullptr ? mask[i] : 0xFF;
                match = (window[offset + i] & bits) == (pattern[i] & bits);
            }
            if (match) {
                found = TargetAddress(static_cast<uint32_t>(at + offset));
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
        const auto at = start.WrappingAdd(static_cast<uint32_t>(offset));
        if (HRESULT step = ReadChunk(at, length, chunk.data(), kCannotRead); Failed(step))
            return step;
        const uint8_t* expected = data + offset;
        const auto diff = std::mismatch(chunk.begin(), chunk.end(), expected);
        if (diff.first == chunk.end())
            return S_OK;
        const auto where = at.WrappingAdd(static_cast<uint32_t>(diff.first - chunk.begin()));
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
        const uint64_t at = uint64_t{start.Value()} + offset;
        chunk.resize(length);
        back.resize(length);
        for (int pass = 0; pass < 3; ++pass) {
            for (size_t i = 0; i < length; ++i)
                chunk[i] = pass == 0 ? 0x55 : pass == 1 ? 0xAA : AddressPattern(at + i);
            HRESULT step =
                WriteChunk(TargetAddress(static_cast<uint32_t>(at)), length, chunk.data(), kCannotWrite);
            if (Succeeded(step))
                step = ReadChunk(TargetAddress(static_cast<uint32_t>(at)), length, back.data(), kCannotRead);
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
