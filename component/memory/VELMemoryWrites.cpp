// How the memory manager writes and fills: cut along the memory map, through
// the caches, falling back from the reporting and verifying platform
// operations to the plain ones where a platform lacks them.
#include "component/memory/CVELMemoryManager.h"

#include <algorithm>
#include <vector>

int32_t CVELMemoryManager::LowerMode(int32_t mode) const
{
    if (mode == 2 && PlatformMemory5 == nullptr)
        mode = 1;
    if (mode == 1 && PlatformMemory3 == nullptr && Attached())
        mode = 0;
    return mode;
}

HRESULT CVELMemoryManager::WriteChunk(CCache& cache, const WalkChunk& chunk, VariantBool verify,
                                      const uint8_t* data, int32_t& mode, VariantBool* failed,
                                      TargetAddress* address, int32_t* written, int32_t* found)
{
    // A platform that turns an operation down once does so for every chunk:
    // the mode stays lowered for the rest of the walk.
    if (mode == 2) {
        VariantBool chunkFailed = VARIANT_FALSE;
        TargetAddress at = 0;
        int32_t wrote = 0;
        int32_t read = 0;
        const HRESULT hr =
            cache.WriteReporting(chunk.start, chunk.end, verify, data, chunkFailed, at, wrote, read);
        if (hr != E_NOTIMPL) {
            // The first difference is the one to show.
            if (chunkFailed != 0 && (failed == nullptr || *failed == 0)) {
                if (failed != nullptr)
                    *failed = VARIANT_TRUE;
                if (address != nullptr)
                    *address = at;
                if (written != nullptr)
                    *written = wrote;
                if (found != nullptr)
                    *found = read;
            }
            return hr;
        }
        mode = 1;
    }
    if (mode == 1) {
        const HRESULT hr = cache.WriteVerified(chunk.start, chunk.end, verify, data);
        if (hr != E_NOTIMPL)
            return hr;
        mode = 0;
    }
    return cache.Write(chunk.start, chunk.end, data);
}

HRESULT CVELMemoryManager::WriteWalk(TargetAddress start, TargetAddress end, VariantBool verify,
                                     uint32_t size, const uint8_t* buffer, VariantBool* failed,
                                     TargetAddress* address, int32_t* written, int32_t* found, int32_t mode,
                                     Order order)
{
    if (const HRESULT hr = CheckRange(start, end, buffer, size); hr != S_OK)
        return hr;
    if (size > 0xFFFF || mode < 0 || mode > 2)
        return E_INVALIDARG;
    if (!Attached())
        return E_FAIL;
    const auto accessSize = static_cast<AccessSize>(size);
    if (failed != nullptr)
        *failed = VARIANT_FALSE;
    mode = LowerMode(mode);
    std::vector<uint8_t> scratch;
    const auto treat = [&](const WalkChunk& chunk) {
        ClearAllCaches();
        scratch.assign(buffer + chunk.offset, buffer + chunk.offset + chunk.Length());
        if (ReversesOnWrite(chunk.area, accessSize, order))
            ReverseElements(scratch.data(), scratch.size(), accessSize);
        CCache& cache = CacheFor(chunk.area, accessSize, chunk.start);
        return WriteChunk(cache, chunk, verify, scratch.data(), mode, failed, address, written, found);
    };
    const WalkResult walked = WalkRange(Areas, start, end, accessSize, GapRule::Skip, treat);
    if (Failed(walked.hr))
        return walked.hr;
    return walked.endedInGap ? kWriteOutsideMap : walked.hr;
}

HRESULT CVELMemoryManager::WriteMemoryEx(TargetAddress start, TargetAddress end, VariantBool verify,
                                         uint32_t size, const uint8_t* buffer, VariantBool* failed,
                                         TargetAddress* address, int32_t* written, int32_t* found,
                                         int32_t mode)
{
    return WriteWalk(start, end, verify, size, buffer, failed, address, written, found, mode,
                     Order::MostSignificantFirst);
}

HRESULT CVELMemoryManager::WriteMemoryValuesEx(TargetAddress start, TargetAddress end, VariantBool verify,
                                               uint32_t size, const uint8_t* buffer, VariantBool* failed,
                                               TargetAddress* address, int32_t* written, int32_t* found,
                                               int32_t mode)
{
    return WriteWalk(start, end, verify, size, buffer, failed, address, written, found, mode, Order::Native);
}

HRESULT CVELMemoryManager::WriteMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                       const uint8_t* buffer)
{
    return WriteMemoryEx(start, end, VARIANT_FALSE, accessSize, buffer, nullptr, nullptr, nullptr, nullptr,
                         0);
}

HRESULT CVELMemoryManager::WriteMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                             const uint8_t* buffer)
{
    return WriteMemoryValuesEx(start, end, VARIANT_FALSE, accessSize, buffer, nullptr, nullptr, nullptr,
                               nullptr, 0);
}

HRESULT CVELMemoryManager::WriteMemoryVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                               AccessSize accessSize, const uint8_t* buffer)
{
    return WriteMemoryEx(start, end, verify, accessSize, buffer, nullptr, nullptr, nullptr, nullptr, 1);
}

HRESULT CVELMemoryManager::WriteMemoryValuesVerified(TargetAddress start, TargetAddress end,
                                                     VariantBool verify, AccessSize accessSize,
                                                     const uint8_t* buffer)
{
    return WriteMemoryValuesEx(start, end, verify, accessSize, buffer, nullptr, nullptr, nullptr, nullptr, 1);
}

HRESULT CVELMemoryManager::WriteMemoryReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                                AccessSize accessSize, const uint8_t* buffer,
                                                VariantBool& failed, TargetAddress& address, int32_t& written,
                                                int32_t& found)
{
    return WriteMemoryEx(start, end, verify, accessSize, buffer, &failed, &address, &written, &found, 2);
}

HRESULT CVELMemoryManager::WriteMemoryValuesReporting(TargetAddress start, TargetAddress end,
                                                      VariantBool verify, AccessSize accessSize,
                                                      const uint8_t* buffer, VariantBool& failed,
                                                      TargetAddress& address, int32_t& written,
                                                      int32_t& found)
{
    return WriteMemoryValuesEx(start, end, verify, accessSize, buffer, &failed, &address, &written, &found,
                               2);
}

// --- filling ---------------------------------------------------------------

HRESULT CVELMemoryManager::PlainFill(TargetAddress start, TargetAddress end, uint32_t patternLength,
                                     const uint8_t* pattern)
{
    if (PlatformMemory2 != nullptr)
        return PlatformMemory2->Fill(start, end, patternLength, pattern);
    return PlatformMemory != nullptr ? PlatformMemory->Fill(start, end, patternLength, pattern) : E_FAIL;
}

HRESULT CVELMemoryManager::FillMemoryEx(TargetAddress start, TargetAddress end, VariantBool verify,
                                        uint32_t size, const uint8_t* buffer, VariantBool* failed,
                                        TargetAddress* /*address*/, int32_t* /*written*/, int32_t* /*found*/,
                                        int32_t mode)
{
    if (const HRESULT hr = CheckRange(start, end, buffer, size); hr != S_OK)
        return hr;
    if (mode < 0 || mode > 2)
        return E_INVALIDARG;
    if (!Attached())
        return E_FAIL;
    RecordFill(start, end, size, buffer, verify);
    if (failed != nullptr)
        *failed = VARIANT_FALSE;
    mode = LowerMode(mode);
    ClearAllCaches();
    std::vector<uint8_t> pattern(buffer, buffer + size);
    const auto treat = [&](const WalkChunk& chunk) {
        if (chunk.area.ByteOrder == kOwnByteOrder)
            std::copy(buffer, buffer + size, pattern.begin());
        else
            std::reverse_copy(buffer, buffer + size, pattern.begin());
        if (mode != 0 && PlatformMemory3 != nullptr) {
            const HRESULT hr = LongOperation([&] {
                return PlatformMemory3->FillVerified(chunk.start, chunk.end, verify, size, pattern.data());
            });
            if (hr != E_NOTIMPL)
                return hr;
            mode = 0;
        }
        return PlainFill(chunk.start, chunk.end, size, pattern.data());
    };
    const WalkResult walked = WalkRange(Areas, start, end, 1, GapRule::Stop, treat);
    if (Failed(walked.hr))
        return walked.hr;
    return walked.endedInGap ? kFillOutsideMap : walked.hr;
}

HRESULT CVELMemoryManager::FillMemory(TargetAddress start, TargetAddress end, uint32_t patternLength,
                                      const uint8_t* pattern)
{
    return FillMemoryEx(start, end, VARIANT_FALSE, patternLength, pattern, nullptr, nullptr, nullptr, nullptr,
                        0);
}

HRESULT CVELMemoryManager::FillMemoryVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                              uint32_t patternLength, const uint8_t* pattern)
{
    return FillMemoryEx(start, end, verify, patternLength, pattern, nullptr, nullptr, nullptr, nullptr, 1);
}

HRESULT CVELMemoryManager::FillMemoryReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                               uint32_t patternLength, const uint8_t* pattern,
                                               VariantBool& failed, TargetAddress& address, int32_t& written,
                                               int32_t& found)
{
    return FillMemoryEx(start, end, verify, patternLength, pattern, &failed, &address, &written, &found, 2);
}
