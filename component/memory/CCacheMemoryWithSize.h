#pragma once
#include "component/memory/CCache.h"

// The cache of memory that must be reached with one access size. The address
// alignment it was made for only tells such caches apart in their owner: its
// pages stand on multiples of the page size all the same.
class CCacheMemoryWithSize : public CCache
{
public:
    CCacheMemoryWithSize(AccessSize accessSize, uint32_t alignment, IQPlatformMemory* memory,
                         IQPlatformMemory2* memory2, IQPlatformMemory3* memory3, bool enabled);

    AccessSize GetAccessSize() const override { return accessSize_; }

protected:
    HRESULT ReadPlatform(TargetAddress start, TargetAddress end, uint8_t* buffer) override;
    HRESULT WritePlatformReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                   const uint8_t* buffer, VariantBool& failed, TargetAddress& address,
                                   int32_t& written, int32_t& found) override;
    HRESULT WritePlatformVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                  const uint8_t* buffer) override;
    HRESULT WritePlatform(TargetAddress start, TargetAddress end, const uint8_t* buffer) override;

private:
    AccessSize accessSize_;
};
