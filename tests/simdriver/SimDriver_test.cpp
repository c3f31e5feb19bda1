// The simulator's drivers in a workbench: what the target reports reaches the
// main thread through the message loop.
#include <gtest/gtest.h>

#include <sstream>

#include "boundary/Ids.h"
#include "platform/catalog/DriverFactory.h"
#include "platform/catalog/PlatformList.h"
#include "platform/simdriver/InstalledPlatforms.h"
#include "platform/simdriver/SimTargetDriver.h"
#include "support/Firmware.h"
#include "workbench/Workbench.h"

namespace
{

struct StopCounter : IQComponent {
    HRESULT QueryInterface(const Guid&, void** out) override
    {
        *out = this;
        return S_OK;
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT OnEvent(const Event& e) override
    {
        if (e.id == Ids::EVENT_TARGET_STOPPED)
            stops.push_back(static_cast<uint32_t>(e.param));
        return S_OK;
    }
    HRESULT Initialise(IQServiceRegistry*, int32_t) override { return S_OK; }
    HRESULT Reserved5() override { return S_OK; }
    HRESULT Reserved6() override { return S_OK; }
    HRESULT Terminate(int32_t) override { return S_OK; }
    std::vector<uint32_t> stops;
};

struct SimDriver : ::testing::Test {
    std::ostringstream out;
    Workbench workbench{out, nullptr, false};
    StopCounter counter;
    PlatformTable table = InstalledPlatforms();
    PlatformList list{table};
    DriverFactory factory{table};

    void SetUp() override { workbench.Registry().AddComponent(&counter); }
    void TearDown() override { workbench.Registry().RemoveComponent(&counter); }

    SimTargetDriver* MakeTarget(const std::string& platform)
    {
        IUnknown* object = nullptr;
        if (factory.CreateTargetDriver(platform, &workbench.Registry(), 0, 0, 0, &object) != S_OK)
            return nullptr;
        return static_cast<SimTargetDriver*>(static_cast<IQTargetCore*>(object));
    }
    void Load(SimTargetDriver& driver, const std::string& firmware)
    {
        auto image = FirmwareImage(firmware);
        ASSERT_FALSE(image.empty()) << firmware;
        ASSERT_TRUE(driver.Target().WriteMemory(0x08000000, image.size(), image.data()));
        ASSERT_TRUE(driver.Target().Reset());
    }
};

TEST_F(SimDriver, CatalogueNamesTheSimulatorFirst)
{
    std::string name, cpu;
    ASSERT_EQ(list.GetPlatformName(0, name), S_OK);
    EXPECT_EQ(name, "simulator");
    ASSERT_EQ(list.GetCpuDriverName("simulator-m4", cpu), S_OK);
    EXPECT_EQ(cpu, "Cortex-M4");
    IUnknown* object = nullptr;
    ASSERT_EQ(factory.CreateCpuDriver(cpu, nullptr, 0, 0, 0, &object), S_OK);
    auto* details = QueryAs<IQCpuDetails>(object, Ids::CpuDetails);
    ASSERT_NE(details, nullptr);
    std::string text;
    details->GetDescription(text);
    EXPECT_EQ(text, "ARM\nCortex-M4");
}

TEST_F(SimDriver, SemihostingOutputAndExitReachTheMainThread)
{
    SimTargetDriver* driver = MakeTarget("simulator");
    ASSERT_NE(driver, nullptr);
    Load(*driver, "hello");
    ASSERT_TRUE(driver->Target().Go());
    workbench.Loop().RunUntil([&] { return !workbench.Output().Text("Debug").empty(); },
                              std::chrono::seconds(10));
    EXPECT_EQ(workbench.Output().Text("Target"), "hello\n");
    EXPECT_NE(workbench.Output().Text("Debug").find("Target exited with code 0"), std::string::npos);
    uint32_t pc = 0;
    ASSERT_EQ(driver->GetRegister(0, pc), S_OK);
    EXPECT_EQ(counter.stops.back(), pc) << "the stop event carries the stop address";
    EXPECT_EQ(factory.ReleaseDriver(driver->Object(), -1), S_OK);
}

TEST_F(SimDriver, FaultStopsTheTargetWithItsCause)
{
    SimTargetDriver* driver = MakeTarget("simulator");
    ASSERT_NE(driver, nullptr);
    Load(*driver, "fault");
    ASSERT_TRUE(driver->Target().Go());
    workbench.Loop().RunUntil([&] { return !workbench.Output().Text("Debug").empty(); },
                              std::chrono::seconds(10));
    EXPECT_NE(workbench.Output().Text("Debug").find("Target stopped: Invalid memory read at 0x"),
              std::string::npos)
        << "debug: [" << workbench.Output().Text("Debug") << "] target: ["
        << workbench.Output().Text("Target") << "]";
    std::string description;
    driver->GetDescription(description);
    EXPECT_EQ(description.substr(0, 27), "Tessel simulator\nCortex-M3\n");
}

TEST_F(SimDriver, RegistersAreAServiceWhileTheTargetLives)
{
    SimTargetDriver* driver = MakeTarget("simulator");
    ASSERT_NE(driver, nullptr);
    IUnknown* service = nullptr;
    EXPECT_EQ(workbench.Registry().GetService(Ids::IQPlatformRegisters, &service), S_OK);
    // A stop still queued when the driver goes is dropped, not delivered.
    Load(*driver, "count");
    ASSERT_TRUE(driver->Target().Go());
    ASSERT_TRUE(driver->Target().Halt());
    ASSERT_TRUE(driver->Target().WaitUntilHalted(std::chrono::seconds(5)));
    EXPECT_EQ(factory.ReleaseDriver(driver->Object(), -1), S_OK);
    workbench.Loop().RunUntilIdle();
    EXPECT_TRUE(Failed(workbench.Registry().GetService(Ids::IQPlatformRegisters, &service)));
}

TEST_F(SimDriver, AddressLimitsAndMemoryAreServicesWhileTheTargetLives)
{
    SimTargetDriver* driver = MakeTarget("simulator");
    ASSERT_NE(driver, nullptr);
    IUnknown* service = nullptr;
    ASSERT_EQ(workbench.Registry().GetService(Ids::ForwardTarget, &service), S_OK);
    uint32_t low = 0, limit = 0;
    ASSERT_EQ(static_cast<IQForwardTarget*>(service)->Forward(low, limit), S_OK);
    EXPECT_EQ(low, 0x08000000u) << "flash starts the map";
    EXPECT_EQ(limit, 0xE00FFFFFu) << "the system window ends it";
    const Guid memories[] = {Ids::IQPlatformMemory, Ids::IQPlatformMemory2, Ids::IQPlatformMemory3,
                             Ids::IQPlatformMemory5};
    for (const Guid& id : memories)
        EXPECT_EQ(workbench.Registry().GetService(id, &service), S_OK);
    EXPECT_TRUE(Failed(workbench.Registry().GetService(Ids::IQPlatformMemory4, &service)))
        << "the simulator has no long operations to offer";
    EXPECT_TRUE(Failed(workbench.Registry().GetService(Ids::IQPlatformFunctions, &service)));

    EXPECT_EQ(factory.ReleaseDriver(driver->Object(), -1), S_OK);
    EXPECT_TRUE(Failed(workbench.Registry().GetService(Ids::ForwardTarget, &service)));
    for (const Guid& id : memories)
        EXPECT_TRUE(Failed(workbench.Registry().GetService(id, &service)));
}

} // namespace

#include "component/memory/CCacheMemory.h"

namespace
{

TEST_F(SimDriver, TargetMemoryIsAPlatformServiceTheCacheReadsThrough)
{
    SimTargetDriver* driver = MakeTarget("simulator");
    ASSERT_NE(driver, nullptr);
    IUnknown* service = nullptr;
    ASSERT_EQ(workbench.Registry().GetService(Ids::IQPlatformMemory2, &service), S_OK);
    auto* memory2 = static_cast<IQPlatformMemory2*>(service);
    auto* memory = QueryAs<IQPlatformMemory>(service, Ids::IQPlatformMemory);
    auto* memory3 = QueryAs<IQPlatformMemory3>(service, Ids::IQPlatformMemory3);
    auto image = FirmwareImage("hello");
    ASSERT_EQ(memory2->Write(0x08000000, 0x08000000 + static_cast<uint32_t>(image.size()) - 1, image.data()),
              S_OK);

    CCacheMemory cache(memory, memory2, memory3, VARIANT_TRUE);
    EXPECT_EQ(cache.PageSize(), 0x400u) << "the platform's own page size";
    const CMemoryArea flash{0x08000000, 0x080FFFFF};
    std::vector<uint8_t> back(image.size());
    ASSERT_EQ(cache.Read(0x08000000, 0x08000000 + static_cast<uint32_t>(image.size()) - 1, back.data(),
                         {&flash, 1}),
              S_OK);
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
    EXPECT_TRUE(failed);
    EXPECT_EQ(where, 0x40000000u);
    EXPECT_EQ(written, 0x11);
    EXPECT_EQ(found, 0);
}

} // namespace
