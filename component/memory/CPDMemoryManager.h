#pragma once
#include "boundary/interfaces/PlatformFunctions.h"
#include "component/memory/CMemoryManager.h"

// The memory manager for the older kind of platform, which offers plain
// functions looked up by name. No caches, no memory map of its own, no long
// operations: each request goes straight to one platform function, and what
// the platform has no function for answers E_FAIL.
class CPDMemoryManager : public CMemoryManager
{
public:
    // A missing function gives the same code as its failure.
    static constexpr HRESULT kCannotRead = MakeResult(0x80043092u);
    static constexpr HRESULT kCannotWrite = MakeResult(0x80043093u);
    static constexpr HRESULT kCannotCopy = MakeResult(0x80043094u);

    explicit CPDMemoryManager(IQServiceRegistry* host);

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
    // Through the ReadMemory and WriteMemory slots, so that a closed manager
    // refuses these too.
    HRESULT ReadMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                             uint8_t* buffer) override;
    HRESULT WriteMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                              const uint8_t* buffer) override;
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
    // The platform cannot verify: verify is dropped.
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

    // Looks up the platform's functions and its memory areas.
    HRESULT AttachPlatform(IQServiceRegistry* locator) override;
    // The function pointers die with the platform: afterwards the manager
    // answers as for a platform without functions.
    HRESULT DetachPlatform() override;
    // Nothing to reload or switch: the areas are asked for each time.
    HRESULT ReloadAreas() override { return S_OK; }
    HRESULT SetDownloadMode(bool) override { return S_OK; }
    HRESULT WriteMemoryEx(TargetAddress start, TargetAddress end, VariantBool verify, uint32_t size,
                          const uint8_t* buffer, VariantBool* failed, TargetAddress* address,
                          int32_t* written, int32_t* found, int32_t mode) override;
    HRESULT WriteMemoryValuesEx(TargetAddress start, TargetAddress end, VariantBool verify, uint32_t size,
                                const uint8_t* buffer, VariantBool* failed, TargetAddress* address,
                                int32_t* written, int32_t* found, int32_t mode) override;
    HRESULT FillMemoryEx(TargetAddress start, TargetAddress end, VariantBool verify, uint32_t size,
                         const uint8_t* buffer, VariantBool* failed, TargetAddress* address, int32_t* written,
                         int32_t* found, int32_t mode) override;
    // The platform's text of its last failure, or a general one; the code is
    // not looked at.
    HRESULT GetErrorText(HRESULT code, std::string& text) override;
    bool IsPlatformFunctionFamily() const override { return true; }

protected:
    PlatformMoveFn Move = nullptr;
    PlatformMoveFn Move2 = nullptr;
    PlatformMoveFn Move4 = nullptr;
    PlatformFillFn Fill = nullptr;
    PlatformMemoryAccessFn GetMem = nullptr;
    PlatformMemoryAccessFn GetMem2 = nullptr;
    PlatformMemoryAccessFn GetMem4 = nullptr;
    PlatformMemoryAccessFn PutMem = nullptr;
    PlatformMemoryAccessFn PutMem2 = nullptr;
    PlatformMemoryAccessFn PutMem4 = nullptr;
    IQPlatformFreeRun* MapService = nullptr;

private:
    void ForgetPlatform();
};

// The manager the debugger state really makes: while a connection keeps
// memory closed, every way to the target is refused with DisabledCode, reads
// included, and the refusal is noted so that views can be told to read again
// afterwards. The command line's face goes round the switch.
class CPDMemoryManagerDisableAble : public CPDMemoryManager
{
public:
    using CPDMemoryManager::CPDMemoryManager;

    HRESULT ReadMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                       uint8_t* buffer) override;
    HRESULT WriteMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                        const uint8_t* buffer) override;
    HRESULT CopyMemorySimple(TargetAddress start, TargetAddress end, TargetAddress destination) override;
    HRESULT FillMemory(TargetAddress start, TargetAddress end, uint32_t patternLength,
                       const uint8_t* pattern) override;
    HRESULT CopyMemory(TargetAddress start, TargetAddress end, TargetAddress destination, VariantBool verify,
                       AccessSize accessSize, uint8_t& first, uint8_t& second,
                       TargetAddress& address) override;

private:
    // True, and the access noted, when memory is closed.
    bool Refuse();
};
