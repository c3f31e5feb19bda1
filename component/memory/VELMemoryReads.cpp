// How the memory manager reads: cut along the memory map, served by the
// caches or straight by the platform, and put in the byte order asked for.
#include "component/memory/CVELMemoryManager.h"

HRESULT CVELMemoryManager::ReadPlatform(const WalkChunk& chunk, AccessSize sizedAccess, uint8_t* out)
{
    if (chunk.area.SizedAccess == 0) {
        if (PlatformMemory2 != nullptr)
            return PlatformMemory2->Read(chunk.start, chunk.end, out);
        return PlatformMemory != nullptr ? PlatformMemory->Read(chunk.start, chunk.end, out) : E_FAIL;
    }
    if (PlatformMemory2 != nullptr)
        return PlatformMemory2->ReadSized(chunk.start, chunk.end, sizedAccess, out);
    return PlatformMemory != nullptr ? PlatformMemory->ReadSized(chunk.start, chunk.end, sizedAccess, out)
                                     : E_FAIL;
}

HRESULT CVELMemoryManager::ReadWalk(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                    uint8_t* buffer, Source source, Order order)
{
    if (const HRESULT hr = CheckRange(start, end, buffer, accessSize); hr != S_OK)
        return hr;
    if (!Attached())
        return E_FAIL;
    // Past the caches, the ...Values form hands the caller's size to the
    // platform as it is; the plain form the size a sized cache would use.
    const AccessSize sizedAccess = order == Order::Native ? accessSize : NormalSize(accessSize);
    const auto treat = [&](const WalkChunk& chunk) {
        uint8_t* out = buffer + chunk.offset;
        const HRESULT hr = source == Source::Cache
                               ? CacheFor(chunk.area, accessSize, chunk.start)
                                     .Read(chunk.start, chunk.end, out,
                                           chunk.area.SizedAccess != 0 ? sizedAreas_ : plainAreas_)
                               : ReadPlatform(chunk, sizedAccess, out);
        if (Succeeded(hr) && ReversesOnRead(chunk.area, accessSize, order))
            ReverseElements(out, chunk.Length(), accessSize);
        return hr;
    };
    return WalkRange(Areas, start, end, accessSize, GapRule::Skip, treat).hr;
}

HRESULT CVELMemoryManager::ReadMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                      uint8_t* buffer)
{
    return ReadWalk(start, end, accessSize, buffer, Source::Cache, Order::MostSignificantFirst);
}

HRESULT CVELMemoryManager::ReadMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                            uint8_t* buffer)
{
    return ReadWalk(start, end, accessSize, buffer, Source::Cache, Order::Native);
}

HRESULT CVELMemoryManager::ReadMemoryDirect(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                            uint8_t* buffer)
{
    return ReadWalk(start, end, accessSize, buffer, Source::Platform, Order::MostSignificantFirst);
}

HRESULT CVELMemoryManager::ReadMemoryValuesDirect(TargetAddress start, TargetAddress end,
                                                  AccessSize accessSize, uint8_t* buffer)
{
    return ReadWalk(start, end, accessSize, buffer, Source::Platform, Order::Native);
}
