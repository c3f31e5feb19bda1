#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "support/SimHarness.h"

namespace
{

std::unique_ptr<SimTarget> BareTarget(const char* description = nullptr)
{
    SimTarget::Config config;
    if (description)
        config.map = SimMemoryMap::Parse(description).map;
    return SimTarget::Create(std::move(config));
}

TEST(SimMemory, WrittenBytesReadBackInRamAndFlashAndZeroInPeripherals)
{
    auto target = BareTarget();
    ASSERT_TRUE(target);
    for (uint32_t address : {0x20000000u, 0x2001FFF0u, 0x08000000u, 0x080FFFFCu, 0x40000010u}) {
        SCOPED_TRACE(address);
        const std::array<uint8_t, 4> written{0xDE, 0xAD, 0xBE, 0xEF};
        ASSERT_TRUE(target->WriteMemory(address, written.size(), written.data()));
        std::array<uint8_t, 4> read{0xFF, 0xFF, 0xFF, 0xFF};
        ASSERT_TRUE(target->ReadMemory(address, read.size(), read.data()));
        EXPECT_EQ(read, (address >= 0x40000000u ? std::array<uint8_t, 4>{} : written));
    }
    EXPECT_TRUE(target->ReadMemory(0x30000000, 0, nullptr)) << "an empty access";
    EXPECT_FALSE(target->ReadMemory(0x20000000, 4, nullptr));
    EXPECT_FALSE(target->WriteMemory(0x20000000, 4, nullptr));
}

TEST(SimMemory, AccessAcrossAdjacentRegionsWorks)
{
    auto target = BareTarget("ram 0x1000 0x1000 rw\nflash 0x2000 0x1000 rx\n");
    ASSERT_TRUE(target);
    std::vector<uint8_t> data(16);
    for (size_t i = 0; i < data.size(); ++i)
        data[i] = static_cast<uint8_t>(i + 1);
    ASSERT_TRUE(target->WriteMemory(0x1FF8, data.size(), data.data()));
    std::vector<uint8_t> read(16);
    ASSERT_TRUE(target->ReadMemory(0x1FF8, read.size(), read.data()));
    EXPECT_EQ(read, data);
}

TEST(SimMemory, OutsideTheMapFailsAtTheFirstUnmappedByteAndWritesNothing)
{
    struct BadAccess {
        uint32_t address;
        size_t size;
        uint32_t failing;
        const char* cause;
    };
    auto target = BareTarget();
    for (const BadAccess& c :
         {BadAccess{0x30000000, 4, 0x30000000, "No memory at 0x30000000"},
          BadAccess{0x2001FFFE, 4, 0x20020000, "No memory at 0x20020000"},
          BadAccess{0x07FFFFFF, 2, 0x07FFFFFF, "No memory at 0x07FFFFFF"},
          BadAccess{0xFFFFFFFE, 4, 0xFFFFFFFE, "Range at 0xFFFFFFFE wraps beyond 0xFFFFFFFF"}}) {
        SCOPED_TRACE(c.cause);
        std::vector<uint8_t> buffer(c.size, 0xAA);
        SimResult read = target->ReadMemory(c.address, c.size, buffer.data());
        EXPECT_FALSE(read);
        EXPECT_EQ(read.address, c.failing);
        EXPECT_EQ(read.cause, c.cause);
        SimResult write = target->WriteMemory(c.address, c.size, buffer.data());
        EXPECT_FALSE(write);
        EXPECT_EQ(write.address, c.failing);
        // The mapped part was left alone.
        if (target->ReadMemory(c.address, 1, buffer.data())) {
            EXPECT_EQ(buffer[0], 0);
        }
    }
}

TEST(SimMemory, DownloadedCodeReplacesCodeThatAlreadyRan)
{
    SimHarness h;
    ASSERT_TRUE(h.Boot("undef")) << h.Error();
    auto first = h.Run();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->reason, StopReason::Fault);
    ASSERT_TRUE(SimHarness::Download(h.Target(), "hello"));
    ASSERT_TRUE(h.Next());
    auto second = h.Run();
    ASSERT_TRUE(second);
    EXPECT_EQ(second->reason, StopReason::Exit) << second->cause;
    EXPECT_EQ(h.Output(), "hello\n");
}

} // namespace
