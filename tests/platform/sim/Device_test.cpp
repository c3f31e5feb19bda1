#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <string>
#include <tuple>

#include "platform/sim/SimDevice.h"
#include "support/TempFolder.h"

namespace
{

std::unique_ptr<SimTarget> DeviceTarget(const std::string& choice)
{
    std::string error;
    auto config = SimDevice::Configure(choice, {}, "cortex-m4", error);
    EXPECT_TRUE(config) << error;
    return config ? SimTarget::Create(std::move(*config), &error) : nullptr;
}

TEST(SimDevices, ReadsAndWritesLandWhereTheDevicesMapSays)
{
    for (const SimDevice& device : SimDevice::All()) {
        SCOPED_TRACE(device.name);
        auto target = DeviceTarget(std::string(device.name));
        ASSERT_TRUE(target);
        EXPECT_EQ(target->Variant(), device.variant);
        for (const SimRegion& region : target->Map().Regions()) {
            for (const uint64_t at : {uint64_t{region.base}, region.End() - 4}) {
                const uint32_t written = 0xC0DE0000u | static_cast<uint32_t>(at & 0xFFFF);
                uint32_t read = 0xFFFFFFFF;
                ASSERT_TRUE(target->WriteMemory(static_cast<uint32_t>(at), 4, &written));
                ASSERT_TRUE(target->ReadMemory(static_cast<uint32_t>(at), 4, &read));
                EXPECT_EQ(read, region.kind == RegionKind::Peripheral ? 0u : written) << std::hex << at;
            }
            const auto end = static_cast<uint32_t>(region.End());
            uint32_t word = 0;
            const bool gapAfter = region.End() < (uint64_t{1} << 32) && !target->Map().Find(end);
            EXPECT_TRUE(!gapAfter || !target->ReadMemory(end - 2, 4, &word)) << "nothing past the end";
        }
        EXPECT_TRUE(target->ReadMemory(0x30000000, 0, nullptr)) << "an empty access";
        EXPECT_FALSE(target->ReadMemory(0x20000000, 4, nullptr));
        EXPECT_FALSE(target->WriteMemory(0x20000000, 4, nullptr));
    }
}

// Firmware linked for the board: vectors at 0, the stack at the top of its
// 64 KiB of SRAM, code that pushes r0 and stops at a breakpoint instruction.
TEST(SimDevices, Lm3s6965RunsFirmwareLinkedForItsBoard)
{
    const std::array<uint16_t, 6> image{0x0000, 0x2001, 0x0009, 0x0000, 0xB401, 0xBE00};
    EXPECT_FALSE(DeviceTarget("cortex-m3")->WriteMemory(0, sizeof image, image.data())) << "no flash at 0";
    auto target = DeviceTarget("LM3S6965");
    ASSERT_TRUE(target);
    ASSERT_TRUE(target->WriteMemory(0, sizeof image, image.data()));
    ASSERT_TRUE(target->Reset());
    ASSERT_TRUE(target->WriteRegister(kRegR0, 0x600DF00D));
    ASSERT_TRUE(target->Go());
    ASSERT_TRUE(target->WaitUntilHalted(std::chrono::seconds(20)));
    uint32_t pushed = 0;
    target->ReadMemory(0x2000FFFC, 4, &pushed);
    EXPECT_EQ(std::tuple(target->ReadRegister(kRegPc).value, target->ReadRegister(kRegSp).value, pushed),
              std::tuple(0xAu, 0x2000FFFCu, 0x600DF00Du));
}

// A choice gives a core and a map ("core: regions"), or says what is wrong.
TEST(SimDevices, AChoiceIsANameOrAMapFileFromTheFolder)
{
    TempFolder folder;
    folder.WriteFile("board.map",
                     "# two regions\nflash 0x10000000 0x1000 rx\nram 0x30000000 0x2000 rwx sram\n");
    folder.WriteFile("bad.map", "flash 0 0x1000 rx\n\nrom 0x20000000 0x1000 rw\n");
    folder.WriteFile("empty.map", "");
    folder.WriteFile("big.map", std::string(64 * 1024 + 1, '#'));
    std::filesystem::create_directory(folder / "maps");
    const std::string board = "cortex-m4: flash 0x10000000 4 KiB, sram 0x30000000 8 KiB";
    const std::pair<std::string, std::string> cases[] = {
        {"", "cortex-m4: its own map"},
        {"lm3s6965", "cortex-m3: flash 0x00000000 256 KiB, sram 0x20000000 64 KiB"},
        {"board.map", board},
        {(folder / "board.map").string(), board},
        {"bad.map", "Device file bad.map: line 3: unknown region kind 'rom'"},
        {"empty.map", "Device file empty.map: no regions in the description"},
        {"big.map", "Device file big.map is larger than 64 KiB"},
        {"/dev/zero", "Cannot read the device file /dev/zero"},
        {"maps", "Cannot read the device file maps"},
        {"lm3s", "No device or device file named lm3s (devices: cortex-m3, cortex-m4, lm3s6965, lm3s811)"},
    };
    for (const auto& [choice, outcome] : cases) {
        std::string error;
        const auto config = SimDevice::Configure(choice, folder.Path().string(), "cortex-m4", error);
        const std::string map = config && config->map ? config->map->Summary(false) : "its own map";
        EXPECT_EQ(config ? config->variant + ": " + map : error, outcome);
    }
}

} // namespace
