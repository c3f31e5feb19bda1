// Instructions per second of the simulated target running the compute-bound test
// program, with no breakpoint and with eight breakpoints away from its path. The
// two figures should match: a breakpoint hooks only its own address.
#include <benchmark/benchmark.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <fstream>
#include <iterator>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/sim/SimTarget.h"

namespace
{

// Hands stop reports from the simulator thread to the benchmark thread.
class Stops
{
public:
    SimTarget::StopCallback Callback()
    {
        return [this](const StopInfo& info) {
            {
                std::lock_guard<std::mutex> lock(mutex_);
                stops_.push_back(info);
            }
            changed_.notify_all();
        };
    }

    std::optional<StopInfo> Next()
    {
        std::unique_lock<std::mutex> lock(mutex_);
        if (!changed_.wait_for(lock, std::chrono::seconds(60), [this] { return !stops_.empty(); }))
            return std::nullopt;
        StopInfo info = stops_.front();
        stops_.pop_front();
        return info;
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<StopInfo> stops_;
};

constexpr uint32_t kFlash = 0x08000000;

void RunLoop(benchmark::State& state, int breakpoints)
{
#ifndef TESSEL_FIRMWARE_DIR
    state.SkipWithError("the test firmware is built with the tests; configure with BUILD_TESTING on");
    (void)breakpoints;
#else
    std::ifstream file(TESSEL_FIRMWARE_DIR "/loop.bin", std::ios::binary);
    const std::vector<uint8_t> image(std::istreambuf_iterator<char>(file), {});
    Stops stops;
    SimTarget::Config config;
    config.onStop = stops.Callback();
    auto target = SimTarget::Create(std::move(config));
    if (image.empty() || !target || !target->WriteMemory(kFlash, image.size(), image.data())) {
        state.SkipWithError("cannot load loop.bin");
        return;
    }
    const auto end = static_cast<uint32_t>(kFlash + image.size());
    for (int i = 0; i < breakpoints; ++i)
        target->AddBreakpoint(end + 0x100 + 0x40 * static_cast<uint32_t>(i));

    uint64_t instructions = 0;
    for (auto _ : state) {
        if (!target->Reset() || !stops.Next()) {
            state.SkipWithError("reset failed");
            return;
        }
        const uint64_t before = target->InstructionCount();
        target->Go();
        auto stop = stops.Next();
        if (!stop || stop->reason != StopReason::Exit) {
            state.SkipWithError("the program did not exit");
            return;
        }
        instructions += target->InstructionCount() - before;
    }
    state.counters["instructions"] =
        benchmark::Counter(static_cast<double>(instructions), benchmark::Counter::kIsRate);
#endif
}

// The work runs on the simulator thread, so only real time means anything here.
BENCHMARK_CAPTURE(RunLoop, no_breakpoints, 0)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(RunLoop, eight_breakpoints_elsewhere, 8)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
