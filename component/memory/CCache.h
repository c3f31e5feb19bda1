#pragma once
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <vector>

#include "boundary/interfaces/PlatformMemory.h"
#include "component/memory/CCachePage.h"
#include "component/memory/CMemoryArea.h"

// Copies of target memory in fixed pages, so that views reading the same
// addresses again cost no platform access. A read cache only: every write
// empties it first. It cannot tell when the target changes memory by itself;
// its owner clears it at those moments.
class CCache
{
public:
    static constexpr uint32_t DefaultPageSize = 0x1000;
    // Each cache holds at most this many bytes, whatever the page size.
    static constexpr uint32_t Budget = 0x100000;

    CCache(IQPlatformMemory* memory, IQPlatformMemory2* memory2, IQPlatformMemory3* memory3, bool enabled);
    virtual ~CCache() = default;
    CCache(const CCache&) = delete;
    CCache& operator=(const CCache&) = delete;

    // start..end inclusive into `buffer`; `areas` are those of the kind this
    // cache serves. Bytes outside them read as zero.
    HRESULT Read(TargetAddress start, TargetAddress end, uint8_t* buffer, std::span<const CMemoryArea> areas);
    HRESULT Write(TargetAddress start, TargetAddress end, const uint8_t* buffer);
    HRESULT WriteVerified(TargetAddress start, TargetAddress end, VariantBool verify, const uint8_t* buffer);
    HRESULT WriteReporting(TargetAddress start, TargetAddress end, VariantBool verify, const uint8_t* buffer,
                           VariantBool& failed, TargetAddress& address, int32_t& written, int32_t& found);
    HRESULT Clear();
    // E_INVALIDARG for 0 or above the budget: those would leave no room for
    // even one page.
    HRESULT SetPageSize(uint32_t size);
    HRESULT SetEnabled(VariantBool enabled);

    virtual AccessSize GetAccessSize() const = 0;

    uint32_t PageSize() const { return pageSize_; }
    int32_t MaxPages() const { return maxPages_; }
    int32_t NextVictim() const { return nextVictim_; }
    bool Enabled() const { return enabled_ != 0; }
    size_t PageCount() const { return pages_.size(); }
    // The address of the page in slot `slot`; for tests of the replacement.
    const CCachePage* PageInSlot(size_t slot) const
    {
        return slot < pages_.size() ? pages_[slot].get() : nullptr;
    }

protected:
    virtual HRESULT ReadPlatform(TargetAddress start, TargetAddress end, uint8_t* buffer) = 0;
    virtual HRESULT WritePlatformReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                           const uint8_t* buffer, VariantBool& failed, TargetAddress& address,
                                           int32_t& written, int32_t& found) = 0;
    virtual HRESULT WritePlatformVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                          const uint8_t* buffer) = 0;
    virtual HRESULT WritePlatform(TargetAddress start, TargetAddress end, const uint8_t* buffer) = 0;

    IQPlatformMemory* memory_;
    IQPlatformMemory2* memory2_;
    IQPlatformMemory3* memory3_;
    IQPlatformMemory5* memory5_;

private:
    HRESULT FindOrFetch(TargetAddress page, std::span<const CMemoryArea> areas, CCachePage*& found);
    HRESULT Fetch(CCachePage& page, std::span<const CMemoryArea> areas);
    void Install(std::unique_ptr<CCachePage> page);

    VariantBool enabled_;
    std::vector<std::unique_ptr<CCachePage>> pages_;
    uint32_t pageSize_ = DefaultPageSize;
    int32_t maxPages_ = Budget / DefaultPageSize;
    int32_t nextVictim_ = 0;
    std::map<TargetAddress, CCachePage*> index_;
};
