#pragma once
#include <memory>
#include <vector>

#include "component/memory/CCacheMemory.h"
#include "component/memory/CCacheMemoryWithSize.h"
#include "component/memory/CMemoryArea.h"
#include "component/memory/CMemoryManager.h"
#include "component/memory/MemoryWalk.h"

// The memory manager of platforms that offer their memory through the
// platform memory interfaces. It cuts every request along the platform's
// memory map, serves reads from page caches, puts multi-byte values in the
// order the caller asked for, and falls back from the newest platform
// operation to older ones.
//
// Its code is split by concern: set-up, map and caches here in
// CVELMemoryManager.cpp; reads in VELMemoryReads.cpp; writes and fills in
// VELMemoryWrites.cpp; the whole-range operations in VELMemoryOperations.cpp.
class CVELMemoryManager : public CMemoryManager
{
public:
    explicit CVELMemoryManager(IQServiceRegistry* host) : CMemoryManager(host) {}

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

    bool HasPlatformMemory2() const override { return PlatformMemory2 != nullptr; }
    bool HasPlatformMemory3() const override { return PlatformMemory3 != nullptr; }
    bool HasPlatformMemory4() const override { return PlatformMemory4 != nullptr; }
    bool HasPlatformMemory5() const override { return PlatformMemory5 != nullptr; }
    HRESULT AttachPlatform(IQServiceRegistry* locator) override;
    HRESULT DetachPlatform() override;
    HRESULT ReloadAreas() override;
    HRESULT SetDownloadMode(bool on) override;
    HRESULT WriteMemoryEx(TargetAddress start, TargetAddress end, VariantBool verify, uint32_t size,
                          const uint8_t* buffer, VariantBool* failed, TargetAddress* address,
                          int32_t* written, int32_t* found, int32_t mode) override;
    HRESULT WriteMemoryValuesEx(TargetAddress start, TargetAddress end, VariantBool verify, uint32_t size,
                                const uint8_t* buffer, VariantBool* failed, TargetAddress* address,
                                int32_t* written, int32_t* found, int32_t mode) override;
    HRESULT FillMemoryEx(TargetAddress start, TargetAddress end, VariantBool verify, uint32_t size,
                         const uint8_t* buffer, VariantBool* failed, TargetAddress* address, int32_t* written,
                         int32_t* found, int32_t mode) override;
    HRESULT GetErrorText(HRESULT code, std::string& text) override;
    bool IsPlatformFunctionFamily() const override { return false; }

    // Result codes of the error table.
    static constexpr HRESULT kWriteOutsideMap = MakeResult(0x80043041u);
    static constexpr HRESULT kFillOutsideMap = MakeResult(0x80042010u);

protected:
    // How a caller wants multi-byte values in its buffer: most significant
    // byte first (the plain operations), or as this system's own integers
    // (the ...Values operations).
    enum class Order { MostSignificantFirst, Native };
    enum class Source { Cache, Platform };

    VariantBool CacheEnabled = VARIANT_TRUE;
    std::unique_ptr<CCacheMemory> PlainCache;
    // Outer index access size minus 1, inner index address modulo access size.
    std::vector<std::vector<std::unique_ptr<CCacheMemoryWithSize>>> SizedCaches;
    IQPlatformMemory* PlatformMemory = nullptr;
    IQPlatformMemory2* PlatformMemory2 = nullptr;
    IQPlatformMemory3* PlatformMemory3 = nullptr;
    IQPlatformMemory4* PlatformMemory4 = nullptr;
    IQPlatformMemory5* PlatformMemory5 = nullptr;
    std::vector<CMemoryArea> Areas;

private:
    // Whether a chunk's elements are turned round between the target's bytes
    // and the caller's buffer.
    static bool ReversesOnRead(const CMemoryArea& area, AccessSize accessSize, Order order);
    static bool ReversesOnWrite(const CMemoryArea& area, AccessSize accessSize, Order order);

    bool Attached() const { return PlatformMemory != nullptr || PlatformMemory2 != nullptr; }
    HRESULT Refresh();
    void LoadAreas();
    void ClearAllCaches();
    template <class F> void ForEachCache(F each);
    CCache& CacheFor(const CMemoryArea& area, AccessSize accessSize, TargetAddress address);
    CCacheMemoryWithSize& SizedCache(AccessSize size, uint32_t alignment);
    HRESULT ReadPlatform(const WalkChunk& chunk, AccessSize sizedAccess, uint8_t* out);
    HRESULT ReadWalk(TargetAddress start, TargetAddress end, AccessSize accessSize, uint8_t* buffer,
                     Source source, Order order);
    HRESULT WriteWalk(TargetAddress start, TargetAddress end, VariantBool verify, uint32_t size,
                      const uint8_t* buffer, VariantBool* failed, TargetAddress* address, int32_t* written,
                      int32_t* found, int32_t mode, Order order);
    HRESULT WriteChunk(CCache& cache, const WalkChunk& chunk, VariantBool verify, const uint8_t* data,
                       int32_t& mode, VariantBool* failed, TargetAddress* address, int32_t* written,
                       int32_t* found);
    int32_t LowerMode(int32_t mode) const;
    HRESULT PlainFill(TargetAddress start, TargetAddress end, uint32_t patternLength, const uint8_t* pattern);
    // Long operations would run under a progress display the user can cancel.
    // This host has none yet, so even a platform that offers them gets the
    // straight call, which returns when the platform is done.
    template <class Call> HRESULT LongOperation(Call straight) { return straight(); }

    // The areas of each kind, for the cache that serves that kind.
    std::vector<CMemoryArea> plainAreas_;
    std::vector<CMemoryArea> sizedAreas_;
};
