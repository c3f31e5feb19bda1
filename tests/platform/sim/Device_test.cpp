#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <string>
#include <tuple>

#include "platform/sim/SimDevice.h"
#include "support/TempFolder.h"

namespace
{

std::unique_ptr<SimTarget> DeviceTarget(const std::string& choice, const std::string& folder = {})
{
    std::string error;
    auto config = SimDevice::Configure(choice, folder, "cortex-m4", error);
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
            const bool kept = region.kind != RegionKind::Peripheral;
            for (const uint64_t at : {uint64_t{region.base}, region.End() - 4}) {
                const uint32_t written = 0xC0DE0000u | static_cast<uint32_t>(at & 0xFFFF);
                uint32_t read = 0xFFFFFFFF;
                ASSERT_TRUE(target->WriteMemory(static_cast<uint32_t>(at), 4, &written));
                ASSERT_TRUE(target->ReadMemory(static_cast<uint32_t>(at), 4, &read));
                EXPECT_EQ(read, kept ? written : 0u) << std::hex << at;
            }
            if (region.End() < (uint64_t{1} << 32) &&
                !target->Map().Find(static_cast<uint32_t>(region.End()))) {
                uint32_t word = 0;
                EXPECT_FALSE(target->ReadMemory(static_cast<uint32_t>(region.End()) - 2, 4, &word));
            }
        }
    }
}

// Firmware linked for the board: vectors at 0, the stack at the top of its
// 64 KiB of SRAM, code that pushes r0 and stops at a breakpoint instruction.
TEST(SimDevices, Lm3s6965RunsFirmwareLinkedForItsBoard)
{
    const std::array<uint16_t, 6> image{0x0000, 0x2001, 0x0009, 0x0000, 0xB401, 0xBE00};
    for (const auto& [device, runs] :
         {std::pair("lm3s6965", true), std::pair("LM3S6965", true), std::pair("cortex-m3", false)}) {
        SCOPED_TRACE(device);
        auto target = DeviceTarget(device);
        ASSERT_TRUE(target);
        const bool loaded = target->WriteMemory(0, sizeof image, image.data()).ok;
        ASSERT_EQ(loaded, runs);
        if (!runs)
            continue;
        ASSERT_TRUE(target->Reset());
        ASSERT_TRUE(target->WriteRegister(kRegR0, 0x600DF00D));
        ASSERT_TRUE(target->Go());
        ASSERT_TRUE(target->WaitUntilHalted(std::chrono::seconds(20)));
        uint32_t pushed = 0;
        target->ReadMemory(0x2000FFFC, 4, &pushed);
        EXPECT_EQ(std::tuple(target->ReadRegister(kRegPc).value, target->ReadRegister(kRegSp).value, pushed),
                  std::tuple(0xAu, 0x2000FFFCu, 0x600DF00Du));
    }
}

TEST(SimDevices, AMapFileKeepsThePlatformsCoreAndIsFoundFromTheFolder)
{
    TempFolder folder;
    folder.WriteFile("board.map",
                     "# two regions\nflash 0x10000000 0x1000 rx\nram 0x30000000 0x2000 rwx sram\n");
    for (const std::string& choice : {std::string("board.map"), (folder / "board.map").string()}) {
        auto target = DeviceTarget(choice, folder.Path().string());
        ASSERT_TRUE(target);
        EXPECT_EQ(target->Variant(), "cortex-m4");
        EXPECT_EQ(target->Map().Summary(), "flash 0x10000000 4 KiB, sram 0x30000000 8 KiB");
    }
    auto platformsOwn = DeviceTarget("");
    ASSERT_TRUE(platformsOwn);
    EXPECT_EQ(platformsOwn->Map().FirstOf(RegionKind::Ram)->size, 0x30000u) << "the Cortex-M4's 192 KiB";
}

TEST(SimDevices, ABadChoiceNamesTheFileAndWhatIsWrong)
{
    TempFolder folder;
    folder.WriteFile("bad.map", "flash 0 0x1000 rx\n\nrom 0x20000000 0x1000 rw\n");
    folder.WriteFile("empty.map", "");
    folder.WriteFile("big.map", std::string(64 * 1024 + 1, '#'));
    std::filesystem::create_directory(folder / "maps");
    const std::pair<const char*, const char*> cases[] = {
        {"bad.map", "Device file bad.map: line 3: unknown region kind 'rom'"},
        {"empty.map", "Device file empty.map: no regions in the description"},
        {"big.map", "Device file big.map is larger than 64 KiB"},
        {"/dev/zero", "Device file /dev/zero is larger than 64 KiB"},
        {"maps", "Cannot read the device file maps"},
        {"lm3s", "No device or device file named lm3s (devices: cortex-m3, cortex-m4, lm3s6965, lm3s811)"},
    };
    for (const auto& [choice, message] : cases) {
        std::string error;
        EXPECT_FALSE(SimDevice::Configure(choice, folder.Path().string(), "cortex-m3", error));
        EXPECT_EQ(error, message);
    }
}

} // namespace
