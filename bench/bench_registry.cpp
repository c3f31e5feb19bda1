// How fast the workbench finds services and delivers events: every command
// and every event of a session goes through these.
#include <benchmark/benchmark.h>

#include <vector>

#include "boundary/Ids.h"
#include "workbench/ServiceRegistry.h"

namespace {

struct Plain : IQComponent {
    HRESULT QueryInterface(const Guid&, void** out) override
    {
        *out = this;
        return S_OK;
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT OnEvent(const Event& e) override
    {
        seen += static_cast<uint32_t>(e.param);
        return S_OK;
    }
    HRESULT Initialise(IQServiceRegistry*, int32_t) override { return S_OK; }
    HRESULT Reserved5() override { return S_OK; }
    HRESULT Reserved6() override { return S_OK; }
    HRESULT Terminate(int32_t) override { return S_OK; }
    uint32_t seen = 0;
};

Guid NumberedId(uint32_t n)
{
    Guid g = Ids::IQRunner;
    g.bytes[12] = static_cast<uint8_t>(n >> 24);
    g.bytes[13] = static_cast<uint8_t>(n >> 16);
    g.bytes[14] = static_cast<uint8_t>(n >> 8);
    g.bytes[15] = static_cast<uint8_t>(n);
    return g;
}

void GetServiceAmongMany(benchmark::State& state)
{
    ServiceRegistry registry;
    std::vector<Plain> services(static_cast<size_t>(state.range(0)));
    for (size_t i = 0; i < services.size(); ++i)
        registry.RegisterService(NumberedId(static_cast<uint32_t>(i)), &services[i]);
    Guid wanted = NumberedId(static_cast<uint32_t>(services.size() / 2));
    for (auto _ : state) {
        IUnknown* out = nullptr;
        benchmark::DoNotOptimize(registry.GetService(wanted, &out));
        benchmark::DoNotOptimize(out);
    }
}
BENCHMARK(GetServiceAmongMany)->Arg(16)->Arg(256);

void BroadcastToComponents(benchmark::State& state)
{
    ServiceRegistry registry;
    std::vector<Plain> components(static_cast<size_t>(state.range(0)));
    for (auto& c : components)
        registry.AddComponent(&c);
    for (auto _ : state)
        registry.Broadcast(Event{Ids::EVENT_MEMORY_CHANGED, 1});
    benchmark::DoNotOptimize(components[0].seen);
}
BENCHMARK(BroadcastToComponents)->Arg(1)->Arg(8);

} // namespace
