// The whole-range operations: compare, copy, find, verify and test go
// straight to the platform, and compare and copy are recorded.
#include "component/memory/CVELMemoryManager.h"

#include <algorithm>
#include <vector>

#include "component/util/MessageFormat.h"

HRESULT CVELMemoryManager::CompareMemorySimple(TargetAddress start, TargetAddress end,
                                               TargetAddress destination)
{
    Record(MessageFormat::Format("%s 0x%X 0x%X 0x%X", "memory_compare", start.Value(), end.Value(),
                                 destination.Value()));
    return PlatformMemory != nullptr ? PlatformMemory->Compare(start, end, destination) : E_FAIL;
}

HRESULT CVELMemoryManager::CopyMemorySimple(TargetAddress start, TargetAddress end, TargetAddress destination)
{
    Record(MessageFormat::Format("%s 0x%X 0x%X 0x%X %s %s", "memory_move", start.Value(), end.Value(),
                                 destination.Value(), VerifyWord(VARIANT_FALSE).c_str(),
                                 SizeWord(1).c_str()));
    ClearAllCaches();
    return PlatformMemory != nullptr ? PlatformMemory->Copy(start, end, destination) : E_FAIL;
}

HRESULT CVELMemoryManager::CompareMemory(TargetAddress start, TargetAddress end, TargetAddress destination,
                                         AccessSize accessSize, uint8_t& first, uint8_t& second,
                                         TargetAddress& address)
{
    Record(MessageFormat::Format("%s 0x%X 0x%X 0x%X %s", "memory_compare", start.Value(), end.Value(),
                                 destination.Value(), SizeWord(accessSize).c_str()));
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
    Record(MessageFormat::Format("%s 0x%X 0x%X 0x%X %s %s", "memory_move", start.Value(), end.Value(),
                                 destination.Value(), VerifyWord(verify).c_str(),
                                 SizeWord(accessSize).c_str()));
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
        if (chunk.area.ByteOrder == kOwnByteOrder)
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
    // The test writes its patterns behind the caches' back, as a copy does.
    ClearAllCaches();
    if (PlatformMemory2 != nullptr)
        return LongOperation([&] { return PlatformMemory2->Test(start, end); });
    return PlatformMemory != nullptr ? LongOperation([&] { return PlatformMemory->Test(start, end); })
                                     : E_FAIL;
}
