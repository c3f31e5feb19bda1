#include "component/memory/CVELMemoryManager.h"

#include <algorithm>
#include <cstring>

#include "boundary/Ids.h"
#include "component/util/MessageFormat.h"

namespace
{

// ByteOrder 1: the target keeps integers as this system does.
constexpr uint32_t kOwnOrder = 1;
constexpr uint32_t kOtherOrder = 2;

// A buffer holds end - start + 1 bytes, and elements of no size cannot be
// walked.
HRESULT CheckRange(TargetAddress start, TargetAddress end, const void* buffer, uint32_t accessSize = 1)
{
    if (buffer == nullptr)
        return E_POINTER;
    return end < start || accessSize == 0 ? E_INVALIDARG : S_OK;
}

// The sizes a sized cache exists for; another size is served as the nearest
// one that divides it.
AccessSize NormalSize(AccessSize accessSize)
{
    switch (accessSize) {
    case 1:
    case 2:
    case 4:
    case 8:
        return accessSize;
    default:
        return accessSize % 2 == 0 ? 2 : 1;
    }
}

} // namespace

// Long operations would run under a progress display the user can cancel.
// This host has none yet, so even a platform that offers them gets the
// straight call, which returns when the platform is done.
template <class Call> HRESULT CVELMemoryManager::LongOperation(Call straight)
{
    return straight();
}

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

void CVELMemoryManager::ClearAllCaches()
{
    if (PlainCache != nullptr)
        PlainCache->Clear();
    for (auto& bySize : SizedCaches) {
        for (auto& cache : bySize) {
            if (cache != nullptr)
                cache->Clear();
        }
    }
}

CCache& CVELMemoryManager::CacheFor(const CMemoryArea& area, AccessSize accessSize, TargetAddress address)
{
    if (area.SizedAccess == 0)
        return *PlainCache;
    const AccessSize size = NormalSize(accessSize);
    return SizedCache(size, address % size);
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
    if (PlainCache != nullptr)
        PlainCache->SetEnabled(enabled);
    for (auto& bySize : SizedCaches) {
        for (auto& cache : bySize) {
            if (cache != nullptr)
                cache->SetEnabled(enabled);
        }
    }
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
        return area.ByteOrder != kOwnOrder;
    return area.SizedAccess == 0 && area.ByteOrder == kOwnOrder;
}

bool CVELMemoryManager::ReversesOnWrite(const CMemoryArea& area, AccessSize accessSize, Order order)
{
    if (accessSize == 1)
        return false;
    if (order == Order::Native)
        return area.ByteOrder != kOwnOrder;
    return area.SizedAccess == 0 && area.ByteOrder != kOtherOrder;
}

// --- reading ---------------------------------------------------------------

HRESULT CVELMemoryManager::ReadPlatform(const WalkChunk& chunk, AccessSize sizedAccess, uint8_t* out)
{
    if (chunk.area.SizedAccess == 0) {
        if (PlatformMemory2 != nullptr)
            return PlatformMemory2->Read(chunk.start, chunk.end, out);
        return PlatformMemory != nullptr ? PlatformMemory->Read(chunk.start, chunk.end, out) : E_FAIL;
    }
    if (PlatformMemory2 != nullptr)
        return PlatformMemory2->ReadSized(chunk.start, chunk.end, sizedAccess, out);
    return PlatformMemory != nullptr ? PlatformMemory->ReadSized(chunk.start, chunk.end, sizedAccess, out)
                                     : E_FAIL;
}

HRESULT CVELMemoryManager::ReadWalk(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                    uint8_t* buffer, Source source, Order order)
{
    if (const HRESULT hr = CheckRange(start, end, buffer, accessSize); hr != S_OK)
        return hr;
    if (!Attached())
        return E_FAIL;
    // Past the caches, the ...Values form hands the caller's size to the
    // platform as it is; the plain form the size a sized cache would use.
    const AccessSize sizedAccess = order == Order::Native ? accessSize : NormalSize(accessSize);
    const auto treat = [&](const WalkChunk& chunk) {
        uint8_t* out = buffer + chunk.offset;
        const HRESULT hr = source == Source::Cache
                               ? CacheFor(chunk.area, accessSize, chunk.start)
                                     .Read(chunk.start, chunk.end, out,
                                           chunk.area.SizedAccess != 0 ? sizedAreas_ : plainAreas_)
                               : ReadPlatform(chunk, sizedAccess, out);
        if (Succeeded(hr) && ReversesOnRead(chunk.area, accessSize, order))
            ReverseElements(out, chunk.Length(), accessSize);
        return hr;
    };
    return WalkRange(Areas, start, end, accessSize, GapRule::Skip, treat).hr;
}

HRESULT CVELMemoryManager::ReadMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                      uint8_t* buffer)
{
    return ReadWalk(start, end, accessSize, buffer, Source::Cache, Order::MostSignificantFirst);
}

HRESULT CVELMemoryManager::ReadMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                            uint8_t* buffer)
{
    return ReadWalk(start, end, accessSize, buffer, Source::Cache, Order::Native);
}

HRESULT CVELMemoryManager::ReadMemoryDirect(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                            uint8_t* buffer)
{
    return ReadWalk(start, end, accessSize, buffer, Source::Platform, Order::MostSignificantFirst);
}

HRESULT CVELMemoryManager::ReadMemoryValuesDirect(TargetAddress start, TargetAddress end,
                                                  AccessSize accessSize, uint8_t* buffer)
{
    return ReadWalk(start, end, accessSize, buffer, Source::Platform, Order::Native);
}

// --- writing ---------------------------------------------------------------

int32_t CVELMemoryManager::LowerMode(int32_t mode) const
{
    if (mode == 2 && PlatformMemory5 == nullptr)
        mode = 1;
    if (mode == 1 && PlatformMemory3 == nullptr && Attached())
        mode = 0;
    return mode;
}

HRESULT CVELMemoryManager::WriteChunk(CCache& cache, const WalkChunk& chunk, VariantBool verify,
                                      const uint8_t* data, int32_t& mode, VariantBool* failed,
                                      TargetAddress* address, int32_t* written, int32_t* found)
{
    // A platform that turns an operation down once does so for every chunk:
    // the mode stays lowered for the rest of the walk.
    if (mode == 2) {
        VariantBool chunkFailed = VARIANT_FALSE;
        TargetAddress at = 0;
        int32_t wrote = 0;
        int32_t read = 0;
        const HRESULT hr =
            cache.WriteReporting(chunk.start, chunk.end, verify, data, chunkFailed, at, wrote, read);
        if (hr != E_NOTIMPL) {
            // The first difference is the one to show.
            if (chunkFailed != 0 && (failed == nullptr || *failed == 0)) {
                if (failed != nullptr)
                    *failed = VARIANT_TRUE;
                if (address != nullptr)
                    *address = at;
                if (written != nullptr)
                    *written = wrote;
                if (found != nullptr)
                    *found = read;
            }
            return hr;
        }
        mode = 1;
    }
    if (mode == 1) {
        const HRESULT hr = cache.WriteVerified(chunk.start, chunk.end, verify, data);
        if (hr != E_NOTIMPL)
            return hr;
        mode = 0;
    }
    return cache.Write(chunk.start, chunk.end, data);
}

HRESULT CVELMemoryManager::WriteWalk(TargetAddress start, TargetAddress end, VariantBool verify,
                                     uint32_t size, const uint8_t* buffer, VariantBool* failed,
                                     TargetAddress* address, int32_t* written, int32_t* found, int32_t mode,
                                     Order order)
{
    if (const HRESULT hr = CheckRange(start, end, buffer, size); hr != S_OK)
        return hr;
    if (size > 0xFFFF || mode < 0 || mode > 2)
        return E_INVALIDARG;
    if (!Attached())
        return E_FAIL;
    const auto accessSize = static_cast<AccessSize>(size);
    if (failed != nullptr)
        *failed = VARIANT_FALSE;
    mode = LowerMode(mode);
    std::vector<uint8_t> scratch;
    const auto treat = [&](const WalkChunk& chunk) {
        ClearAllCaches();
        scratch.assign(buffer + chunk.offset, buffer + chunk.offset + chunk.Length());
        if (ReversesOnWrite(chunk.area, accessSize, order))
            ReverseElements(scratch.data(), scratch.size(), accessSize);
        CCache& cache = CacheFor(chunk.area, accessSize, chunk.start);
        return WriteChunk(cache, chunk, verify, scratch.data(), mode, failed, address, written, found);
    };
    const WalkResult walked = WalkRange(Areas, start, end, accessSize, GapRule::Skip, treat);
    if (Failed(walked.hr))
        return walked.hr;
    return walked.endedInGap ? kWriteOutsideMap : walked.hr;
}

HRESULT CVELMemoryManager::WriteMemoryEx(TargetAddress start, TargetAddress end, VariantBool verify,
                                         uint32_t size, const uint8_t* buffer, VariantBool* failed,
                                         TargetAddress* address, int32_t* written, int32_t* found,
                                         int32_t mode)
{
    return WriteWalk(start, end, verify, size, buffer, failed, address, written, found, mode,
                     Order::MostSignificantFirst);
}

HRESULT CVELMemoryManager::WriteMemoryValuesEx(TargetAddress start, TargetAddress end, VariantBool verify,
                                               uint32_t size, const uint8_t* buffer, VariantBool* failed,
                                               TargetAddress* address, int32_t* written, int32_t* found,
                                               int32_t mode)
{
    return WriteWalk(start, end, verify, size, buffer, failed, address, written, found, mode, Order::Native);
}

HRESULT CVELMemoryManager::WriteMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                       const uint8_t* buffer)
{
    return WriteMemoryEx(start, end, VARIANT_FALSE, accessSize, buffer, nullptr, nullptr, nullptr, nullptr,
                         0);
}

HRESULT CVELMemoryManager::WriteMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                             const uint8_t* buffer)
{
    return WriteMemoryValuesEx(start, end, VARIANT_FALSE, accessSize, buffer, nullptr, nullptr, nullptr,
                               nullptr, 0);
}

HRESULT CVELMemoryManager::WriteMemoryVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                               AccessSize accessSize, const uint8_t* buffer)
{
    return WriteMemoryEx(start, end, verify, accessSize, buffer, nullptr, nullptr, nullptr, nullptr, 1);
}

HRESULT CVELMemoryManager::WriteMemoryValuesVerified(TargetAddress start, TargetAddress end,
                                                     VariantBool verify, AccessSize accessSize,
                                                     const uint8_t* buffer)
{
    return WriteMemoryValuesEx(start, end, verify, accessSize, buffer, nullptr, nullptr, nullptr, nullptr, 1);
}

HRESULT CVELMemoryManager::WriteMemoryReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                                AccessSize accessSize, const uint8_t* buffer,
                                                VariantBool& failed, TargetAddress& address, int32_t& written,
                                                int32_t& found)
{
    return WriteMemoryEx(start, end, verify, accessSize, buffer, &failed, &address, &written, &found, 2);
}

HRESULT CVELMemoryManager::WriteMemoryValuesReporting(TargetAddress start, TargetAddress end,
                                                      VariantBool verify, AccessSize accessSize,
                                                      const uint8_t* buffer, VariantBool& failed,
                                                      TargetAddress& address, int32_t& written,
                                                      int32_t& found)
{
    return WriteMemoryValuesEx(start, end, verify, accessSize, buffer, &failed, &address, &written, &found,
                               2);
}

// --- filling ---------------------------------------------------------------

HRESULT CVELMemoryManager::PlainFill(TargetAddress start, TargetAddress end, uint32_t patternLength,
                                     const uint8_t* pattern)
{
    if (PlatformMemory2 != nullptr)
        return PlatformMemory2->Fill(start, end, patternLength, pattern);
    return PlatformMemory != nullptr ? PlatformMemory->Fill(start, end, patternLength, pattern) : E_FAIL;
}

HRESULT CVELMemoryManager::FillMemoryEx(TargetAddress start, TargetAddress end, VariantBool verify,
                                        uint32_t size, const uint8_t* buffer, VariantBool* failed,
                                        TargetAddress* /*address*/, int32_t* /*written*/, int32_t* /*found*/,
                                        int32_t mode)
{
    if (const HRESULT hr = CheckRange(start, end, buffer, size); hr != S_OK)
        return hr;
    if (mode < 0 || mode > 2)
        return E_INVALIDARG;
    if (!Attached())
        return E_FAIL;
    RecordFill(start, end, size, buffer, verify);
    if (failed != nullptr)
        *failed = VARIANT_FALSE;
    mode = LowerMode(mode);
    ClearAllCaches();
    std::vector<uint8_t> pattern(buffer, buffer + size);
    const auto treat = [&](const WalkChunk& chunk) {
        if (chunk.area.ByteOrder == kOwnOrder)
            std::copy(buffer, buffer + size, pattern.begin());
        else
            std::reverse_copy(buffer, buffer + size, pattern.begin());
        if (mode != 0 && PlatformMemory3 != nullptr) {
            const HRESULT hr = LongOperation([&] {
                return PlatformMemory3->FillVerified(chunk.start, chunk.end, verify, size, pattern.data());
            });
            if (hr != E_NOTIMPL)
                return hr;
            mode = 0;
        }
        return PlainFill(chunk.start, chunk.end, size, pattern.data());
    };
    const WalkResult walked = WalkRange(Areas, start, end, 1, GapRule::Stop, treat);
    if (Failed(walked.hr))
        return walked.hr;
    return walked.endedInGap ? kFillOutsideMap : walked.hr;
}

HRESULT CVELMemoryManager::FillMemory(TargetAddress start, TargetAddress end, uint32_t patternLength,
                                      const uint8_t* pattern)
{
    return FillMemoryEx(start, end, VARIANT_FALSE, patternLength, pattern, nullptr, nullptr, nullptr, nullptr,
                        0);
}

HRESULT CVELMemoryManager::FillMemoryVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                              uint32_t patternLength, const uint8_t* pattern)
{
    return FillMemoryEx(start, end, verify, patternLength, pattern, nullptr, nullptr, nullptr, nullptr, 1);
}

HRESULT CVELMemoryManager::FillMemoryReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                               uint32_t patternLength, const uint8_t* pattern,
                                               VariantBool& failed, TargetAddress& address, int32_t& written,
                                               int32_t& found)
{
    return FillMemoryEx(start, end, verify, patternLength, pattern, &failed, &address, &written, &found, 2);
}

// --- whole-range operations ------------------------------------------------

HRESULT CVELMemoryManager::CompareMemorySimple(TargetAddress start, TargetAddress end,
                                               TargetAddress destination)
{
    Record(MessageFormat::Format("%s 0x%X 0x%X 0x%X", "memory_compare", start, end, destination));
    return PlatformMemory != nullptr ? PlatformMemory->Compare(start, end, destination) : E_FAIL;
}

HRESULT CVELMemoryManager::CopyMemorySimple(TargetAddress start, TargetAddress end, TargetAddress destination)
{
    Record(MessageFormat::Format("%s 0x%X 0x%X 0x%X %s %s", "memory_move", start, end, destination,
                                 VerifyWord(VARIANT_FALSE).c_str(), SizeWord(1).c_str()));
    ClearAllCaches();
    return PlatformMemory != nullptr ? PlatformMemory->Copy(start, end, destination) : E_FAIL;
}

HRESULT CVELMemoryManager::CompareMemory(TargetAddress start, TargetAddress end, TargetAddress destination,
                                         AccessSize accessSize, uint8_t& first, uint8_t& second,
                                         TargetAddress& address)
{
    Record(MessageFormat::Format("%s 0x%X 0x%X 0x%X %s", "memory_compare", start, end, destination,
                                 SizeWord(accessSize).c_str()));
    if (PlatformMemory2 == nullptr)
        return E_FAIL;
    return LongOperation([&] {
        return PlatformMemory2->Compare(start, end, destination, accessSize, first, second, address);
    });
}

HRESULT CVELMemoryManager::CopyMemory(TargetAddress start, TargetAddress end, TargetAddress destination,
                                      VariantBool verify, AccessSize accessSize, uint8_t& first,
                                      uint8_t& second, TargetAddress& address)
{
    Record(MessageFormat::Format("%s 0x%X 0x%X 0x%X %s %s", "memory_move", start, end, destination,
                                 VerifyWord(verify).c_str(), SizeWord(accessSize).c_str()));
    ClearAllCaches();
    if (PlatformMemory2 == nullptr)
        return E_FAIL;
    return LongOperation([&] {
        return PlatformMemory2->Copy(start, end, destination, verify, accessSize, first, second, address);
    });
}

HRESULT CVELMemoryManager::FindMemory(TargetAddress start, TargetAddress end, uint32_t flag1, uint32_t flag2,
                                      uint32_t patternLength, const uint8_t* pattern, const uint8_t* mask,
                                      TargetAddress& address)
{
    if (pattern == nullptr)
        return E_POINTER;
    if (PlatformMemory2 == nullptr)
        return E_FAIL;
    // The platform may work on the pattern; the caller's stays as it was.
    std::vector<uint8_t> scratch(pattern, pattern + patternLength);
    return LongOperation([&] {
        return PlatformMemory2->Find(start, end, flag1, flag2, patternLength, scratch.data(), mask, address);
    });
}

HRESULT CVELMemoryManager::FindMemoryEx(TargetAddress start, TargetAddress end, uint32_t flag1,
                                        uint32_t flag2, uint32_t flag3, uint32_t patternLength,
                                        const uint8_t* pattern, const uint8_t* mask, TargetAddress& address)
{
    if (PlatformMemory3 == nullptr)
        return E_FAIL;
    if (pattern == nullptr)
        return E_POINTER;
    std::vector<uint8_t> scratch(pattern, pattern + patternLength);
    return LongOperation([&] {
        return PlatformMemory3->FindEx(start, end, flag1, flag2, flag3, patternLength, scratch.data(), mask,
                                       address);
    });
}

HRESULT CVELMemoryManager::FindMemorySimple(TargetAddress start, TargetAddress end, uint32_t patternLength,
                                            const uint8_t* pattern, TargetAddress& found)
{
    if (const HRESULT hr = CheckRange(start, end, pattern, patternLength); hr != S_OK)
        return hr;
    if (PlatformMemory == nullptr)
        return E_FAIL;
    // Each area of the range searches all of it with the pattern in that
    // area's byte order; the first that finds it answers.
    bool hit = false;
    std::vector<uint8_t> arranged(patternLength);
    const auto treat = [&](const WalkChunk& chunk) {
        if (hit)
            return S_OK;
        if (chunk.area.ByteOrder == kOwnOrder)
            std::copy(pattern, pattern + patternLength, arranged.begin());
        else
            std::reverse_copy(pattern, pattern + patternLength, arranged.begin());
        const HRESULT hr = PlatformMemory->Find(start, end, patternLength, arranged.data(), found);
        hit = hr == S_OK;
        return hr;
    };
    const WalkResult walked = WalkRange(Areas, start, end, 1, GapRule::Stop, treat);
    if (hit)
        return S_OK;
    if (Failed(walked.hr))
        return walked.hr;
    return walked.endedInGap ? E_FAIL : walked.hr;
}

HRESULT CVELMemoryManager::VerifyMemory(TargetAddress start, TargetAddress end, const uint8_t* data)
{
    if (PlatformMemory2 != nullptr)
        return LongOperation([&] { return PlatformMemory2->Verify(start, end, data); });
    return PlatformMemory != nullptr ? LongOperation([&] { return PlatformMemory->Verify(start, end, data); })
                                     : E_FAIL;
}

HRESULT CVELMemoryManager::VerifyMemoryReporting(TargetAddress start, TargetAddress end, const uint8_t* data,
                                                 TargetAddress& /*address*/, VariantBool& failed)
{
    // Only a progress display learns where the read-back differed; the
    // straight call tells by its result alone.
    failed = VARIANT_FALSE;
    return VerifyMemory(start, end, data);
}

HRESULT CVELMemoryManager::TestMemory(TargetAddress start, TargetAddress end)
{
    if (PlatformMemory2 != nullptr)
        return LongOperation([&] { return PlatformMemory2->Test(start, end); });
    return PlatformMemory != nullptr ? LongOperation([&] { return PlatformMemory->Test(start, end); })
                                     : E_FAIL;
}

// --- errors ----------------------------------------------------------------

HRESULT CVELMemoryManager::GetErrorText(HRESULT code, std::string& text)
{
    IUnknown* platform = PlatformMemory2 != nullptr ? static_cast<IUnknown*>(PlatformMemory2)
                                                    : static_cast<IUnknown*>(PlatformMemory);
    auto* reporter = QueryAs<IQErrorReporter>(platform, Ids::IQErrorReporter);
    return reporter != nullptr ? reporter->GetErrorText(code, text) : E_FAIL;
}

// --- closed memory ---------------------------------------------------------

HRESULT CVELMemoryManagerDisableAble::Blank(TargetAddress start, TargetAddress end, uint8_t* buffer)
{
    if (const HRESULT hr = CheckRange(start, end, buffer); hr != S_OK)
        return hr;
    AccessedWhileDisabled = true;
    std::memset(buffer, 0xFF, size_t{end} - start + 1);
    return S_OK;
}

template <class Call> HRESULT CVELMemoryManagerDisableAble::Refuse(Call open)
{
    if (!Disabled)
        return open();
    AccessedWhileDisabled = true;
    return DisabledCode;
}

HRESULT CVELMemoryManagerDisableAble::ReadMemory(TargetAddress start, TargetAddress end,
                                                 AccessSize accessSize, uint8_t* buffer)
{
    return Disabled ? Blank(start, end, buffer)
                    : CVELMemoryManager::ReadMemory(start, end, accessSize, buffer);
}

HRESULT CVELMemoryManagerDisableAble::ReadMemoryValues(TargetAddress start, TargetAddress end,
                                                       AccessSize accessSize, uint8_t* buffer)
{
    return Disabled ? Blank(start, end, buffer)
                    : CVELMemoryManager::ReadMemoryValues(start, end, accessSize, buffer);
}

HRESULT CVELMemoryManagerDisableAble::ReadMemoryDirect(TargetAddress start, TargetAddress end,
                                                       AccessSize accessSize, uint8_t* buffer)
{
    return Disabled ? Blank(start, end, buffer)
                    : CVELMemoryManager::ReadMemoryDirect(start, end, accessSize, buffer);
}

HRESULT CVELMemoryManagerDisableAble::ReadMemoryValuesDirect(TargetAddress start, TargetAddress end,
                                                             AccessSize accessSize, uint8_t* buffer)
{
    return Disabled ? Blank(start, end, buffer)
                    : CVELMemoryManager::ReadMemoryValuesDirect(start, end, accessSize, buffer);
}

HRESULT CVELMemoryManagerDisableAble::CompareMemorySimple(TargetAddress start, TargetAddress end,
                                                          TargetAddress destination)
{
    return Refuse([&] { return CVELMemoryManager::CompareMemorySimple(start, end, destination); });
}

HRESULT CVELMemoryManagerDisableAble::CopyMemorySimple(TargetAddress start, TargetAddress end,
                                                       TargetAddress destination)
{
    return Refuse([&] { return CVELMemoryManager::CopyMemorySimple(start, end, destination); });
}

HRESULT CVELMemoryManagerDisableAble::FindMemorySimple(TargetAddress start, TargetAddress end,
                                                       uint32_t patternLength, const uint8_t* pattern,
                                                       TargetAddress& found)
{
    return Refuse(
        [&] { return CVELMemoryManager::FindMemorySimple(start, end, patternLength, pattern, found); });
}

HRESULT CVELMemoryManagerDisableAble::VerifyMemory(TargetAddress start, TargetAddress end,
                                                   const uint8_t* data)
{
    return Refuse([&] { return CVELMemoryManager::VerifyMemory(start, end, data); });
}

HRESULT CVELMemoryManagerDisableAble::TestMemory(TargetAddress start, TargetAddress end)
{
    return Refuse([&] { return CVELMemoryManager::TestMemory(start, end); });
}

HRESULT CVELMemoryManagerDisableAble::RefreshMemory()
{
    return Refuse([&] { return CVELMemoryManager::RefreshMemory(); });
}

HRESULT CVELMemoryManagerDisableAble::CompareMemory(TargetAddress start, TargetAddress end,
                                                    TargetAddress destination, AccessSize accessSize,
                                                    uint8_t& first, uint8_t& second, TargetAddress& address)
{
    return Refuse([&] {
        return CVELMemoryManager::CompareMemory(start, end, destination, accessSize, first, second, address);
    });
}

HRESULT CVELMemoryManagerDisableAble::CopyMemory(TargetAddress start, TargetAddress end,
                                                 TargetAddress destination, VariantBool verify,
                                                 AccessSize accessSize, uint8_t& first, uint8_t& second,
                                                 TargetAddress& address)
{
    return Refuse([&] {
        return CVELMemoryManager::CopyMemory(start, end, destination, verify, accessSize, first, second,
                                             address);
    });
}

HRESULT CVELMemoryManagerDisableAble::FindMemory(TargetAddress start, TargetAddress end, uint32_t flag1,
                                                 uint32_t flag2, uint32_t patternLength,
                                                 const uint8_t* pattern, const uint8_t* mask,
                                                 TargetAddress& address)
{
    return Refuse([&] {
        return CVELMemoryManager::FindMemory(start, end, flag1, flag2, patternLength, pattern, mask, address);
    });
}

HRESULT CVELMemoryManagerDisableAble::FindMemoryEx(TargetAddress start, TargetAddress end, uint32_t flag1,
                                                   uint32_t flag2, uint32_t flag3, uint32_t patternLength,
                                                   const uint8_t* pattern, const uint8_t* mask,
                                                   TargetAddress& address)
{
    return Refuse([&] {
        return CVELMemoryManager::FindMemoryEx(start, end, flag1, flag2, flag3, patternLength, pattern, mask,
                                               address);
    });
}

HRESULT CVELMemoryManagerDisableAble::VerifyMemoryReporting(TargetAddress start, TargetAddress end,
                                                            const uint8_t* data, TargetAddress& address,
                                                            VariantBool& failed)
{
    return Refuse(
        [&] { return CVELMemoryManager::VerifyMemoryReporting(start, end, data, address, failed); });
}

HRESULT CVELMemoryManagerDisableAble::WriteMemoryEx(TargetAddress start, TargetAddress end,
                                                    VariantBool verify, uint32_t size, const uint8_t* buffer,
                                                    VariantBool* failed, TargetAddress* address,
                                                    int32_t* written, int32_t* found, int32_t mode)
{
    return Refuse([&] {
        return CVELMemoryManager::WriteMemoryEx(start, end, verify, size, buffer, failed, address, written,
                                                found, mode);
    });
}

HRESULT CVELMemoryManagerDisableAble::WriteMemoryValuesEx(TargetAddress start, TargetAddress end,
                                                          VariantBool verify, uint32_t size,
                                                          const uint8_t* buffer, VariantBool* failed,
                                                          TargetAddress* address, int32_t* written,
                                                          int32_t* found, int32_t mode)
{
    return Refuse([&] {
        return CVELMemoryManager::WriteMemoryValuesEx(start, end, verify, size, buffer, failed, address,
                                                      written, found, mode);
    });
}

HRESULT CVELMemoryManagerDisableAble::FillMemoryEx(TargetAddress start, TargetAddress end, VariantBool verify,
                                                   uint32_t size, const uint8_t* buffer, VariantBool* failed,
                                                   TargetAddress* address, int32_t* written, int32_t* found,
                                                   int32_t mode)
{
    return Refuse([&] {
        return CVELMemoryManager::FillMemoryEx(start, end, verify, size, buffer, failed, address, written,
                                               found, mode);
    });
}
