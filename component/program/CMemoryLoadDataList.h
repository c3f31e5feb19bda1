#pragma once
#include <cstddef>
#include <optional>
#include <vector>

#include "component/program/CMemoryLoadData.h"

// The ranges a load wrote, sorted by start; no two overlap or touch. A reader
// reports its blocks one at a time, so a block that touches or overlaps what
// is there joins it: the list holds the union of all that was added, with as
// few ranges as that union allows.
class CMemoryLoadDataList
{
public:
    // False, and nothing changed, when end lies below start.
    bool AddArea(TargetAddress start, TargetAddress end);
    void Clear() { ranges_.clear(); }

    size_t Count() const { return ranges_.size(); }
    // The range at the index, in ascending order; nothing past the end.
    std::optional<CMemoryLoadData> At(size_t index) const;
    const std::vector<CMemoryLoadData>& Ranges() const { return ranges_; }

private:
    std::vector<CMemoryLoadData> ranges_;
};
