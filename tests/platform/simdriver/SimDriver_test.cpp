// The simulator's drivers in a workbench: what the target reports reaches the
// main thread through the message loop.
#include <gtest/gtest.h>

#include <sstream>
#include <thread>
#include <tuple>

#include "app/WorkspaceSession.h"
#include "boundary/Ids.h"
#include "component/frame/CDebuggerState.h"
#include "component/memory/CCacheMemory.h"
#include "platform/catalog/DriverFactory.h"
#include "platform/catalog/PlatformList.h"
#include "platform/simdriver/InstalledPlatforms.h"
#include "platform/simdriver/SimTargetDriver.h"
#include "support/RecordingComponent.h"
#include "support/SimHarness.h"
#include "support/TempFolder.h"
#include "workbench/Workbench.h"

namespace
{

// How long a run may take to report at most: the first code a new simulator
// runs is slow to translate, much more so under a sanitizer.
constexpr std::chrono::seconds kPatience{60};

struct SimDriver : ::testing::Test {
    std::ostringstream out;
    Workbench workbench{out, nullptr, false};
    // Each stop event, with the stop address the debugger state took from it
    // when a state handled the event first.
    std::vector<std::pair<uint32_t, uint32_t>> stops;
    const CDebuggerState* watched = nullptr;
    std::vector<std::string> log;
    RecordingComponent counter{"counter", log};
    PlatformTable table = InstalledPlatforms();
    PlatformList list{table};
    DriverFactory factory{table};
    SimTargetDriver* driver = nullptr;

    void SetUp() override
    {
        counter.onEvent = [this](const Event& e) {
            if (e.id == Ids::EVENT_TARGET_STOPPED)
                stops.push_back({static_cast<uint32_t>(e.param), watched ? watched->GetStopAddress() : 0});
        };
        workbench.Registry().AddComponent(&counter);
        MakeDriver();
    }
    void TearDown() override
    {
        ReleaseDriver();
        workbench.Registry().RemoveComponent(&counter);
    }
    void MakeDriver(const std::string& platform = "simulator")
    {
        IUnknown* object = nullptr;
        ASSERT_EQ(factory.CreateTargetDriver(platform, &workbench.Registry(), 0, 0, 0, &object), S_OK);
        driver = static_cast<SimTargetDriver*>(static_cast<IQTargetCore*>(object));
    }
    void ReleaseDriver()
    {
        if (driver != nullptr) {
            EXPECT_EQ(factory.ReleaseDriver(driver->Object(), -1), S_OK);
        }
        driver = nullptr;
    }
    bool Available(const Guid& id)
    {
        IUnknown* service = nullptr;
        return workbench.Registry().GetService(id, &service) == S_OK;
    }
};

// The device is the one stored with the session the debugger has open.
TEST_F(SimDriver, TheSessionsStoredDeviceIsMadeAtConnection)
{
    ReleaseDriver();
    TempFolder folder;
    folder.WriteFile("board.map", "flash 0x10000000 0x1000 rx\nram 0x30000000 0x1000 rwx\n");
    std::ostringstream err;
    std::string error;
    SessionOptions options;
    options.workspace = folder.Path().string();
    options.session = "other";
    options.device = "lm3s6965";
    ASSERT_TRUE(WorkspaceSession(workbench.Registry(), err).Open(options, "", error)) << error;
    options.session = "board";
    options.device = "board.map";
    WorkspaceSession workspace(workbench.Registry(), err);
    ASSERT_TRUE(workspace.Open(options, "", error)) << error;
    const ActiveSession key = workspace.Key();
    CDebuggerState state;
    ASSERT_EQ(state.Initialise(&workbench.Registry(), 1), S_OK);
    auto connect = [&](const char* session, const char* platform) {
        state.SetSessionKey(key.workspace, key.project, key.configuration, session);
        MakeDriver(platform);
        IUnknown* cpu = nullptr;
        std::string cpuName, cpuText;
        list.GetCpuDriverName(platform, cpuName);
        EXPECT_EQ(factory.CreateCpuDriver(cpuName, &workbench.Registry(), 0, 0, 0, &cpu), S_OK);
        QueryAs<IQCpuDetails>(cpu, Ids::CpuDetails)->GetDescription(cpuText);
        factory.ReleaseDriver(cpu, -1);
        const std::string made =
            driver->Target().Variant() + ", " + cpuText + ", " + driver->Target().Map().Summary(false);
        ReleaseDriver();
        return made;
    };
    // A map file keeps the platform's core; a named device brings its own.
    EXPECT_EQ(connect("board", "simulator-m4"),
              "cortex-m4, ARM\nCortex-M4, flash 0x10000000 4 KiB, ram 0x30000000 4 KiB");
    EXPECT_EQ(connect("other", "simulator-m4"),
              "cortex-m3, ARM\nCortex-M3, flash 0x00000000 256 KiB, sram 0x20000000 64 KiB");
    EXPECT_EQ(connect("nosuch", "simulator"),
              "cortex-m3, ARM\nCortex-M3, flash 0x08000000 1024 KiB, sram 0x20000000 128 KiB");

    // A file spoilt since it was stored: no target, and the reason told.
    folder.WriteFile("board.map", "flash 0x10000000 0x1000 rx\nrom 0x30000000 0x1000 rwx\n");
    state.SetSessionKey(key.workspace, key.project, key.configuration, "board");
    IUnknown* object = nullptr;
    EXPECT_EQ(factory.CreateTargetDriver("simulator", &workbench.Registry(), 0, 0, 0, &object), E_FAIL);
    EXPECT_EQ(out.str(), "Error: Device file board.map: line 2: unknown region kind 'rom'\n");
    state.Terminate(1);
}

TEST_F(SimDriver, OutputAndStopsReachTheMainThread)
{
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"hello", "Target exited with code 0", "hello\n"},
        {"fault", "Target stopped: Invalid memory read at 0x", ""},
    };
    for (const auto& [firmware, debug, target] : cases) {
        SCOPED_TRACE(firmware);
        workbench.Output().ClearTab("Debug");
        workbench.Output().ClearTab("Target");
        ASSERT_TRUE(SimHarness::Download(driver->Target(), firmware));
        ASSERT_TRUE(driver->Target().Go());
        workbench.Loop().RunUntil([&] { return !workbench.Output().Text("Debug").empty(); }, kPatience);
        EXPECT_NE(workbench.Output().Text("Debug").find(debug), std::string::npos);
        EXPECT_EQ(workbench.Output().Text("Target"), target);
        uint32_t pc = 0;
        ASSERT_EQ(driver->GetRegister(0, pc), S_OK);
        EXPECT_EQ(stops.back().first, pc) << "the stop event carries the stop address";
    }
}

TEST_F(SimDriver, ReportsQueuedBeforeTheLoopRunsKeepTheirOwnAddresses)
{
    CDebuggerState state;
    ASSERT_EQ(state.Initialise(&workbench.Registry(), 1), S_OK);
    workbench.Registry().RemoveComponent(&counter);
    workbench.Registry().AddComponent(&state);
    workbench.Registry().AddComponent(&counter);
    watched = &state;
    // A driver made while the session lives, as at a connection.
    ReleaseDriver();
    MakeDriver();

    ASSERT_TRUE(SimHarness::Download(driver->Target(), "count")); // reports the reset
    ASSERT_TRUE(driver->Target().Step());
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (workbench.Posts().PendingMessages() < 2 && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();
    ASSERT_EQ(workbench.Posts().PendingMessages(), 2u) << "both reports wait for the loop";
    workbench.Loop().RunUntilIdle();

    ASSERT_EQ(stops.size(), 2u);
    EXPECT_NE(stops[0].first, stops[1].first);
    for (const auto& [param, taken] : stops)
        EXPECT_EQ(taken, param) << "the state takes each stop's own address";
    workbench.Registry().RemoveComponent(&state);
    state.Terminate(1);
}

TEST_F(SimDriver, ServicesLiveAsLongAsTheTarget)
{
    const Guid offered[] = {Ids::IQPlatformRegisters, Ids::ForwardTarget,     Ids::IQPlatformMemory,
                            Ids::IQPlatformMemory2,   Ids::IQPlatformMemory3, Ids::IQPlatformMemory5};
    for (const Guid& id : offered)
        EXPECT_TRUE(Available(id)) << id.ToText();
    EXPECT_FALSE(Available(Ids::IQPlatformMemory4)) << "the simulator has no long operations to offer";
    EXPECT_FALSE(Available(Ids::IQPlatformFunctions));

    std::string description;
    driver->GetDescription(description);
    EXPECT_EQ(description.substr(0, 27), "Tessel simulator\nCortex-M3\n");

    // A stop still queued when the driver goes is dropped, not delivered.
    ASSERT_TRUE(SimHarness::Download(driver->Target(), "count"));
    ASSERT_TRUE(driver->Target().Go());
    ASSERT_TRUE(driver->Target().Halt());
    ASSERT_TRUE(driver->Target().WaitUntilHalted(std::chrono::seconds(5)));
    ReleaseDriver();
    workbench.Loop().RunUntilIdle();
    EXPECT_TRUE(stops.empty());
    for (const Guid& id : offered)
        EXPECT_FALSE(Available(id)) << id.ToText();
}

TEST_F(SimDriver, TargetMemoryIsAPlatformServiceTheCacheReadsThrough)
{
    IUnknown* service = nullptr;
    ASSERT_EQ(workbench.Registry().GetService(Ids::IQPlatformMemory2, &service), S_OK);
    auto* memory2 = static_cast<IQPlatformMemory2*>(service);
    const auto image = FirmwareProgram::Load("hello")->Image();
    const TargetAddress last(static_cast<uint32_t>(0x08000000 + image.size() - 1));
    ASSERT_EQ(memory2->Write(0x08000000, last, image.data()), S_OK);

    CCacheMemory cache(QueryAs<IQPlatformMemory>(service, Ids::IQPlatformMemory), memory2,
                       QueryAs<IQPlatformMemory3>(service, Ids::IQPlatformMemory3), VARIANT_TRUE);
    EXPECT_EQ(cache.PageSize(), 0x400u) << "the platform's own page size";
    const CMemoryArea flash{0x08000000, 0x080FFFFF};
    std::vector<uint8_t> back(image.size());
    ASSERT_EQ(cache.Read(0x08000000, last, back.data(), {&flash, 1}), S_OK);
    EXPECT_EQ(back, image);

    uint8_t byte = 0;
    EXPECT_EQ(memory2->Read(0x30000000, 0x30000000, &byte), SimPlatformMemory::kCannotRead)
        << "outside the map";

    // The peripheral window takes writes and reads back zero: a verified write sees it.
    auto* memory5 = QueryAs<IQPlatformMemory5>(service, Ids::IQPlatformMemory5);
    const uint8_t pattern[4] = {0x11, 0x22, 0x33, 0x44};
    VariantBool failed = VARIANT_FALSE;
    TargetAddress where = 0;
    int32_t written = 0, found = 0;
    ASSERT_EQ(memory5->WriteVerifiedReporting(0x40000000, 0x40000003, VARIANT_TRUE, pattern, failed, where,
                                              written, found),
              S_OK);
    EXPECT_EQ(std::tuple(failed, where.Value(), written, found),
              std::tuple(VARIANT_TRUE, 0x40000000u, 0x11, 0));
}

} // namespace
