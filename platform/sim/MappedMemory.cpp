#include "platform/sim/MappedMemory.h"

#include <algorithm>
#include <cstring>

#include "platform/sim/SimText.h"

SimResult MappedMemory::CheckMapped(uint32_t address, size_t size) const
{
    if (uint64_t{address} + size > (uint64_t{1} << 32))
        return SimResult::Fail(address, "Range at " + SimText::Hex(address) + " wraps beyond 0xFFFFFFFF");
    uint64_t at = address;
    const uint64_t end = uint64_t{address} + size;
    while (at < end) {
        const SimRegion* region = map_.Find(static_cast<uint32_t>(at));
        if (!region)
            return SimResult::Fail(static_cast<uint32_t>(at),
                                   "No memory at " + SimText::Hex(static_cast<uint32_t>(at)));
        at = region->End();
    }
    return SimResult::Ok();
}

SimResult MappedMemory::Read(uint32_t address, size_t size, void* out) const
{
    if (size == 0)
        return SimResult::Ok();
    if (!out)
        return SimResult::Fail(address, "No buffer to read into");
    if (SimResult mapped = CheckMapped(address, size); !mapped)
        return mapped;
    auto* bytes = static_cast<uint8_t*>(out);
    uint64_t at = address;
    const uint64_t end = at + size;
    while (at < end) {
        const SimRegion* region = map_.Find(static_cast<uint32_t>(at));
        const size_t chunk = static_cast<size_t>(std::min(end, region->End()) - at);
        if (region->kind == RegionKind::Peripheral)
            std::memset(bytes, 0, chunk);
        else if (uc_err err = uc_mem_read(uc_, at, bytes, chunk))
            return SimResult::Fail(static_cast<uint32_t>(at), uc_strerror(err));
        bytes += chunk;
        at += chunk;
    }
    return SimResult::Ok();
}

SimResult MappedMemory::Write(uint32_t address, size_t size, const void* data, bool* codeChanged)
{
    if (size == 0)
        return SimResult::Ok();
    if (!data)
        return SimResult::Fail(address, "No data to write");
    if (SimResult mapped = CheckMapped(address, size); !mapped)
        return mapped;
    const auto* bytes = static_cast<const uint8_t*>(data);
    uint64_t at = address;
    const uint64_t end = at + size;
    while (at < end) {
        const SimRegion* region = map_.Find(static_cast<uint32_t>(at));
        const size_t chunk = static_cast<size_t>(std::min(end, region->End()) - at);
        if (region->kind != RegionKind::Peripheral) {
            // Unicorn lifts the write protection of flash for this call alone.
            if (uc_err err = uc_mem_write(uc_, at, bytes, chunk))
                return SimResult::Fail(static_cast<uint32_t>(at), uc_strerror(err));
            if (region->Allows(kAccessExecute)) {
                // New code must not run from blocks translated from the old.
                uc_ctl_remove_cache(uc_, at, at + chunk);
                if (codeChanged)
                    *codeChanged = true;
            }
        }
        bytes += chunk;
        at += chunk;
    }
    return SimResult::Ok();
}
