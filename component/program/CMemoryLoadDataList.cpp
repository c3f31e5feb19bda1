#include "component/program/CMemoryLoadDataList.h"

#include <algorithm>
#include <cstdint>

namespace
{

// Widened, so that the address behind 0xFFFFFFFF exists and nothing wraps.
uint64_t Behind(TargetAddress address)
{
    return uint64_t{address.Value()} + 1;
}

} // namespace

bool CMemoryLoadDataList::AddArea(TargetAddress start, TargetAddress end)
{
    if (end < start)
        return false;
    // The first range that reaches up to start or touches it from below.
    auto first = std::find_if(ranges_.begin(), ranges_.end(),
                              [&](const CMemoryLoadData& r) { return Behind(r.End) >= start.Value(); });
    // Behind it, every range that begins at or before the address behind end.
    auto last = std::find_if(first, ranges_.end(),
                             [&](const CMemoryLoadData& r) { return r.Start.Value() > Behind(end); });
    if (first == last) {
        ranges_.insert(first, {start, end});
        return true;
    }
    CMemoryLoadData joined{std::min(start, first->Start), std::max(end, std::prev(last)->End)};
    *first = joined;
    ranges_.erase(std::next(first), last);
    return true;
}

std::optional<CMemoryLoadData> CMemoryLoadDataList::At(size_t index) const
{
    if (index >= ranges_.size())
        return std::nullopt;
    return ranges_[index];
}
