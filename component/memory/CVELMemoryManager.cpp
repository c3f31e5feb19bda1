// The memory manager's set-up and bookkeeping: attaching to a platform, the
// memory map, the caches, byte order and error texts. Reads, writes and the
// whole-range operations each have a file of their own.
#include "component/memory/CVELMemoryManager.h"

#include <algorithm>

#include "boundary/Ids.h"

// --- attaching -------------------------------------------------------------

HRESULT CVELMemoryManager::AttachPlatform(IQServiceRegistry* locator)
{
    if (locator == nullptr)
        return E_POINTER;
    DetachPlatform();
    PlatformMemory = GetServiceAs<IQPlatformMemory>(locator, Ids::IQPlatformMemory);
    PlatformMemory2 = GetServiceAs<IQPlatformMemory2>(locator, Ids::IQPlatformMemory2);
    PlatformMemory3 = GetServiceAs<IQPlatformMemory3>(locator, Ids::IQPlatformMemory3);
    PlatformMemory4 = GetServiceAs<IQPlatformMemory4>(locator, Ids::IQPlatformMemory4);
    PlatformMemory5 = GetServiceAs<IQPlatformMemory5>(locator, Ids::IQPlatformMemory5);
    if (!Attached()) {
        DetachPlatform();
        return E_FAIL;
    }
    // The first generation cannot say what it offers: it reads and writes,
    // nothing more.
    if (PlatformMemory2 != nullptr) {
        CanCompare = PlatformMemory2->CanCompare() == S_OK;
        CanCopy = PlatformMemory2->CanCopy() == S_OK;
        CanFill = PlatformMemory2->CanFill() == S_OK;
        CanFind = PlatformMemory2->CanFind() == S_OK;
        CanFindAlternate = PlatformMemory2->CanFindAlternate() == S_OK;
        CanVerify = PlatformMemory2->CanVerify() == S_OK;
        CanTest = PlatformMemory2->CanTest() == S_OK;
    }
    PlainCache = std::make_unique<CCacheMemory>(PlatformMemory, PlatformMemory2, PlatformMemory3,
                                                FromVariantBool(CacheEnabled));
    LoadAreas();
    // Not through the slot: a connection may run with memory closed, and the
    // manager's own start is no access by a view.
    return Refresh();
}

HRESULT CVELMemoryManager::DetachPlatform()
{
    PlatformMemory = nullptr;
    PlatformMemory2 = nullptr;
    PlatformMemory3 = nullptr;
    PlatformMemory4 = nullptr;
    PlatformMemory5 = nullptr;
    // Without a platform nothing is offered.
    CanCompare = CanCopy = CanFill = CanFind = CanFindAlternate = CanVerify = CanTest = false;
    PlainCache.reset();
    SizedCaches.clear();
    Areas.clear();
    plainAreas_.clear();
    sizedAreas_.clear();
    return S_OK;
}

HRESULT CVELMemoryManager::ReloadAreas()
{
    if (!Attached())
        return E_FAIL;
    const HRESULT hr = Refresh();
    LoadAreas();
    return hr;
}

void CVELMemoryManager::LoadAreas()
{
    Areas.clear();
    uint32_t count = 0;
    const HRESULT counted = PlatformMemory2 != nullptr ? PlatformMemory2->GetAreaCount(count)
                                                       : PlatformMemory->GetAreaCount(count);
    if (Failed(counted))
        count = 0;
    for (uint32_t index = 0; index < count; ++index) {
        CMemoryArea area;
        HRESULT hr;
        if (PlatformMemory2 != nullptr) {
            VariantBool sized = 0, first = 0, second = 0, third = 0;
            hr = PlatformMemory2->GetArea(index, area.Start, area.End, area.ByteOrder, area.Info, sized,
                                          first, second, third);
            area.SizedAccess = sized != 0;
            area.Attribute1 = first != 0;
            area.Attribute2 = second != 0;
            area.Attribute3 = third != 0;
        } else {
            uint32_t flags = 0;
            hr = PlatformMemory->GetArea(index, area.Start, area.End, area.ByteOrder, area.Info, flags);
            area.SizedAccess = (flags & 0x3) != 0;
            area.Attribute1 = (flags >> 2) & 1;
            area.Attribute2 = (flags >> 4) & 1;
            area.Attribute3 = (flags >> 5) & 1;
        }
        // An area the platform cannot describe, or whose bounds are reversed,
        // holds no address.
        if (Succeeded(hr) && area.Start <= area.End)
            Areas.push_back(area);
    }
    plainAreas_.clear();
    sizedAreas_.clear();
    for (const auto& area : Areas)
        (area.SizedAccess ? sizedAreas_ : plainAreas_).push_back(area);
}

HRESULT CVELMemoryManager::SetDownloadMode(bool on)
{
    const uint32_t flag = on ? 0xFFFFFFFFu : 0;
    if (PlatformMemory2 != nullptr)
        return PlatformMemory2->SetDownloadMode(flag);
    return PlatformMemory != nullptr ? PlatformMemory->SetDownloadMode(flag) : E_FAIL;
}

// --- the map ---------------------------------------------------------------

HRESULT CVELMemoryManager::GetMemoryInfo(Variant& info)
{
    return PlatformMemory != nullptr ? PlatformMemory->GetMemoryInfo(info) : E_FAIL;
}

HRESULT CVELMemoryManager::GetAreaCount(uint32_t& count)
{
    count = static_cast<uint32_t>(Areas.size());
    return S_OK;
}

HRESULT CVELMemoryManager::GetAreaBounds(uint32_t index, TargetAddress& start, TargetAddress& end)
{
    if (index == 0xFFFFFFFFu) {
        start = 0;
        end = 0;
        if (Areas.empty())
            return S_OK;
        start = Areas.front().Start;
        end = Areas.front().End;
        for (const auto& area : Areas) {
            start = std::min(start, area.Start);
            end = std::max(end, area.End);
        }
        return S_OK;
    }
    if (index >= Areas.size())
        return E_INVALIDARG;
    start = Areas[index].Start;
    end = Areas[index].End;
    return S_OK;
}

// --- caches ----------------------------------------------------------------

template <class F> void CVELMemoryManager::ForEachCache(F each)
{
    if (PlainCache != nullptr)
        each(*PlainCache);
    for (auto& bySize : SizedCaches) {
        for (auto& cache : bySize) {
            if (cache != nullptr)
                each(*cache);
        }
    }
}

void CVELMemoryManager::ClearAllCaches()
{
    ForEachCache([](CCache& cache) { cache.Clear(); });
}

CCache& CVELMemoryManager::CacheFor(const CMemoryArea& area, AccessSize accessSize, TargetAddress address)
{
    if (area.SizedAccess == 0)
        return *PlainCache;
    const AccessSize size = NormalSize(accessSize);
    return SizedCache(size, address.Value() % size);
}

CCacheMemoryWithSize& CVELMemoryManager::SizedCache(AccessSize size, uint32_t alignment)
{
    if (SizedCaches.size() < size)
        SizedCaches.resize(size);
    auto& bySize = SizedCaches[size - 1];
    if (bySize.size() < alignment + 1)
        bySize.resize(alignment + 1);
    auto& cache = bySize[alignment];
    if (cache == nullptr)
        cache = std::make_unique<CCacheMemoryWithSize>(size, alignment, PlatformMemory, PlatformMemory2,
                                                       PlatformMemory3, FromVariantBool(CacheEnabled));
    return *cache;
}

HRESULT CVELMemoryManager::SetCacheEnabled(VariantBool enabled)
{
    CacheEnabled = enabled;
    ForEachCache([enabled](CCache& cache) { cache.SetEnabled(enabled); });
    return S_OK;
}

HRESULT CVELMemoryManager::GetCacheEnabled()
{
    return CacheEnabled != 0 ? S_OK : E_FAIL;
}

HRESULT CVELMemoryManager::Refresh()
{
    ClearAllCaches();
    NoteRefresh();
    if (PlatformMemory2 != nullptr)
        return PlatformMemory2->Refresh();
    return PlatformMemory != nullptr ? PlatformMemory->Refresh() : E_FAIL;
}

HRESULT CVELMemoryManager::RefreshMemory()
{
    return Refresh();
}

HRESULT CVELMemoryManager::RefreshMemoryAgain()
{
    return RefreshMemory();
}

// --- byte order ------------------------------------------------------------

bool CVELMemoryManager::ReversesOnRead(const CMemoryArea& area, AccessSize accessSize, Order order)
{
    if (accessSize == 1)
        return false;
    // The ...Values forms reverse only where the target keeps integers the
    // other way round, so that the buffer holds this system's own integers
    // for targets of either order. Reversing whatever the order would show a
    // target of our own order, such as the simulator on this host, with every
    // value byte-swapped.
    if (order == Order::Native)
        return area.ByteOrder != kOwnByteOrder;
    return area.SizedAccess == 0 && area.ByteOrder == kOwnByteOrder;
}

bool CVELMemoryManager::ReversesOnWrite(const CMemoryArea& area, AccessSize accessSize, Order order)
{
    if (accessSize == 1)
        return false;
    if (order == Order::Native)
        return area.ByteOrder != kOwnByteOrder;
    return area.SizedAccess == 0 && area.ByteOrder != kOtherByteOrder;
}

// --- errors ----------------------------------------------------------------

HRESULT CVELMemoryManager::GetErrorText(HRESULT code, std::string& text)
{
    // The manager's own codes mean nothing to the platform, which would
    // answer with a text of its own or none at all.
    if (code == kWriteOutsideMap || code == kFillOutsideMap || code == DisabledCode) {
        auto* table = GetServiceAs<IQErrorTable>(Host, Ids::ErrorTable);
        if (table != nullptr && table->GetText(code, text) == S_OK && !text.empty())
            return S_OK;
    }
    IUnknown* platform = PlatformMemory2 != nullptr ? static_cast<IUnknown*>(PlatformMemory2)
                                                    : static_cast<IUnknown*>(PlatformMemory);
    auto* reporter = QueryAs<IQErrorReporter>(platform, Ids::IQErrorReporter);
    return reporter != nullptr ? reporter->GetErrorText(code, text) : E_FAIL;
}
