// Reading the symbols of an executable with 100,000 of them, against the cross
// tool's nm -n on the same file, timed as a whole process in the same run. The
// goal is a ratio_to_nm of at most 1.0.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string>

#include "platform/objfile/ElfImage.h"

namespace
{

const std::string ManySymbols = std::string(TESSEL_FIRMWARE_DIR) + "/many_symbols.elf";

double Seconds(std::chrono::steady_clock::duration d)
{
    return std::chrono::duration<double>(d).count();
}

// The best of three runs, as the loop's figure is an average of warm runs.
double NmSeconds()
{
    const std::string command = "arm-none-eabi-nm -n " + ManySymbols + " > /dev/null";
    double best = 1e9;
    for (int run = 0; run < 3; ++run) {
        const auto start = std::chrono::steady_clock::now();
        if (std::system(command.c_str()) != 0)
            return 0;
        best = std::min(best, Seconds(std::chrono::steady_clock::now() - start));
    }
    return best;
}

void BM_ElfSymbols(benchmark::State& state)
{
    const double nm = NmSeconds();
    size_t symbols = 0;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        ElfImage image;
        if (Failed(image.Open(ManySymbols))) {
            state.SkipWithError("the generated executable did not read");
            return;
        }
        symbols = image.Symbols().size();
        benchmark::DoNotOptimize(symbols);
    }
    const double ours =
        Seconds(std::chrono::steady_clock::now() - start) / static_cast<double>(state.iterations());
    state.counters["symbols"] = static_cast<double>(symbols);
    state.counters["nm_seconds"] = nm;
    state.counters["ratio_to_nm"] = nm > 0 ? ours / nm : 0;
}
BENCHMARK(BM_ElfSymbols)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
