#pragma once
#include <string>
#include <vector>

#include "FakePlatformMemory.h"
#include "component/memory/CMemoryArea.h"

// A fake platform over the whole address space, handed to caches directly,
// and a memory map that covers it all.
struct CacheRig {
    FakePlatformMemory platform{{FakeArea{0, 0xFFFFFFFF}}};
    IQPlatformMemory* first = platform.AsFirst();
    std::vector<CMemoryArea> everywhere{CMemoryArea{0, 0xFFFFFFFF}};
};

using Log = std::vector<std::string>;
