#include "component/memory/MemoryWalk.h"

#include <algorithm>

HRESULT CheckRange(TargetAddress start, TargetAddress end, const void* buffer, uint32_t accessSize)
{
    if (buffer == nullptr)
        return E_POINTER;
    return end < start || accessSize == 0 ? E_INVALIDARG : S_OK;
}

AccessSize NormalSize(AccessSize accessSize)
{
    switch (accessSize) {
    case 1:
    case 2:
    case 4:
    case 8:
        return accessSize;
    default:
        return accessSize % 2 == 0 ? 2 : 1;
    }
}

const CMemoryArea* FindArea(std::span<const CMemoryArea> areas, TargetAddress address)
{
    for (const auto& area : areas) {
        if (area.Start <= address && address <= area.End)
            return &area;
    }
    return nullptr;
}

const CMemoryArea* FindNextArea(std::span<const CMemoryArea> areas, TargetAddress address)
{
    const CMemoryArea* best = nullptr;
    for (const auto& area : areas) {
        // An area whose bounds are reversed holds nothing and cannot be walked into.
        if (area.Start > address && area.Start <= area.End && (best == nullptr || area.Start < best->Start))
            best = &area;
    }
    return best;
}

WalkResult WalkRange(std::span<const CMemoryArea> areas, TargetAddress start, TargetAddress end,
                     AccessSize accessSize, GapRule gaps,
                     const std::function<HRESULT(const WalkChunk&)>& treat)
{
    const uint64_t step = accessSize == 0 ? 1 : accessSize;
    // Kept wide: a skip rounded up to whole elements may run past the top of
    // the address space.
    uint64_t pos = start.Value();
    for (;;) {
        const TargetAddress here(static_cast<uint32_t>(pos));
        const CMemoryArea* area = FindArea(areas, here);
        if (area == nullptr) {
            if (gaps == GapRule::Stop)
                return {S_OK, true};
            const CMemoryArea* next = FindNextArea(areas, here);
            if (next == nullptr || next->Start > end)
                return {S_OK, true};
            const uint64_t delta = (next->Start.Value() - pos + step - 1) / step * step;
            pos += delta;
            if (pos > end.Value())
                return {S_OK, true};
            continue;
        }
        const TargetAddress chunkEnd = std::min(area->End, end);
        const HRESULT hr = treat(WalkChunk{*area, here, chunkEnd, static_cast<size_t>(pos - start.Value())});
        if (Failed(hr))
            return {hr, false};
        if (chunkEnd == end)
            return {hr, false};
        pos = uint64_t{chunkEnd.Value()} + 1;
    }
}

void ReverseElements(uint8_t* data, size_t length, AccessSize accessSize)
{
    if (accessSize <= 1)
        return;
    for (size_t at = 0; at + accessSize <= length; at += accessSize)
        std::reverse(data + at, data + at + accessSize);
}
