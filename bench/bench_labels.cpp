#include <benchmark/benchmark.h>

#include <malloc.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "component/symbols/CDataLabelArray.h"

namespace
{

// "sym_%08x", written out by hand: formatting would cost a lookup's time again.
std::string Name(uint32_t number)
{
    std::string name = "sym_00000000";
    for (size_t at = name.size() - 1; number != 0; --at, number >>= 4)
        name[at] = "0123456789abcdef"[number & 15];
    return name;
}

// Labels as a download brings them: rising addresses, names in no order.
std::vector<LabelRecord> MakeRecords(uint32_t count)
{
    std::vector<LabelRecord> records(count);
    for (uint32_t i = 0; i < count; ++i) {
        records[i] = {Name(static_cast<uint32_t>(uint64_t{i} * 2654435761u % count)), 0x8000 + 4 * i};
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
        store->GetCount(); // sorted in before any timing starts
    }
    return *store;
}

// Large blocks come straight from the system and are counted apart.
size_t HeapInUse()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void DeferredAddAndSort(benchmark::State& state)
{
    const auto records = MakeRecords(static_cast<uint32_t>(state.range(0)));
    size_t heldBytes = 0;
    for (auto _ : state) {
        // Counting the heap costs a walk through it, which is not to be timed.
        state.PauseTiming();
        const size_t before = HeapInUse();
        state.ResumeTiming();
        auto store = std::make_unique<CDataLabelArray>();
        store->SetDeferred(true);
        for (const LabelRecord& record : records)
            store->AddLabel(record, 1);
        store->SetDeferred(false);
        benchmark::DoNotOptimize(store->GetCount());
        state.PauseTiming();
        heldBytes = HeapInUse() - before;
        store.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    // What the sorted store holds on the heap, label, keys and indexes together.
    state.counters["bytes_per_label"] = static_cast<double>(heldBytes) / static_cast<double>(state.range(0));
}
// Process time, so that the worker's sorting counts.
BENCHMARK(DeferredAddAndSort)
    ->Arg(1'000'000)
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

// Probes spread over the whole store (stride 7919), or one after another as a
// listing asks (stride 1): a tree of a million labels outgrows the caches, so
// the first pays a memory access at most levels and the second hardly any.
uint32_t Probe(benchmark::State& state, uint32_t i)
{
    return static_cast<uint32_t>(i * state.range(0) % 1'000'000);
}

// The second argument is the exact flag; the other probes come in upper case.
void FindByName(benchmark::State& state)
{
    auto& store = SortedStore(1'000'000);
    const bool exact = state.range(1) != 0;
    uint32_t i = 0;
    for (auto _ : state) {
        LabelRecord record{Name(Probe(state, i++))};
        if (!exact)
            record.Name.replace(0, 3, "SYM");
        if (store.FindByName(record, 0, exact) != S_OK) {
            state.SkipWithError("a stored name was not found");
            break;
        }
    }
}
BENCHMARK(FindByName)->ArgsProduct({{7919, 1}, {1, 0}});

void FindByAddress(benchmark::State& state)
{
    auto& store = SortedStore(1'000'000);
    uint32_t i = 0;
    for (auto _ : state) {
        LabelRecord record{{}, 0x8000 + 4 * Probe(state, i++)};
        if (store.FindByAddress(record) != S_OK) {
            state.SkipWithError("a stored address was not found");
            break;
        }
    }
}
BENCHMARK(FindByAddress)->Arg(7919)->Arg(1);

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
