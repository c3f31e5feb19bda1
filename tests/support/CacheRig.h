#pragma once
#include <vector>

#include "FakeMemory1.h"
#include "FakeMemory2.h"
#include "FakeTarget.h"
#include "component/memory/CMemoryArea.h"

// One fake target seen through both interface generations, and a memory map
// that covers the whole address space.
struct CacheRig {
    explicit CacheRig(uint32_t platformPageSize = 0) : second(target, platformPageSize) {}

    FakeTarget target;
    FakeMemory1 first{target};
    FakeMemory2 second;
    std::vector<CMemoryArea> everywhere{CMemoryArea{0, 0xFFFFFFFF}};
};

inline std::vector<uint8_t> Expected(TargetAddress start, size_t count)
{
    std::vector<uint8_t> bytes(count);
    for (size_t i = 0; i < count; ++i)
        bytes[i] = FakeTarget::Pattern(start.WrappingAdd(static_cast<uint32_t>(i)));
    return bytes;
}
