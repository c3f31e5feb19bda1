#include "component/memory/CVELMemoryManagerDisableAble.h"

#include <cstring>

#include "component/memory/MemoryWalk.h"

HRESULT CVELMemoryManagerDisableAble::Blank(TargetAddress start, TargetAddress end, uint8_t* buffer)
{
    if (const HRESULT hr = CheckRange(start, end, buffer); hr != S_OK)
        return hr;
    AccessedWhileDisabled = true;
    std::memset(buffer, 0xFF, AddressRange(start, end).Size());
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
