#include "component/memory/CCache.h"

#include <algorithm>
#include <cstring>

#include "boundary/Ids.h"
#include "component/memory/MemoryWalk.h"
#include "component/memory/SplitByAreas.h"

namespace
{

// A page's last address, held at the top of the address space when the page
// would run past it.
TargetAddress PageLast(TargetAddress page, uint32_t pageSize)
{
    return page.CheckedAdd(pageSize - 1).value_or(TargetAddress::Top());
}

} // namespace

CCache::CCache(IQPlatformMemory* memory, IQPlatformMemory2* memory2, IQPlatformMemory3* memory3, bool enabled)
    : memory_(memory), memory2_(memory2), memory3_(memory3),
      memory5_(QueryAs<IQPlatformMemory5>(memory2, Ids::IQPlatformMemory5)), enabled_(ToVariantBool(enabled))
{
    if (memory2_ == nullptr)
        return;
    uint32_t size = 0;
    // A size the platform cannot mean is refused by SetPageSize, and the
    // default stays.
    if (Succeeded(memory2_->GetPageSize(size)))
        SetPageSize(size);
}

HRESULT CCache::Read(TargetAddress start, TargetAddress end, uint8_t* buffer,
                     std::span<const CMemoryArea> areas)
{
    if (const HRESULT hr = CheckRange(start, end, buffer); hr != S_OK)
        return hr;
    if (enabled_ == 0)
        return ReadPlatform(start, end, buffer);
    TargetAddress page = start.AlignedDown(pageSize_);
    const TargetAddress lastPage = end.AlignedDown(pageSize_);
    for (;;) {
        CCachePage* cached = nullptr;
        const HRESULT hr = FindOrFetch(page, areas, cached);
        if (Failed(hr))
            return hr;
        const TargetAddress copyEnd = std::min(end, PageLast(page, pageSize_));
        const uint32_t count = copyEnd.OffsetFrom(start) + 1;
        std::memcpy(buffer, cached->DataAt(start), count);
        if (page >= lastPage)
            return S_OK;
        // More pages follow, so this one ended below `end` and nothing wraps.
        buffer += count;
        start = copyEnd.WrappingAdd(1);
        page = page.WrappingAdd(pageSize_);
    }
}

HRESULT CCache::FindOrFetch(TargetAddress page, std::span<const CMemoryArea> areas, CCachePage*& found)
{
    const auto it = index_.find(page);
    if (it != index_.end()) {
        found = it->second;
        return S_OK;
    }
    // The page is fetched before it takes a slot. A page whose fetch fails is
    // thus never in the index nor among the pages, no victim is given up for
    // it, and a later read of it asks the platform again instead of showing
    // a half-filled page.
    auto fresh = std::make_unique<CCachePage>(page, pageSize_);
    const HRESULT hr = Fetch(*fresh, areas);
    if (Failed(hr))
        return hr;
    found = fresh.get();
    Install(std::move(fresh));
    return S_OK;
}

HRESULT CCache::Fetch(CCachePage& page, std::span<const CMemoryArea> areas)
{
    const TargetAddress last = PageLast(page.Address, pageSize_);
    for (const AddressRange& part : SplitByAreas(page.Address, last, GetAccessSize(), areas)) {
        const HRESULT hr = ReadPlatform(part.First(), part.Last(), page.DataAt(part.First()));
        if (Failed(hr))
            return hr;
    }
    return S_OK;
}

void CCache::Install(std::unique_ptr<CCachePage> page)
{
    CCachePage* raw = page.get();
    if (pages_.size() < static_cast<size_t>(maxPages_)) {
        if (pages_.size() == pages_.capacity())
            pages_.reserve(pages_.capacity() + 1024);
        pages_.push_back(std::move(page));
    } else {
        // Cyclic over the slots: a hit needs no bookkeeping this way.
        auto& slot = pages_[static_cast<size_t>(nextVictim_)];
        index_.erase(slot->Address);
        slot = std::move(page);
        nextVictim_ = nextVictim_ + 1 == maxPages_ ? 0 : nextVictim_ + 1;
    }
    index_.emplace(raw->Address, raw);
}

HRESULT CCache::Write(TargetAddress start, TargetAddress end, const uint8_t* buffer)
{
    if (const HRESULT hr = CheckRange(start, end, buffer); hr != S_OK)
        return hr;
    Clear();
    return WritePlatform(start, end, buffer);
}

HRESULT CCache::WriteVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                              const uint8_t* buffer)
{
    if (const HRESULT hr = CheckRange(start, end, buffer); hr != S_OK)
        return hr;
    Clear();
    return WritePlatformVerified(start, end, verify, buffer);
}

HRESULT CCache::WriteReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                               const uint8_t* buffer, VariantBool& failed, TargetAddress& address,
                               int32_t& written, int32_t& found)
{
    if (const HRESULT hr = CheckRange(start, end, buffer); hr != S_OK)
        return hr;
    Clear();
    return WritePlatformReporting(start, end, verify, buffer, failed, address, written, found);
}

HRESULT CCache::Clear()
{
    // The replacement goes on where it left off once the table is full again.
    index_.clear();
    pages_.clear();
    return S_OK;
}

HRESULT CCache::SetPageSize(uint32_t size)
{
    if (size == 0 || size > Budget)
        return E_INVALIDARG;
    Clear();
    nextVictim_ = 0;
    pageSize_ = size;
    maxPages_ = static_cast<int32_t>(Budget / size);
    return S_OK;
}

HRESULT CCache::SetEnabled(VariantBool enabled)
{
    Clear();
    enabled_ = enabled;
    return S_OK;
}
