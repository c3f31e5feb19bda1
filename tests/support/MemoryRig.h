#pragma once
#include <set>
#include <string>
#include <vector>

#include "FakePlatformMemory.h"
#include "boundary/Ids.h"
#include "component/memory/CMemoryArea.h"
#include "component/memory/CVELMemoryManagerDisableAble.h"
#include "workbench/CommandRecorder.h"
#include "workbench/ErrorTableService.h"
#include "workbench/ServiceRegistry.h"

// The workbench services a manager registers with and records to; made first,
// so that they outlive it.
struct MemoryHost {
    MemoryHost()
    {
        registry.RegisterService(Ids::ErrorTable, &errors);
        registry.RegisterService(Ids::IQCommandRecorder, &recorder);
    }
    ServiceRegistry registry;
    ErrorTableService errors;
    CommandRecorder recorder;
};

// A manager attached to a fake platform; the log starts empty after the attach.
struct MemoryRig : MemoryHost {
    explicit MemoryRig(std::vector<FakeArea> areas, std::set<int> generations = {1, 2, 3, 4, 5})
        : platform(std::move(areas), std::move(generations)), manager(&registry)
    {
        platform.RegisterIn(registry);
        manager.AttachPlatform(&registry);
        platform.log.clear();
    }

    // A read into a buffer whose bytes start as 0xEE, so untouched ones show.
    std::vector<uint8_t> Read(TargetAddress start, size_t count, AccessSize size = 1,
                              HRESULT* result = nullptr)
    {
        std::vector<uint8_t> out(count, 0xEE);
        const HRESULT hr =
            manager.ReadMemory(start, start.WrappingAdd(static_cast<uint32_t>(count - 1)), size, out.data());
        if (result != nullptr)
            *result = hr;
        return out;
    }

    FakePlatformMemory platform;
    CVELMemoryManagerDisableAble manager;
};

// A fake platform over the whole address space, handed to caches directly,
// and a memory map that covers it all.
struct CacheRig {
    FakePlatformMemory platform{{FakeArea{0, 0xFFFFFFFF}}};
    IQPlatformMemory* first = platform.AsFirst();
    std::vector<CMemoryArea> everywhere{CMemoryArea{0, 0xFFFFFFFF}};
};

using Log = std::vector<std::string>;
using Bytes = std::vector<uint8_t>;
