#pragma once
#include <cstdint>
#include <string>

enum class RegionKind { Flash, Ram, Peripheral };

// What the firmware may do with a region. The debugger may read and write every
// mapped byte regardless, which is how a download reaches flash.
enum RegionAccess : uint8_t { kAccessRead = 1, kAccessWrite = 2, kAccessExecute = 4 };

struct SimRegion {
    std::string name;
    uint32_t base = 0;
    // 64 bits so that a region may reach the very top of the address space.
    uint64_t size = 0;
    RegionKind kind = RegionKind::Ram;
    uint8_t access = 0;

    uint64_t End() const { return uint64_t{base} + size; }
    bool Contains(uint64_t address) const { return address >= base && address < End(); }
    bool Allows(uint8_t bits) const { return (access & bits) == bits; }
};

inline const char* RegionKindName(RegionKind kind)
{
    switch (kind) {
    case RegionKind::Flash:
        return "flash";
    case RegionKind::Ram:
        return "ram";
    case RegionKind::Peripheral:
        return "peripheral";
    }
    return "?";
}
