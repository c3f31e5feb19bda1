#include "component/memory/CMemoryManagerCmdLine.h"

// Every operation goes to the ordinary face of the same manager, so that the
// two lines can never drift apart in what they do.
using M5 = IQMemoryManager5;
using M1 = IQMemoryManager;

HRESULT CMemoryManagerCmdLine::GetMemoryInfo(Variant& info)
{
    return Open([&] { return m_.GetMemoryInfo(info); });
}
HRESULT CMemoryManagerCmdLine::GetAreaCount(uint32_t& count)
{
    return Open([&] { return m_.GetAreaCount(count); });
}
HRESULT CMemoryManagerCmdLine::GetAreaBounds(uint32_t index, TargetAddress& start, TargetAddress& end)
{
    return Open([&] { return m_.GetAreaBounds(index, start, end); });
}
HRESULT CMemoryManagerCmdLine::ReadMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                          uint8_t* buffer)
{
    return Open([&] { return m_.ReadMemory(start, end, accessSize, buffer); });
}
HRESULT CMemoryManagerCmdLine::WriteMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                           const uint8_t* buffer)
{
    return Open([&] { return m_.WriteMemory(start, end, accessSize, buffer); });
}
HRESULT CMemoryManagerCmdLine::CompareMemorySimple(TargetAddress start, TargetAddress end,
                                                   TargetAddress destination)
{
    return Open([&] { return static_cast<M1&>(m_).CompareMemorySimple(start, end, destination); });
}
HRESULT CMemoryManagerCmdLine::CopyMemorySimple(TargetAddress start, TargetAddress end,
                                                TargetAddress destination)
{
    return Open([&] { return static_cast<M1&>(m_).CopyMemorySimple(start, end, destination); });
}
HRESULT CMemoryManagerCmdLine::FillMemory(TargetAddress start, TargetAddress end, uint32_t patternLength,
                                          const uint8_t* pattern)
{
    return Open([&] { return m_.FillMemory(start, end, patternLength, pattern); });
}
HRESULT CMemoryManagerCmdLine::FindMemorySimple(TargetAddress start, TargetAddress end,
                                                uint32_t patternLength, const uint8_t* pattern,
                                                TargetAddress& found)
{
    return Open(
        [&] { return static_cast<M1&>(m_).FindMemorySimple(start, end, patternLength, pattern, found); });
}
HRESULT CMemoryManagerCmdLine::VerifyMemory(TargetAddress start, TargetAddress end, const uint8_t* data)
{
    return Open([&] { return m_.VerifyMemory(start, end, data); });
}
HRESULT CMemoryManagerCmdLine::TestMemory(TargetAddress start, TargetAddress end)
{
    return Open([&] { return m_.TestMemory(start, end); });
}
HRESULT CMemoryManagerCmdLine::RefreshMemory()
{
    return Open([&] { return m_.RefreshMemory(); });
}
HRESULT CMemoryManagerCmdLine::RefreshMemoryAgain()
{
    return Open([&] { return m_.RefreshMemoryAgain(); });
}
HRESULT CMemoryManagerCmdLine::ReadMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                                uint8_t* buffer)
{
    return Open([&] { return m_.ReadMemoryValues(start, end, accessSize, buffer); });
}
HRESULT CMemoryManagerCmdLine::WriteMemoryValues(TargetAddress start, TargetAddress end,
                                                 AccessSize accessSize, const uint8_t* buffer)
{
    return Open([&] { return m_.WriteMemoryValues(start, end, accessSize, buffer); });
}

HRESULT CMemoryManagerCmdLine::GetCanCompare()
{
    return m_.GetCanCompare();
}
HRESULT CMemoryManagerCmdLine::GetCanCopy()
{
    return m_.GetCanCopy();
}
HRESULT CMemoryManagerCmdLine::GetCanFill()
{
    return m_.GetCanFill();
}
HRESULT CMemoryManagerCmdLine::GetCanFind()
{
    return m_.GetCanFind();
}
HRESULT CMemoryManagerCmdLine::GetCanFindAlternate()
{
    return m_.GetCanFindAlternate();
}
HRESULT CMemoryManagerCmdLine::GetCanVerify()
{
    return m_.GetCanVerify();
}
HRESULT CMemoryManagerCmdLine::GetCanTest()
{
    return m_.GetCanTest();
}
HRESULT CMemoryManagerCmdLine::CompareMemory(TargetAddress start, TargetAddress end,
                                             TargetAddress destination, AccessSize accessSize, uint8_t& first,
                                             uint8_t& second, TargetAddress& address)
{
    return Open([&] {
        return static_cast<M5&>(m_).CompareMemory(start, end, destination, accessSize, first, second,
                                                  address);
    });
}
HRESULT CMemoryManagerCmdLine::CopyMemory(TargetAddress start, TargetAddress end, TargetAddress destination,
                                          VariantBool verify, AccessSize accessSize, uint8_t& first,
                                          uint8_t& second, TargetAddress& address)
{
    return Open([&] {
        return static_cast<M5&>(m_).CopyMemory(start, end, destination, verify, accessSize, first, second,
                                               address);
    });
}
HRESULT CMemoryManagerCmdLine::FindMemory(TargetAddress start, TargetAddress end, uint32_t flag1,
                                          uint32_t flag2, uint32_t patternLength, const uint8_t* pattern,
                                          const uint8_t* mask, TargetAddress& address)
{
    return Open([&] {
        return static_cast<M5&>(m_).FindMemory(start, end, flag1, flag2, patternLength, pattern, mask,
                                               address);
    });
}
HRESULT CMemoryManagerCmdLine::ReadMemoryDirect(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                                uint8_t* buffer)
{
    return Open([&] { return static_cast<M5&>(m_).ReadMemoryDirect(start, end, accessSize, buffer); });
}
HRESULT CMemoryManagerCmdLine::ReadMemoryValuesDirect(TargetAddress start, TargetAddress end,
                                                      AccessSize accessSize, uint8_t* buffer)
{
    return Open([&] { return static_cast<M5&>(m_).ReadMemoryValuesDirect(start, end, accessSize, buffer); });
}
HRESULT CMemoryManagerCmdLine::SetCacheEnabled(VariantBool enabled)
{
    return Open([&] { return static_cast<M5&>(m_).SetCacheEnabled(enabled); });
}
HRESULT CMemoryManagerCmdLine::GetCacheEnabled()
{
    return Open([&] { return static_cast<M5&>(m_).GetCacheEnabled(); });
}
HRESULT CMemoryManagerCmdLine::FindMemoryEx(TargetAddress start, TargetAddress end, uint32_t flag1,
                                            uint32_t flag2, uint32_t flag3, uint32_t patternLength,
                                            const uint8_t* pattern, const uint8_t* mask,
                                            TargetAddress& address)
{
    return Open([&] {
        return static_cast<M5&>(m_).FindMemoryEx(start, end, flag1, flag2, flag3, patternLength, pattern,
                                                 mask, address);
    });
}
HRESULT CMemoryManagerCmdLine::WriteMemoryVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                                   AccessSize accessSize, const uint8_t* buffer)
{
    return Open(
        [&] { return static_cast<M5&>(m_).WriteMemoryVerified(start, end, verify, accessSize, buffer); });
}
HRESULT CMemoryManagerCmdLine::FillMemoryVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                                  uint32_t patternLength, const uint8_t* pattern)
{
    return Open(
        [&] { return static_cast<M5&>(m_).FillMemoryVerified(start, end, verify, patternLength, pattern); });
}
HRESULT CMemoryManagerCmdLine::WriteMemoryValuesVerified(TargetAddress start, TargetAddress end,
                                                         VariantBool verify, AccessSize accessSize,
                                                         const uint8_t* buffer)
{
    return Open([&] {
        return static_cast<M5&>(m_).WriteMemoryValuesVerified(start, end, verify, accessSize, buffer);
    });
}
HRESULT CMemoryManagerCmdLine::VerifyMemoryReporting(TargetAddress start, TargetAddress end,
                                                     const uint8_t* data, TargetAddress& address,
                                                     VariantBool& failed)
{
    return Open(
        [&] { return static_cast<M5&>(m_).VerifyMemoryReporting(start, end, data, address, failed); });
}
HRESULT CMemoryManagerCmdLine::FillMemoryReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                                   uint32_t patternLength, const uint8_t* pattern,
                                                   VariantBool& failed, TargetAddress& address,
                                                   int32_t& written, int32_t& found)
{
    return Open([&] {
        return static_cast<M5&>(m_).FillMemoryReporting(start, end, verify, patternLength, pattern, failed,
                                                        address, written, found);
    });
}
HRESULT CMemoryManagerCmdLine::WriteMemoryReporting(TargetAddress start, TargetAddress end,
                                                    VariantBool verify, AccessSize accessSize,
                                                    const uint8_t* buffer, VariantBool& failed,
                                                    TargetAddress& address, int32_t& written, int32_t& found)
{
    return Open([&] {
        return static_cast<M5&>(m_).WriteMemoryReporting(start, end, verify, accessSize, buffer, failed,
                                                         address, written, found);
    });
}
HRESULT CMemoryManagerCmdLine::WriteMemoryValuesReporting(TargetAddress start, TargetAddress end,
                                                          VariantBool verify, AccessSize accessSize,
                                                          const uint8_t* buffer, VariantBool& failed,
                                                          TargetAddress& address, int32_t& written,
                                                          int32_t& found)
{
    return Open([&] {
        return static_cast<M5&>(m_).WriteMemoryValuesReporting(start, end, verify, accessSize, buffer, failed,
                                                               address, written, found);
    });
}
