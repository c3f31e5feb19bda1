#include "component/memory/SplitByAreas.h"

#include "component/memory/MemoryWalk.h"

namespace
{

std::vector<AddressRange> Collect(TargetAddress start, TargetAddress end, std::span<const CMemoryArea> areas)
{
    std::vector<AddressRange> parts;
    TargetAddress pos = start;
    // `pos` only moves to just behind an area that ends below `end`, so it
    // never wraps and the loop ends.
    for (;;) {
        const CMemoryArea* area = FindArea(areas, pos);
        if (area == nullptr) {
            area = FindNextArea(areas, pos);
            if (area == nullptr || end < area->Start)
                return parts;
            pos = area->Start;
        }
        if (end <= area->End) {
            parts.emplace_back(pos, end);
            return parts;
        }
        parts.emplace_back(pos, area->End);
        pos = area->End.WrappingAdd(1);
    }
}

} // namespace

std::vector<AddressRange> SplitByAreas(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                       std::span<const CMemoryArea> areas)
{
    std::vector<AddressRange> merged;
    if (end < start)
        return merged;
    for (const auto& part : Collect(start, end, areas)) {
        if (!merged.empty() && merged.back().Last().CheckedAdd(1) == part.First())
            merged.back() = AddressRange(merged.back().First(), part.Last());
        else
            merged.push_back(part);
    }
    if (accessSize <= 1)
        return merged;
    std::vector<AddressRange> aligned;
    aligned.reserve(merged.size());
    for (size_t i = 0; i < merged.size(); ++i) {
        auto part = merged[i];
        if (i > 0) {
            const auto rounded = part.First().AlignedUp(accessSize);
            // A part too short to hold an aligned start is dropped: reading
            // it would run past the part, and past the page near the top.
            if (!rounded || *rounded > part.Last())
                continue;
            part = AddressRange(*rounded, part.Last());
        }
        aligned.push_back(part);
    }
    return aligned;
}
