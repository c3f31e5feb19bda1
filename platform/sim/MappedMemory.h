#pragma once
#include <cstddef>
#include <cstdint>

#include <unicorn/unicorn.h>

#include "platform/sim/SimMemoryMap.h"
#include "platform/sim/SimTypes.h"

// The debugger's view of target memory: every mapped byte whatever the firmware
// may do with it, peripherals reading as zero and dropping writes. Nothing is
// written unless the whole range is mapped.
class MappedMemory
{
public:
    MappedMemory(uc_engine*& uc, const SimMemoryMap& map) : uc_(uc), map_(map) {}

    SimResult Read(uint32_t address, size_t size, void* out) const;
    // *codeChanged tells whether executable memory was written.
    SimResult Write(uint32_t address, size_t size, const void* data, bool* codeChanged);

private:
    SimResult CheckMapped(uint32_t address, size_t size) const;

    // A reference: the engine opens Unicorn after building this.
    uc_engine*& uc_;
    const SimMemoryMap& map_;
};
