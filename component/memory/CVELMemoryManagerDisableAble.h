#pragma once
#include "component/memory/CVELMemoryManager.h"

// The manager the debugger state makes: while a connection is being set up it
// can keep memory closed, so that views read 0xFF and nothing else reaches
// the target. The command line's face opens memory for the length of each of
// its calls.
class CVELMemoryManagerDisableAble : public CVELMemoryManager
{
public:
    using CVELMemoryManager::CVELMemoryManager;

    HRESULT ReadMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                       uint8_t* buffer) override;
    HRESULT ReadMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                             uint8_t* buffer) override;
    HRESULT ReadMemoryDirect(TargetAddress start, TargetAddress end, AccessSize accessSize,
                             uint8_t* buffer) override;
    HRESULT ReadMemoryValuesDirect(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                   uint8_t* buffer) override;
    HRESULT CompareMemorySimple(TargetAddress start, TargetAddress end, TargetAddress destination) override;
    HRESULT CopyMemorySimple(TargetAddress start, TargetAddress end, TargetAddress destination) override;
    HRESULT FindMemorySimple(TargetAddress start, TargetAddress end, uint32_t patternLength,
                             const uint8_t* pattern, TargetAddress& found) override;
    HRESULT VerifyMemory(TargetAddress start, TargetAddress end, const uint8_t* data) override;
    HRESULT TestMemory(TargetAddress start, TargetAddress end) override;
    HRESULT RefreshMemory() override;
    HRESULT CompareMemory(TargetAddress start, TargetAddress end, TargetAddress destination,
                          AccessSize accessSize, uint8_t& first, uint8_t& second,
                          TargetAddress& address) override;
    HRESULT CopyMemory(TargetAddress start, TargetAddress end, TargetAddress destination, VariantBool verify,
                       AccessSize accessSize, uint8_t& first, uint8_t& second,
                       TargetAddress& address) override;
    HRESULT FindMemory(TargetAddress start, TargetAddress end, uint32_t flag1, uint32_t flag2,
                       uint32_t patternLength, const uint8_t* pattern, const uint8_t* mask,
                       TargetAddress& address) override;
    HRESULT FindMemoryEx(TargetAddress start, TargetAddress end, uint32_t flag1, uint32_t flag2,
                         uint32_t flag3, uint32_t patternLength, const uint8_t* pattern, const uint8_t* mask,
                         TargetAddress& address) override;
    HRESULT VerifyMemoryReporting(TargetAddress start, TargetAddress end, const uint8_t* data,
                                  TargetAddress& address, VariantBool& failed) override;
    HRESULT WriteMemoryEx(TargetAddress start, TargetAddress end, VariantBool verify, uint32_t size,
                          const uint8_t* buffer, VariantBool* failed, TargetAddress* address,
                          int32_t* written, int32_t* found, int32_t mode) override;
    HRESULT WriteMemoryValuesEx(TargetAddress start, TargetAddress end, VariantBool verify, uint32_t size,
                                const uint8_t* buffer, VariantBool* failed, TargetAddress* address,
                                int32_t* written, int32_t* found, int32_t mode) override;
    HRESULT FillMemoryEx(TargetAddress start, TargetAddress end, VariantBool verify, uint32_t size,
                         const uint8_t* buffer, VariantBool* failed, TargetAddress* address, int32_t* written,
                         int32_t* found, int32_t mode) override;

private:
    // A view's read while closed: all bytes 0xFF and no error, so that it
    // shows something plain and does not reach the target.
    HRESULT Blank(TargetAddress start, TargetAddress end, uint8_t* buffer);
    // Refused while closed; noted, so that views can be told to read again.
    template <class Call> HRESULT Refuse(Call open);
};
