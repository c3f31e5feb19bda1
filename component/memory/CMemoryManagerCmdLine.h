#pragma once
#include "boundary/ScopeGuard.h"
#include "component/memory/CMemoryManager.h"

// The command line's face of a memory manager. Each operation opens memory
// for the length of the call and closes it again as it was, so that the
// commands of a connection batch reach the target while views are kept out.
class CMemoryManagerCmdLine final : public IQMemoryManagerCmdLine, public IQMemoryManagerCmdLine5
{
public:
    explicit CMemoryManagerCmdLine(CMemoryManager& manager) : m_(manager) {}

    HRESULT QueryInterface(const Guid& iid, void** out) override { return m_.QueryInterface(iid, out); }
    TESSEL_NOT_REFCOUNTED

    HRESULT GetMemoryInfo(Variant& info) override;
    HRESULT GetAreaCount(uint32_t& count) override;
    HRESULT GetAreaBounds(uint32_t index, TargetAddress& start, TargetAddress& end) override;
    HRESULT ReadMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                       uint8_t* buffer) override;
    HRESULT WriteMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                        const uint8_t* buffer) override;
    HRESULT CompareMemorySimple(TargetAddress start, TargetAddress end, TargetAddress destination) override;
    HRESULT CopyMemorySimple(TargetAddress start, TargetAddress end, TargetAddress destination) override;
    HRESULT FillMemory(TargetAddress start, TargetAddress end, uint32_t patternLength,
                       const uint8_t* pattern) override;
    HRESULT FindMemorySimple(TargetAddress start, TargetAddress end, uint32_t patternLength,
                             const uint8_t* pattern, TargetAddress& found) override;
    HRESULT VerifyMemory(TargetAddress start, TargetAddress end, const uint8_t* data) override;
    HRESULT TestMemory(TargetAddress start, TargetAddress end) override;
    HRESULT RefreshMemory() override;
    HRESULT RefreshMemoryAgain() override;
    HRESULT ReadMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                             uint8_t* buffer) override;
    HRESULT WriteMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                              const uint8_t* buffer) override;

    HRESULT GetCanCompare() override;
    HRESULT GetCanCopy() override;
    HRESULT GetCanFill() override;
    HRESULT GetCanFind() override;
    HRESULT GetCanFindAlternate() override;
    HRESULT GetCanVerify() override;
    HRESULT GetCanTest() override;
    HRESULT CompareMemory(TargetAddress start, TargetAddress end, TargetAddress destination,
                          AccessSize accessSize, uint8_t& first, uint8_t& second,
                          TargetAddress& address) override;
    HRESULT CopyMemory(TargetAddress start, TargetAddress end, TargetAddress destination, VariantBool verify,
                       AccessSize accessSize, uint8_t& first, uint8_t& second,
                       TargetAddress& address) override;
    HRESULT FindMemory(TargetAddress start, TargetAddress end, uint32_t flag1, uint32_t flag2,
                       uint32_t patternLength, const uint8_t* pattern, const uint8_t* mask,
                       TargetAddress& address) override;
    HRESULT ReadMemoryDirect(TargetAddress start, TargetAddress end, AccessSize accessSize,
                             uint8_t* buffer) override;
    HRESULT ReadMemoryValuesDirect(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                   uint8_t* buffer) override;
    HRESULT SetCacheEnabled(VariantBool enabled) override;
    HRESULT GetCacheEnabled() override;
    HRESULT FindMemoryEx(TargetAddress start, TargetAddress end, uint32_t flag1, uint32_t flag2,
                         uint32_t flag3, uint32_t patternLength, const uint8_t* pattern, const uint8_t* mask,
                         TargetAddress& address) override;
    HRESULT WriteMemoryVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                AccessSize accessSize, const uint8_t* buffer) override;
    HRESULT FillMemoryVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                               uint32_t patternLength, const uint8_t* pattern) override;
    HRESULT WriteMemoryValuesVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                      AccessSize accessSize, const uint8_t* buffer) override;
    HRESULT VerifyMemoryReporting(TargetAddress start, TargetAddress end, const uint8_t* data,
                                  TargetAddress& address, VariantBool& failed) override;
    HRESULT FillMemoryReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                uint32_t patternLength, const uint8_t* pattern, VariantBool& failed,
                                TargetAddress& address, int32_t& written, int32_t& found) override;
    HRESULT WriteMemoryReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                 AccessSize accessSize, const uint8_t* buffer, VariantBool& failed,
                                 TargetAddress& address, int32_t& written, int32_t& found) override;
    HRESULT WriteMemoryValuesReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                       AccessSize accessSize, const uint8_t* buffer, VariantBool& failed,
                                       TargetAddress& address, int32_t& written, int32_t& found) override;

private:
    template <class F> HRESULT Open(F call)
    {
        ScopedValue<bool> open(m_.Disabled, false);
        return call();
    }

    CMemoryManager& m_;
};
