#pragma once
#include <span>
#include <vector>

#include "boundary/Flags.h"
#include "component/memory/CMemoryArea.h"

// The parts of start..end that lie in `areas`, in ascending order, adjoining
// parts merged. Every part but the first starts on a multiple of
// `accessSize`, so that a sized platform read begins on a boundary of its size.
std::vector<AddressRange> SplitByAreas(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                       std::span<const CMemoryArea> areas);
