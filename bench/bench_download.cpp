// A download of a 1 MiB executable into the simulator: the ELF reader as the
// platform hands it out, writing through the simulator's memory service, as a
// program's load does. The goal is at least 100 MB/s (the counter "MB", per second).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <numeric>
#include <vector>

#include "boundary/Ids.h"
#include "platform/catalog/DriverFactory.h"
#include "platform/sim/SimTarget.h"
#include "platform/simdriver/InstalledPlatforms.h"
#include "platform/simdriver/SimPlatformMemory.h"
#include "support/RecordingProgram.h"
#include "support/RecordingTask.h"
#include "workbench/ServiceRegistry.h"

namespace
{

constexpr uint32_t kFlash = 0x08000000;
constexpr uint32_t kSize = 1u << 20;
constexpr char kMap[] = "flash 0x08000000 0x200000 rx flash\nram 0x20000000 0x10000 rwx sram\n";

// The simulator's memory as a platform offers it, and a reader for "elf".
struct Rig {
    std::unique_ptr<SimTarget> target = Make();
    SimPlatformMemory memory{*target};
    ServiceRegistry registry;
    PlatformTable table = InstalledPlatforms();
    DriverFactory factory{table};
    IQObjectReader2* reader = nullptr;

    static std::unique_ptr<SimTarget> Make()
    {
        SimTarget::Config config;
        config.map = SimMemoryMap::Parse(kMap).map;
        return SimTarget::Create(std::move(config));
    }
    Rig()
    {
        registry.RegisterService(Ids::IQPlatformMemory, static_cast<IQPlatformMemory*>(&memory));
        registry.RegisterService(Ids::IQPlatformMemory2, static_cast<IQPlatformMemory2*>(&memory));
        registry.RegisterService(Ids::IQPlatformMemory3, static_cast<IQPlatformMemory3*>(&memory));
        registry.RegisterService(Ids::IQPlatformMemory5, static_cast<IQPlatformMemory5*>(&memory));
        IUnknown* object = nullptr;
        factory.CreateReader("elf", &registry, 0, -1, 0, 0, &object);
        reader = QueryAs<IQObjectReader2>(object, Ids::IQObjectReader2);
    }
    IQModuleLoader* Module(IQProgram& program)
    {
        IUnknown* handle = nullptr;
        if (reader == nullptr || reader->CreateModule(&handle, &program) != S_OK)
            return nullptr;
        return QueryAs<IQModuleLoader>(handle, Ids::IQModuleLoader);
    }
};

void BM_DownloadElf(benchmark::State& state)
{
    Rig rig;
    std::vector<uint8_t> image(kSize);
    std::iota(image.begin(), image.end(), uint8_t{7});
    rig.target->WriteMemory(kFlash, image.size(), image.data());
    const std::string file = "/tmp/tessel-bench-download.elf";
    ProgramRecord program;
    program.path = file;
    program.accessSize = 4;
    RecordingTask saving;
    saving.start = kFlash;
    saving.end = kFlash + kSize - 1;
    IQModuleLoader* writer = rig.Module(program);
    if (writer == nullptr || writer->Save(&saving.save, 3) != S_OK || saving.status != TASK_DONE) {
        state.SkipWithError("the 1 MiB executable could not be written");
        return;
    }
    for (auto _ : state) {
        RecordingTask task;
        IQModuleLoader* loader = rig.Module(program);
        loader->Load(&task, 2);
        if (task.status != TASK_DONE) {
            state.SkipWithError("the download failed");
            return;
        }
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kSize);
    state.counters["MB"] =
        benchmark::Counter(static_cast<double>(kSize) / 1e6, benchmark::Counter::kIsIterationInvariantRate);
    std::remove(file.c_str());
}
BENCHMARK(BM_DownloadElf)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
