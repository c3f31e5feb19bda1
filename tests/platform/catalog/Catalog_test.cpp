// The catalogue of installed platforms and the factory of their drivers.
#include <gtest/gtest.h>

#include <tuple>

#include "boundary/Ids.h"
#include "platform/catalog/DriverFactory.h"
#include "platform/catalog/PlatformList.h"

namespace
{

// A driver that counts how many of its kind are alive.
struct CountedDriver : PlatformDriver, IUnknown {
    explicit CountedDriver(int& alive) : alive(alive) { ++alive; }
    ~CountedDriver() override { --alive; }
    IUnknown* Object() override { return this; }
    HRESULT QueryInterface(const Guid&, void** out) override { return *out = this, S_OK; }
    TESSEL_NOT_REFCOUNTED
    int& alive;
};

struct Catalog : ::testing::Test {
    int cpus = 0, targets = 0, readers = 0;
    PlatformTable table;
    Catalog()
    {
        auto cpu = [this](IQServiceRegistry*) { return std::make_unique<CountedDriver>(cpus); };
        auto target = [this](IQServiceRegistry*) { return std::make_unique<CountedDriver>(targets); };
        auto reader = [this](IQServiceRegistry*) { return std::make_unique<CountedDriver>(readers); };
        table.platforms = {{"simulator", "Cortex-M3", false, false, cpu, target},
                           {"legacy", "Legacy-M3", true, false, cpu, target},
                           {"probe", "Probe-CPU", false, true, cpu, nullptr}};
        table.readers = {{"ELF/DWARF", "", reader}, {"Legacy object", "legacy", reader, false, true}};
    }
};

TEST_F(Catalog, ListAnswersFromItsTable)
{
    PlatformList list(table);
    std::string name;
    ASSERT_EQ(list.GetPlatformName(0, name), S_OK);
    EXPECT_EQ(name, "simulator");
    EXPECT_EQ(list.GetPlatformName(3, name), E_FAIL);
    ASSERT_EQ(list.GetCpuDriverName("SIMULATOR", name), S_OK) << "names typed by users ignore case";
    EXPECT_EQ(name, "Cortex-M3");
    EXPECT_EQ(list.GetCpuDriverName("nosuch", name), E_FAIL);
    uint32_t value = 9;
    EXPECT_EQ(list.GetPlatformProperty("probe", 1, value), S_OK);
    EXPECT_EQ(value, 1u);
    EXPECT_EQ(list.GetPlatformProperty("simulator", 1, value), S_OK);
    EXPECT_EQ(value, 0u);
    EXPECT_EQ(list.IsFunctionPlatform("legacy"), S_OK);
    EXPECT_EQ(list.IsFunctionPlatform("simulator"), S_FALSE);
    EXPECT_EQ(list.IsFunctionPlatform("nosuch"), S_FALSE);
    int32_t index = -1;
    ASSERT_EQ(list.FindReader("elf/dwarf", index), S_OK);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(list.GetReaderPlatform(0, name), S_FALSE) << "a reader for every platform";
    EXPECT_EQ(list.GetReaderPlatform(1, name), S_OK);
    EXPECT_EQ(name, "legacy");
    VariantBool flag = VARIANT_FALSE;
    for (auto [reader, attribute, expected] : {std::tuple{0, READER_SAVES_MEMORY, VARIANT_TRUE},
                                               {0, READER_VERIFIES, VARIANT_TRUE},
                                               {1, READER_SAVES_MEMORY, VARIANT_FALSE},
                                               {1, READER_VERIFIES, VARIANT_TRUE}}) {
        EXPECT_EQ(list.GetReaderAttribute(reader, attribute, flag), S_OK);
        EXPECT_EQ(flag, expected) << reader << " " << attribute;
    }
    EXPECT_EQ(list.GetReaderAttribute(1, 4, flag), E_INVALIDARG);
    EXPECT_EQ(list.GetReaderAttribute(2, READER_VERIFIES, flag), E_FAIL);
}

TEST_F(Catalog, FactoryOwnsWhatItMadeUntilReleasedAndRefusesWhatIsNotInstalled)
{
    {
        DriverFactory factory(table);
        IUnknown* cpu = nullptr;
        IUnknown* target = nullptr;
        EXPECT_EQ(factory.CheckCpuDriver("Cortex-M3", 0, 0), S_OK);
        ASSERT_EQ(factory.CreateCpuDriver("Cortex-M3", nullptr, 0, 0, 0, &cpu), S_OK);
        ASSERT_EQ(factory.CreateTargetDriver("simulator", nullptr, 0, 0, 0, &target), S_OK);
        EXPECT_EQ(cpus + targets, 2);
        EXPECT_EQ(factory.ReleaseDriver(target, -1), S_OK);
        EXPECT_EQ(targets, 0);
        EXPECT_EQ(factory.ReleaseDriver(target, -1), E_FAIL) << "released twice";
        EXPECT_EQ(factory.ReleaseDriver(nullptr, -1), E_FAIL);
        EXPECT_EQ(cpus, 1);

        // What is not installed is refused with a null object.
        IUnknown* out = reinterpret_cast<IUnknown*>(0x1);
        EXPECT_EQ(factory.CheckTargetDriver("probe", 0, 0), E_FAIL) << "a platform without a target driver";
        EXPECT_EQ(factory.CreateTargetDriver("probe", nullptr, 0, 0, 0, &out), E_FAIL);
        EXPECT_EQ(out, nullptr);
        EXPECT_EQ(factory.CreateCpuDriver("Cortex-M99", nullptr, 0, 0, 0, &out), E_FAIL);
        EXPECT_EQ(factory.CheckCpuDriverFor("Cortex-M3", 0, 0, "legacy"), E_FAIL)
            << "not that platform's CPU";
        EXPECT_EQ(factory.CheckCpuDriverFor("Legacy-M3", 0, 0, "legacy"), S_OK);
        EXPECT_EQ(factory.CheckReaderFor("Legacy object", 0, 0, "simulator"), E_FAIL);
        ASSERT_EQ(factory.CreateReaderFor("ELF/DWARF", nullptr, 0, -1, 0, 0, "legacy", &out), S_OK);
        EXPECT_EQ(readers, 1);
        EXPECT_EQ(factory.Alive(), 2u) << "the CPU driver and the reader";
    }
    EXPECT_EQ(cpus + readers, 0) << "the factory's end takes its drivers along";
}

} // namespace
