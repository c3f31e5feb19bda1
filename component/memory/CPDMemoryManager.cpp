#include "component/memory/CPDMemoryManager.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "boundary/Ids.h"

namespace
{

constexpr const char* kGeneralErrorText = "Error accessing memory in target";

// The byte count of start..end. None for a reversed range, and none for the
// whole address space, whose count does not fit 32 bits and no buffer holds.
std::optional<uint32_t> RangeLength(TargetAddress start, TargetAddress end)
{
    const auto range = AddressRange::Between(start, end);
    if (!range || range->Size() == TargetAddress::SpaceSize)
        return std::nullopt;
    return static_cast<uint32_t>(range->Size());
}

// The platform has no 8-byte functions: 8 bytes go through the 4-byte ones.
template <class Fn> Fn BySize(AccessSize accessSize, Fn one, Fn two, Fn four)
{
    switch (accessSize) {
    case 1:
        return one;
    case 2:
        return two;
    case 4:
    case 8:
        return four;
    default:
        return nullptr;
    }
}

// Target order to this system's own integers and back: each whole element of
// accessSize bytes is turned round; a partial one at the end stays as it is.
void ReverseElements(uint8_t* data, uint32_t length, AccessSize accessSize)
{
    if (accessSize < 2)
        return;
    for (uint32_t at = 0; length - at >= accessSize; at += accessSize)
        std::reverse(data + at, data + at + accessSize);
}

} // namespace

CPDMemoryManager::CPDMemoryManager(IQServiceRegistry* host) : CMemoryManager(host)
{
    CanCopy = true;
    CanFill = true;
}

HRESULT CPDMemoryManager::AttachPlatform(IQServiceRegistry* locator)
{
    ForgetPlatform();
    if (locator == nullptr)
        return E_POINTER;
    if (auto* functions = GetServiceAs<IQPlatformFunctions>(locator, Ids::IQPlatformFunctions)) {
        Move = LookUpPlatformFunction<PlatformMoveFn>(*functions, "IN1_Move");
        Move2 = LookUpPlatformFunction<PlatformMoveFn>(*functions, "IN1_Move2");
        Move4 = LookUpPlatformFunction<PlatformMoveFn>(*functions, "IN1_Move4");
        Fill = LookUpPlatformFunction<PlatformFillFn>(*functions, "IN1_Fill");
        GetMem = LookUpPlatformFunction<PlatformMemoryAccessFn>(*functions, "IN1_Get_MemNC");
        GetMem2 = LookUpPlatformFunction<PlatformMemoryAccessFn>(*functions, "IN1_Get_Mem2NC");
        // The platform reads 4-byte values with its byte function.
        GetMem4 = LookUpPlatformFunction<PlatformMemoryAccessFn>(*functions, "IN1_Get_MemNC");
        PutMem = LookUpPlatformFunction<PlatformMemoryAccessFn>(*functions, "IN1_Put_Mem");
        PutMem2 = LookUpPlatformFunction<PlatformMemoryAccessFn>(*functions, "IN1_Put_Mem2");
        PutMem4 = LookUpPlatformFunction<PlatformMemoryAccessFn>(*functions, "IN1_Put_Mem4");
    }
    MapService = GetServiceAs<IQPlatformFreeRun>(locator, Ids::IQPlatformFreeRun);
    return S_OK;
}

HRESULT CPDMemoryManager::DetachPlatform()
{
    ForgetPlatform();
    return S_OK;
}

void CPDMemoryManager::ForgetPlatform()
{
    Move = Move2 = Move4 = nullptr;
    Fill = nullptr;
    GetMem = GetMem2 = GetMem4 = nullptr;
    PutMem = PutMem2 = PutMem4 = nullptr;
    MapService = nullptr;
}

HRESULT CPDMemoryManager::GetMemoryInfo(Variant&)
{
    return E_FAIL;
}

HRESULT CPDMemoryManager::GetAreaCount(uint32_t& count)
{
    return MapService != nullptr ? MapService->GetAreaCount(count) : E_FAIL;
}

HRESULT CPDMemoryManager::GetAreaBounds(uint32_t index, TargetAddress& start, TargetAddress& end)
{
    return MapService != nullptr ? MapService->GetAreaBounds(index, start, end) : E_FAIL;
}

HRESULT CPDMemoryManager::ReadMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                     uint8_t* buffer)
{
    if (GetMem == nullptr || GetMem2 == nullptr || GetMem4 == nullptr)
        return kCannotRead;
    PlatformMemoryAccessFn read = BySize(accessSize, GetMem, GetMem2, GetMem4);
    if (read == nullptr)
        return kCannotRead;
    const auto length = RangeLength(start, end);
    if (!length)
        return E_INVALIDARG;
    if (buffer == nullptr)
        return E_POINTER;
    return read(start.Value(), *length, buffer) != 0 ? S_OK : kCannotRead;
}

HRESULT CPDMemoryManager::WriteMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                      const uint8_t* buffer)
{
    if (PutMem == nullptr || PutMem2 == nullptr || PutMem4 == nullptr)
        return kCannotWrite;
    PlatformMemoryAccessFn write = BySize(accessSize, PutMem, PutMem2, PutMem4);
    if (write == nullptr)
        return kCannotWrite;
    const auto length = RangeLength(start, end);
    if (!length)
        return E_INVALIDARG;
    if (buffer == nullptr)
        return E_POINTER;
    // The platform's write functions take a plain pointer but only read through it.
    return write(start.Value(), *length, const_cast<uint8_t*>(buffer)) != 0 ? S_OK : kCannotWrite;
}

HRESULT CPDMemoryManager::CompareMemorySimple(TargetAddress, TargetAddress, TargetAddress)
{
    return E_FAIL;
}

HRESULT CPDMemoryManager::CopyMemorySimple(TargetAddress start, TargetAddress end, TargetAddress destination)
{
    if (Move == nullptr)
        return kCannotCopy;
    if (end < start)
        return E_INVALIDARG;
    return Move(start.Value(), end.Value(), destination.Value()) != 0 ? S_OK : kCannotCopy;
}

HRESULT CPDMemoryManager::FillMemory(TargetAddress start, TargetAddress end, uint32_t patternLength,
                                     const uint8_t* pattern)
{
    RecordFill(start, end, patternLength, pattern, VARIANT_FALSE);
    // A fill has no code of its own: it fails as a read does.
    if (Fill == nullptr || patternLength < 1 || patternLength > 4)
        return kCannotRead;
    if (pattern == nullptr)
        return E_POINTER;
    if (end < start)
        return E_INVALIDARG;
    uint32_t number = 0;
    for (uint32_t i = patternLength; i > 0; --i)
        number = (number << 8) | pattern[i - 1];
    return Fill(start.Value(), end.Value(), number, patternLength) != 0 ? S_OK : kCannotRead;
}

HRESULT CPDMemoryManager::FindMemorySimple(TargetAddress, TargetAddress, uint32_t, const uint8_t*,
                                           TargetAddress&)
{
    return E_FAIL;
}

HRESULT CPDMemoryManager::VerifyMemory(TargetAddress, TargetAddress, const uint8_t*)
{
    return E_FAIL;
}

HRESULT CPDMemoryManager::TestMemory(TargetAddress, TargetAddress)
{
    return E_FAIL;
}

HRESULT CPDMemoryManager::RefreshMemory()
{
    // Nothing is cached here, but whoever keeps what it read goes by the generation.
    NoteRefresh();
    return E_FAIL;
}

HRESULT CPDMemoryManager::RefreshMemoryAgain()
{
    return RefreshMemory();
}

HRESULT CPDMemoryManager::ReadMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                           uint8_t* buffer)
{
    HRESULT hr = ReadMemory(start, end, accessSize, buffer);
    if (Failed(hr))
        return hr;
    ReverseElements(buffer, RangeLength(start, end).value_or(0), accessSize);
    return hr;
}

HRESULT CPDMemoryManager::WriteMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                            const uint8_t* buffer)
{
    const auto length = RangeLength(start, end);
    if (!length)
        return E_INVALIDARG;
    if (buffer == nullptr)
        return E_POINTER;
    // The caller's values stay as they were: the copy is turned round.
    std::vector<uint8_t> copy(buffer, buffer + *length);
    ReverseElements(copy.data(), *length, accessSize);
    return WriteMemory(start, end, accessSize, copy.data());
}

HRESULT CPDMemoryManager::CompareMemory(TargetAddress, TargetAddress, TargetAddress, AccessSize, uint8_t&,
                                        uint8_t&, TargetAddress&)
{
    return E_FAIL;
}

HRESULT CPDMemoryManager::CopyMemory(TargetAddress start, TargetAddress end, TargetAddress destination,
                                     VariantBool, AccessSize accessSize, uint8_t& first, uint8_t& second,
                                     TargetAddress& address)
{
    first = 0;
    second = 0;
    address = 0;
    PlatformMoveFn move = accessSize == 8 ? nullptr : BySize(accessSize, Move, Move2, Move4);
    if (move == nullptr)
        return kCannotCopy;
    if (end < start)
        return E_INVALIDARG;
    return move(start.Value(), end.Value(), destination.Value()) != 0 ? S_OK : kCannotCopy;
}

HRESULT CPDMemoryManager::FindMemory(TargetAddress, TargetAddress, uint32_t, uint32_t, uint32_t,
                                     const uint8_t*, const uint8_t*, TargetAddress&)
{
    return E_FAIL;
}

HRESULT CPDMemoryManager::ReadMemoryDirect(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                           uint8_t* buffer)
{
    return ReadMemory(start, end, accessSize, buffer);
}

HRESULT CPDMemoryManager::ReadMemoryValuesDirect(TargetAddress start, TargetAddress end,
                                                 AccessSize accessSize, uint8_t* buffer)
{
    return ReadMemoryValues(start, end, accessSize, buffer);
}

HRESULT CPDMemoryManager::SetCacheEnabled(VariantBool)
{
    return E_FAIL;
}

HRESULT CPDMemoryManager::GetCacheEnabled()
{
    return E_FAIL;
}

HRESULT CPDMemoryManager::FindMemoryEx(TargetAddress, TargetAddress, uint32_t, uint32_t, uint32_t, uint32_t,
                                       const uint8_t*, const uint8_t*, TargetAddress&)
{
    return E_FAIL;
}

HRESULT CPDMemoryManager::WriteMemoryVerified(TargetAddress start, TargetAddress end, VariantBool,
                                              AccessSize accessSize, const uint8_t* buffer)
{
    return WriteMemory(start, end, accessSize, buffer);
}

HRESULT CPDMemoryManager::FillMemoryVerified(TargetAddress start, TargetAddress end, VariantBool,
                                             uint32_t patternLength, const uint8_t* pattern)
{
    return FillMemory(start, end, patternLength, pattern);
}

HRESULT CPDMemoryManager::WriteMemoryValuesVerified(TargetAddress start, TargetAddress end, VariantBool,
                                                    AccessSize accessSize, const uint8_t* buffer)
{
    return WriteMemoryValues(start, end, accessSize, buffer);
}

HRESULT CPDMemoryManager::VerifyMemoryReporting(TargetAddress, TargetAddress, const uint8_t*, TargetAddress&,
                                                VariantBool&)
{
    return E_FAIL;
}

HRESULT CPDMemoryManager::FillMemoryReporting(TargetAddress start, TargetAddress end, VariantBool,
                                              uint32_t patternLength, const uint8_t* pattern,
                                              VariantBool& failed, TargetAddress&, int32_t&, int32_t&)
{
    failed = VARIANT_FALSE;
    return FillMemory(start, end, patternLength, pattern);
}

HRESULT CPDMemoryManager::WriteMemoryReporting(TargetAddress start, TargetAddress end, VariantBool,
                                               AccessSize accessSize, const uint8_t* buffer,
                                               VariantBool& failed, TargetAddress&, int32_t&, int32_t&)
{
    failed = VARIANT_FALSE;
    return WriteMemory(start, end, accessSize, buffer);
}

HRESULT CPDMemoryManager::WriteMemoryValuesReporting(TargetAddress start, TargetAddress end, VariantBool,
                                                     AccessSize accessSize, const uint8_t* buffer,
                                                     VariantBool& failed, TargetAddress&, int32_t&, int32_t&)
{
    failed = VARIANT_FALSE;
    return WriteMemoryValues(start, end, accessSize, buffer);
}

HRESULT CPDMemoryManager::WriteMemoryEx(TargetAddress start, TargetAddress end, VariantBool, uint32_t size,
                                        const uint8_t* buffer, VariantBool* failed, TargetAddress*, int32_t*,
                                        int32_t*, int32_t)
{
    if (failed != nullptr)
        *failed = VARIANT_FALSE;
    if (size > 0xFFFF)
        return kCannotWrite;
    return WriteMemory(start, end, static_cast<AccessSize>(size), buffer);
}

HRESULT CPDMemoryManager::WriteMemoryValuesEx(TargetAddress start, TargetAddress end, VariantBool,
                                              uint32_t size, const uint8_t* buffer, VariantBool* failed,
                                              TargetAddress*, int32_t*, int32_t*, int32_t)
{
    if (failed != nullptr)
        *failed = VARIANT_FALSE;
    if (size > 0xFFFF)
        return kCannotWrite;
    return WriteMemoryValues(start, end, static_cast<AccessSize>(size), buffer);
}

HRESULT CPDMemoryManager::FillMemoryEx(TargetAddress start, TargetAddress end, VariantBool, uint32_t size,
                                       const uint8_t* buffer, VariantBool* failed, TargetAddress*, int32_t*,
                                       int32_t*, int32_t)
{
    if (failed != nullptr)
        *failed = VARIANT_FALSE;
    return FillMemory(start, end, size, buffer);
}

HRESULT CPDMemoryManager::GetErrorText(HRESULT, std::string& text)
{
    auto* functions = GetServiceAs<IQPlatformFunctions>(Host, Ids::IQPlatformFunctions);
    if (functions == nullptr || Failed(functions->GetLastErrorText(text)))
        text = kGeneralErrorText;
    return S_OK;
}

bool CPDMemoryManagerDisableAble::Refuse()
{
    if (!Disabled)
        return false;
    AccessedWhileDisabled = true;
    return true;
}

HRESULT CPDMemoryManagerDisableAble::ReadMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                                uint8_t* buffer)
{
    return Refuse() ? DisabledCode : CPDMemoryManager::ReadMemory(start, end, accessSize, buffer);
}

HRESULT CPDMemoryManagerDisableAble::WriteMemory(TargetAddress start, TargetAddress end,
                                                 AccessSize accessSize, const uint8_t* buffer)
{
    return Refuse() ? DisabledCode : CPDMemoryManager::WriteMemory(start, end, accessSize, buffer);
}

HRESULT CPDMemoryManagerDisableAble::CopyMemorySimple(TargetAddress start, TargetAddress end,
                                                      TargetAddress destination)
{
    return Refuse() ? DisabledCode : CPDMemoryManager::CopyMemorySimple(start, end, destination);
}

HRESULT CPDMemoryManagerDisableAble::FillMemory(TargetAddress start, TargetAddress end,
                                                uint32_t patternLength, const uint8_t* pattern)
{
    return Refuse() ? DisabledCode : CPDMemoryManager::FillMemory(start, end, patternLength, pattern);
}

HRESULT CPDMemoryManagerDisableAble::CopyMemory(TargetAddress start, TargetAddress end,
                                                TargetAddress destination, VariantBool verify,
                                                AccessSize accessSize, uint8_t& first, uint8_t& second,
                                                TargetAddress& address)
{
    if (Refuse())
        return DisabledCode;
    return CPDMemoryManager::CopyMemory(start, end, destination, verify, accessSize, first, second, address);
}
