#pragma once
#include "component/memory/CCache.h"

// The cache of plain byte memory, read and written through the platform's
// unsized operations.
class CCacheMemory : public CCache
{
public:
    CCacheMemory(IQPlatformMemory* memory, IQPlatformMemory2* memory2, IQPlatformMemory3* memory3,
                 bool enabled)
        : CCache(memory, memory2, memory3, enabled)
    {
    }

    AccessSize GetAccessSize() const override { return 1; }

protected:
    HRESULT ReadPlatform(TargetAddress start, TargetAddress end, uint8_t* buffer) override;
    HRESULT WritePlatformReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                   const uint8_t* buffer, VariantBool& failed, TargetAddress& address,
                                   int32_t& written, int32_t& found) override;
    HRESULT WritePlatformVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                  const uint8_t* buffer) override;
    HRESULT WritePlatform(TargetAddress start, TargetAddress end, const uint8_t* buffer) override;
};
