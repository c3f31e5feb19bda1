#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <memory>
#include <vector>

#include "component/symbols/CDataLabelArray.h"

namespace
{

// Labels as a download brings them: rising addresses, names in no order.
std::vector<LabelRecord> MakeRecords(uint32_t count)
{
    std::vector<LabelRecord> records(count);
    for (uint32_t i = 0; i < count; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "sym_%08x", (i * 2654435761u) % count);
        records[i] = {name, 0x8000 + 4 * i};
    }
    return records;
}

// One sorted store per size, built once and shared by the lookups and walks.
CDataLabelArray& SortedStore(uint32_t count)
{
    static std::map<uint32_t, std::unique_ptr<CDataLabelArray>> stores;
    auto& store = stores[count];
    if (!store) {
        store = std::make_unique<CDataLabelArray>();
        store->SetDeferred(true);
        for (const LabelRecord& record : MakeRecords(count))
            store->AddLabel(record, 1);
        store->SetDeferred(false);
    }
    return *store;
}

void DeferredAddAndSort(benchmark::State& state)
{
    const auto records = MakeRecords(static_cast<uint32_t>(state.range(0)));
    for (auto _ : state) {
        auto store = std::make_unique<CDataLabelArray>();
        store->SetDeferred(true);
        for (const LabelRecord& record : records)
            store->AddLabel(record, 1);
        store->SetDeferred(false);
        benchmark::DoNotOptimize(store->GetCount());
        state.PauseTiming();
        store.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
// Process time, so that the worker's sorting counts.
BENCHMARK(DeferredAddAndSort)
    ->Arg(1'000'000)
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

void FindByName(benchmark::State& state)
{
    auto& store = SortedStore(1'000'000);
    const auto records = MakeRecords(1'000'000);
    size_t i = 0;
    for (auto _ : state) {
        LabelRecord record{records[i++ % records.size()].Name};
        benchmark::DoNotOptimize(store.FindByName(record, 0, true));
    }
}
BENCHMARK(FindByName);

void FindByAddress(benchmark::State& state)
{
    auto& store = SortedStore(1'000'000);
    uint32_t i = 0;
    for (auto _ : state) {
        LabelRecord record{{}, 0x8000 + 4 * (i++ * 7919u % 1'000'000)};
        benchmark::DoNotOptimize(store.FindByAddress(record));
    }
}
BENCHMARK(FindByAddress);

// A whole walk by rising index; per-label time should not grow with the count.
void WalkByIndex(benchmark::State& state, bool byName)
{
    auto& store = SortedStore(static_cast<uint32_t>(state.range(0)));
    const size_t count = store.GetCount();
    for (auto _ : state) {
        for (size_t i = 0; i < count; ++i)
            benchmark::DoNotOptimize(byName ? store.GetRecordByNameIndex(i)
                                            : store.GetRecordByAddressIndex(i));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(count));
}
BENCHMARK_CAPTURE(WalkByIndex, Name, true)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WalkByIndex, Address, false)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

} // namespace
