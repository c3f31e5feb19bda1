#include <benchmark/benchmark.h>

#include <chrono>
#include <cstring>
#include <vector>

#include "boundary/Ids.h"
#include "component/memory/CVELMemoryManager.h"
#include "support/MemoryOpsNotOffered.h"
#include "workbench/ServiceRegistry.h"

namespace
{

constexpr uint32_t kBase = 0x20000000;
constexpr uint32_t kBlock = 64 * 1024;
constexpr uint32_t kPageSize = 0x1000;

// Platform memory over the whole address space whose bytes follow from the
// address; it counts its reads, so that a cold read's cost in platform calls
// can be reported. Only what a read through the manager needs is spelled out.
class CountingMemory final : public MemoryOpsNotOffered2
{
public:
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerFrom({Ids::IUnknown, Ids::IQPlatformMemory2}, iid, static_cast<IQPlatformMemory2*>(this),
                          out);
    }
    TESSEL_NOT_REFCOUNTED

    HRESULT GetAreaCount(uint32_t& count) override
    {
        count = 1;
        return S_OK;
    }
    HRESULT GetArea(uint32_t index, TargetAddress& start, TargetAddress& end, uint32_t& byteOrder,
                    uint32_t& info, VariantBool& sized, VariantBool& attribute1, VariantBool& attribute2,
                    VariantBool& attribute3) override
    {
        if (index != 0)
            return E_INVALIDARG;
        start = 0;
        end = 0xFFFFFFFF;
        byteOrder = 1;
        info = 0;
        sized = attribute1 = attribute2 = attribute3 = VARIANT_FALSE;
        return S_OK;
    }
    HRESULT Read(TargetAddress start, TargetAddress end, uint8_t* buffer) override
    {
        ++reads;
        for (uint64_t a = start.Value(); a <= end.Value(); ++a)
            buffer[a - start.Value()] = static_cast<uint8_t>(a ^ (a >> 8));
        return S_OK;
    }
    HRESULT Write(TargetAddress, TargetAddress, const uint8_t*) override { return S_OK; }
    HRESULT ReadSized(TargetAddress start, TargetAddress end, AccessSize, uint8_t* buffer) override
    {
        return Read(start, end, buffer);
    }
    HRESULT WriteSized(TargetAddress, TargetAddress, AccessSize, const uint8_t*) override { return S_OK; }
    HRESULT Refresh() override { return S_OK; }
    HRESULT GetPageSize(uint32_t& size) override
    {
        size = kPageSize;
        return S_OK;
    }

    int64_t reads = 0;
};

// A manager attached to the counting platform, found through the registry as
// the debugger state finds it.
struct Rig {
    Rig()
    {
        registry.RegisterService(Ids::IQPlatformMemory2, &platform);
        manager.AttachPlatform(&registry);
    }
    HRESULT Read(uint8_t* out) { return manager.ReadMemory(kBase, kBase + kBlock - 1, 1, out); }

    ServiceRegistry registry;
    CountingMemory platform;
    CVELMemoryManager manager{&registry};
};

// Both are timed in the same run, so that their ratio is fair.
void BM_CachedManagerReadAgainstMemcpy(benchmark::State& state)
{
    Rig rig;
    std::vector<uint8_t> source(kBlock, 0x5A);
    std::vector<uint8_t> out(kBlock);
    if (rig.Read(out.data()) != S_OK) {
        state.SkipWithError("the warming read failed");
        return;
    }
    const int64_t warmReads = rig.platform.reads;

    double managerSeconds = 0;
    double copySeconds = 0;
    for (auto _ : state) {
        const auto t0 = std::chrono::steady_clock::now();
        for (int i = 0; i < 16; ++i) {
            rig.Read(out.data());
            benchmark::DoNotOptimize(out.data());
            benchmark::ClobberMemory();
        }
        const auto t1 = std::chrono::steady_clock::now();
        for (int i = 0; i < 16; ++i) {
            std::memcpy(out.data(), source.data(), kBlock);
            benchmark::DoNotOptimize(out.data());
            benchmark::ClobberMemory();
        }
        const auto t2 = std::chrono::steady_clock::now();
        managerSeconds += std::chrono::duration<double>(t1 - t0).count();
        copySeconds += std::chrono::duration<double>(t2 - t1).count();
    }
    const double bytes = double(state.iterations()) * 16 * kBlock;
    state.counters["manager_bytes_per_second"] = bytes / managerSeconds;
    state.counters["memcpy_bytes_per_second"] = bytes / copySeconds;
    // The cached read's throughput as a share of memcpy's (the goal is 0.25 or more).
    state.counters["manager_throughput_vs_memcpy"] = copySeconds / managerSeconds;
    state.counters["platform_calls_when_warm"] = double(rig.platform.reads - warmReads);
}
BENCHMARK(BM_CachedManagerReadAgainstMemcpy);

// A cold read costs one platform call per page, and no more.
void BM_ColdManagerRead64KPlatformCalls(benchmark::State& state)
{
    Rig rig;
    std::vector<uint8_t> out(kBlock);
    int64_t calls = 0;
    for (auto _ : state) {
        rig.manager.RefreshMemory();
        const int64_t before = rig.platform.reads;
        rig.Read(out.data());
        calls = rig.platform.reads - before;
        benchmark::DoNotOptimize(out.data());
    }
    state.counters["platform_calls"] = double(calls);
    state.counters["pages"] = double(kBlock / kPageSize);
    state.SetBytesProcessed(state.iterations() * int64_t{kBlock});
}
BENCHMARK(BM_ColdManagerRead64KPlatformCalls);

} // namespace
