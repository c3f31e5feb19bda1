#pragma once
#include <cstdint>
#include <vector>

#include "boundary/Flags.h"

// One page of target memory as last fetched.
class CCachePage
{
public:
    // Zero-filled, so that bytes the platform cannot serve read as zero.
    CCachePage(TargetAddress address, uint32_t size) : Data(size, 0), Address(address) {}

    // Null for an address outside the page; the unsigned difference also
    // rejects addresses below the page.
    uint8_t* DataAt(TargetAddress address)
    {
        const uint32_t offset = address.OffsetFrom(Address);
        return offset < Data.size() ? Data.data() + offset : nullptr;
    }

    std::vector<uint8_t> Data;
    TargetAddress Address;
};
