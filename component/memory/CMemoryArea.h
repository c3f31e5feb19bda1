#pragma once
#include <cstdint>

#include "boundary/Flags.h"

// One entry of the target's memory map, bounds inclusive. The further fields
// are carried from the platform for the memory manager; the cache reads only
// the bounds.
struct CMemoryArea {
    TargetAddress Start = 0;
    TargetAddress End = 0;
    uint32_t ByteOrder = 1;
    uint32_t Info = 0;
    uint32_t SizedAccess = 0;
    uint32_t Attribute1 = 0;
    uint32_t Attribute2 = 0;
    uint32_t Attribute3 = 0;
};
