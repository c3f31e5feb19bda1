#include <benchmark/benchmark.h>

#include <chrono>
#include <cstring>
#include <vector>

#include "boundary/Ids.h"
#include "component/memory/CCacheMemory.h"
#include "component/util/ObjectSerial.h"

namespace
{

constexpr TargetAddress kBase = 0x20000000;
constexpr uint32_t kBlock = 64 * 1024;

// Platform memory whose bytes follow from the address; it counts its reads so
// that a cold read's cost in platform calls can be reported.
class CountingMemory : public IQPlatformMemory2
{
public:
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerFrom({Ids::IUnknown, Ids::IQPlatformMemory2}, iid, static_cast<IQPlatformMemory2*>(this),
                          out);
    }
    TESSEL_NOT_REFCOUNTED

    HRESULT Read(TargetAddress start, TargetAddress end, uint8_t* buffer) override
    {
        ++reads;
        for (uint64_t a = start; a <= end; ++a)
            buffer[a - start] = static_cast<uint8_t>(a ^ (a >> 8));
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
        size = 0x1000;
        return S_OK;
    }

    int64_t reads = 0;
};

const std::vector<CMemoryArea> kAreas{CMemoryArea{0, 0xFFFFFFFF}};

// Both throughputs are measured in one run so that their ratio is fair.
void BM_CachedReadAgainstMemcpy(benchmark::State& state)
{
    CountingMemory platform;
    CCacheMemory cache(nullptr, &platform, nullptr, true);
    std::vector<uint8_t> source(kBlock, 0x5A);
    std::vector<uint8_t> out(kBlock);
    cache.Read(kBase, kBase + kBlock - 1, out.data(), kAreas);
    const int64_t warmReads = platform.reads;

    double cacheSeconds = 0;
    double copySeconds = 0;
    for (auto _ : state) {
        auto t0 = std::chrono::steady_clock::now();
        for (int i = 0; i < 16; ++i) {
            cache.Read(kBase, kBase + kBlock - 1, out.data(), kAreas);
            benchmark::DoNotOptimize(out.data());
            benchmark::ClobberMemory();
        }
        auto t1 = std::chrono::steady_clock::now();
        for (int i = 0; i < 16; ++i) {
            std::memcpy(out.data(), source.data(), kBlock);
            benchmark::DoNotOptimize(out.data());
            benchmark::ClobberMemory();
        }
        auto t2 = std::chrono::steady_clock::now();
        cacheSeconds += std::chrono::duration<double>(t1 - t0).count();
        copySeconds += std::chrono::duration<double>(t2 - t1).count();
    }
    const double bytes = double(state.iterations()) * 16 * kBlock;
    state.SetBytesProcessed(static_cast<int64_t>(bytes * 2));
    state.counters["cache_bytes_per_second"] = bytes / cacheSeconds;
    state.counters["memcpy_bytes_per_second"] = bytes / copySeconds;
    state.counters["ratio"] = copySeconds / cacheSeconds;
    state.counters["platform_calls_when_warm"] = double(platform.reads - warmReads);
}
BENCHMARK(BM_CachedReadAgainstMemcpy);

void BM_CachedRead64K(benchmark::State& state)
{
    CountingMemory platform;
    CCacheMemory cache(nullptr, &platform, nullptr, true);
    std::vector<uint8_t> out(kBlock);
    cache.Read(kBase, kBase + kBlock - 1, out.data(), kAreas);
    for (auto _ : state) {
        cache.Read(kBase, kBase + kBlock - 1, out.data(), kAreas);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * int64_t{kBlock});
}
BENCHMARK(BM_CachedRead64K);

void BM_Memcpy64K(benchmark::State& state)
{
    std::vector<uint8_t> source(kBlock, 0x5A);
    std::vector<uint8_t> out(kBlock);
    for (auto _ : state) {
        std::memcpy(out.data(), source.data(), kBlock);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * int64_t{kBlock});
}
BENCHMARK(BM_Memcpy64K);

// A cold read costs one platform call per page, and no more.
void BM_ColdRead64KPlatformCalls(benchmark::State& state)
{
    CountingMemory platform;
    CCacheMemory cache(nullptr, &platform, nullptr, true);
    std::vector<uint8_t> out(kBlock);
    int64_t calls = 0;
    for (auto _ : state) {
        cache.Clear();
        const int64_t before = platform.reads;
        cache.Read(kBase, kBase + kBlock - 1, out.data(), kAreas);
        calls = platform.reads - before;
        benchmark::DoNotOptimize(out.data());
    }
    state.counters["platform_calls"] = double(calls);
    state.counters["expected_calls"] = double(kBlock / cache.PageSize());
    state.SetBytesProcessed(state.iterations() * int64_t{kBlock});
}
BENCHMARK(BM_ColdRead64KPlatformCalls);

} // namespace
