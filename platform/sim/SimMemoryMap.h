#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sim/SimRegion.h"

struct SimMapParse;

// The regions of a simulated target, parsed from a platform description with one
// region a line:
//
//   kind base size access [name]
//
//   flash      0x08000000 0x00100000 rx   flash
//   ram        0x20000000 0x00020000 rwx  sram
//   peripheral 0x40000000 0x20000000 rw   peripherals
//
// kind is flash, ram or peripheral; base and size are decimal or 0x-hex and multiples
// of 4 KiB (the simulator maps whole pages); access is built from r, w and x. The name
// defaults to the kind. Blank lines and text after '#' are ignored. Peripheral
// regions read as zero and accept any write.
class SimMemoryMap
{
public:
    static SimMapParse Parse(std::string_view description);

    // Sorted by base address; regions never overlap.
    const std::vector<SimRegion>& Regions() const { return regions_; }
    const SimRegion* Find(uint32_t address) const;
    // The lowest region of that kind.
    const SimRegion* FirstOf(RegionKind kind) const;
    // "flash 0x08000000 1024 KiB, sram 0x20000000 128 KiB, ...", by base address.
    std::string Summary(bool withPeripherals = true) const;

private:
    std::vector<SimRegion> regions_;
};

struct SimMapParse {
    std::optional<SimMemoryMap> map;
    // "line N: reason" when map is empty.
    std::string error;
};
