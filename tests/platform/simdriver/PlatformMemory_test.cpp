// The simulator's whole-range memory operations, on a small map of their own:
// flash, two RAM regions that touch, a gap, and a peripheral window that
// reads as zero and drops writes.
#include <gtest/gtest.h>

#include <bit>
#include <numeric>
#include <tuple>

#include "boundary/Ids.h"
#include "platform/sim/SimTarget.h"
#include "platform/simdriver/SimPlatformMemory.h"
#include "support/SimHarness.h"

namespace
{

constexpr uint32_t kFlash = 0x08000000;
constexpr uint32_t kRam = 0x20000000;  // 64 KiB, then 64 KiB more at kRam2
constexpr uint32_t kRam2 = 0x20010000; // a match may run across the two
constexpr uint32_t kPeripheral = 0x40000000;

constexpr char kMap[] = R"(flash      0x08000000 0x10000 rx  flash
ram        0x20000000 0x10000 rwx sram
ram        0x20010000 0x10000 rwx sram2
peripheral 0x40000000 0x1000  rw  io
)";

struct PlatformMemory : ::testing::Test {
    std::unique_ptr<SimTarget> target = Make();
    SimPlatformMemory memory{*target};

    static std::unique_ptr<SimTarget> Make()
    {
        SimTarget::Config config;
        config.map = SimMemoryMap::Parse(kMap).map;
        return SimTarget::Create(std::move(config));
    }
    std::vector<uint8_t> Bytes(uint32_t at, size_t count)
    {
        std::vector<uint8_t> bytes(count);
        EXPECT_TRUE(target->ReadMemory(at, count, bytes.data()));
        return bytes;
    }
    void Put(uint32_t at, const std::vector<uint8_t>& bytes)
    {
        ASSERT_TRUE(target->WriteMemory(at, bytes.size(), bytes.data()));
    }
    std::string Text(HRESULT code)
    {
        std::string text;
        auto* reporter =
            QueryAs<IQErrorReporter>(static_cast<IQPlatformMemory*>(&memory), Ids::IQErrorReporter);
        if (reporter == nullptr || Failed(reporter->GetErrorText(code, text)))
            return "<no text>";
        return text;
    }
    // 0, 1, 2, ... wrapping at 256.
    static std::vector<uint8_t> Counting(size_t count)
    {
        std::vector<uint8_t> bytes(count);
        std::iota(bytes.begin(), bytes.end(), uint8_t{0});
        return bytes;
    }
};

TEST_F(PlatformMemory, AreasAreTheRegionsOfTheMap)
{
    uint32_t count = 0;
    ASSERT_EQ(memory.GetAreaCount(count), S_OK);
    EXPECT_EQ(count, 4u);
    TargetAddress start = 0, end = 0;
    uint32_t order = 0, info = 0, flags = 7;
    VariantBool sized = 1, a1 = 1, a2 = 1, a3 = 1;
    ASSERT_EQ(memory.GetArea(1, start, end, order, info, sized, a1, a2, a3), S_OK);
    EXPECT_EQ(std::pair(start.Value(), end.Value()), std::pair(kRam, kRam + 0xFFFFu));
    // The target is little-endian: 1 on a little-endian host, 2 elsewhere.
    EXPECT_EQ(order, std::endian::native == std::endian::little ? 1u : 2u);
    EXPECT_EQ(info, 1u) << "the region's kind";
    EXPECT_EQ(sized | a1 | a2 | a3, 0);
    ASSERT_EQ(memory.GetArea(3, start, end, order, info, flags), S_OK);
    EXPECT_EQ(end, kPeripheral + 0xFFFu);
    EXPECT_EQ(flags, 0u) << "no sized access";
    EXPECT_EQ(memory.GetArea(4, start, end, order, info, flags), E_INVALIDARG);

    Variant variant;
    ASSERT_EQ(memory.GetMemoryInfo(variant), S_OK);
    EXPECT_EQ(variant.Text(), "cortex-m3");
}

TEST_F(PlatformMemory, FillRepeatsThePatternAndRefusedWritesChangeNothingAndSayWhy)
{
    Put(kRam + 7, {0xEE});
    const uint8_t pattern[3] = {0x77, 2, 3};
    ASSERT_EQ(memory.Fill(kRam, kRam + 6, 3, pattern), S_OK);
    EXPECT_EQ(Bytes(kRam, 8), (std::vector<uint8_t>{0x77, 2, 3, 0x77, 2, 3, 0x77, 0xEE}));
    // Flash takes the debugger's writes, as a download does.
    ASSERT_EQ(memory.FillVerified(kFlash, kFlash + 3, VARIANT_TRUE, 2, pattern), S_OK);
    EXPECT_EQ(Bytes(kFlash, 4), (std::vector<uint8_t>{0x77, 2, 0x77, 2}));

    Put(kFlash + 0xFFFF, {0x11});
    // The range runs off the end of flash into the gap.
    EXPECT_EQ(memory.Fill(kFlash + 0xFFFF, kFlash + 0x10000, 1, pattern), SimPlatformMemory::kCannotWrite);
    EXPECT_EQ(Bytes(kFlash + 0xFFFF, 1)[0], 0x11);

    EXPECT_EQ(memory.Fill(kRam + 1, kRam, 1, pattern), SimPlatformMemory::kStartAboveEnd);
    EXPECT_EQ(Text(SimPlatformMemory::kStartAboveEnd),
              "The start address must be lower than the end address.");
    EXPECT_EQ(memory.Fill(kRam, kRam, 0, pattern), SimPlatformMemory::kInvalidParameter);
    EXPECT_EQ(Text(SimPlatformMemory::kCannotWrite), "Can not write memory")
        << "a code other than the last failure's has its plain text";
    EXPECT_EQ(Text(E_FAIL), "<no text>");

    EXPECT_EQ(memory.FillVerified(kPeripheral, kPeripheral + 3, VARIANT_TRUE, 1, pattern),
              SimPlatformMemory::kVerifyFailed);
}

// Copies larger than the pieces the platform moves memory in, overlapping either way.
TEST_F(PlatformMemory, CopyOfOverlappingRangesIsAsThroughABuffer)
{
    const auto original = Counting(0x18000);
    for (int64_t shift : {0x1001, -0x1001}) {
        Put(kRam + 0x2000, original);
        const uint32_t destination = kRam + 0x2000 + shift;
        uint8_t first = 1, second = 1;
        TargetAddress address = 1;
        ASSERT_EQ(
            memory.Copy(kRam + 0x2000, kRam + 0x19FFF, destination, VARIANT_TRUE, 4, first, second, address),
            S_OK);
        EXPECT_TRUE(Bytes(destination, original.size()) == original) << "shift " << shift;
        EXPECT_EQ(first | second | address.Value(), 0u);
    }
}

TEST_F(PlatformMemory, CopyFailuresReportWhere)
{
    Put(kRam, {1, 2, 3, 4});
    uint8_t first = 0, second = 0;
    TargetAddress address = 0;
    EXPECT_EQ(memory.Copy(kRam, kRam + 3, kPeripheral + 8, VARIANT_TRUE, 1, first, second, address),
              SimPlatformMemory::kVerifyFailed);
    EXPECT_EQ(std::tuple(first, second, address.Value()), std::tuple(1, 0, kPeripheral + 8));
    // Without verify the peripheral window swallows the bytes silently.
    EXPECT_EQ(memory.Copy(kRam, kRam + 3, kPeripheral + 8), S_OK);

    Put(kRam2 + 0xFFF0, std::vector<uint8_t>(16, 0x5A));
    EXPECT_EQ(memory.Copy(kRam, kRam + 0x1F, kRam2 + 0xFFF0), SimPlatformMemory::kCannotCopy);
    EXPECT_EQ(Text(SimPlatformMemory::kCannotCopy), "Can not copy memory. Address H'20020000 is not mapped");
    EXPECT_EQ(Bytes(kRam2 + 0xFFF0, 16), std::vector<uint8_t>(16, 0x5A)) << "nothing was copied";
    EXPECT_EQ(memory.Copy(kRam, kRam + 0x1F, 0xFFFFFFF0u), SimPlatformMemory::kInvalidAddress);
}

TEST_F(PlatformMemory, CompareAndVerifyGiveTheFirstDifference)
{
    const auto bytes = Counting(0x100);
    Put(kRam, bytes);
    Put(kRam2, bytes);
    uint8_t first = 0, second = 0;
    TargetAddress address = 0;
    EXPECT_EQ(memory.Compare(kRam, kRam + 0xFF, kRam2, 1, first, second, address), S_OK);
    Put(kRam2 + 0x42, {0xAB});
    Put(kRam2 + 0x80, {0xCD});
    EXPECT_EQ(memory.Compare(kRam, kRam + 0xFF, kRam2, 1, first, second, address),
              SimPlatformMemory::kCompareFailed);
    EXPECT_EQ(std::tuple(first, second, address.Value()), std::tuple(0x42, 0xAB, kRam + 0x42));
    EXPECT_EQ(memory.Compare(kRam, kRam + 0x41, kRam2), S_OK);
    EXPECT_EQ(memory.Compare(kRam, kRam + 0xFF, 0x30000000), SimPlatformMemory::kCannotRead);

    // Verify compares memory with a buffer.
    Put(kFlash, bytes);
    EXPECT_EQ(memory.Verify(kFlash, kFlash + 0x1F, bytes.data()), S_OK);
    auto changed = bytes;
    changed[0x11] = 0xFF;
    EXPECT_EQ(memory.Verify(kFlash, kFlash + 0x1F, changed.data()), SimPlatformMemory::kVerifyFailed);
    EXPECT_EQ(Text(SimPlatformMemory::kVerifyFailed),
              "Verify failed. H'08000011 holds H'11, H'FF was expected");
    EXPECT_EQ(memory.Verify(kFlash, kFlash + 0x1F, nullptr), E_POINTER);
}

TEST_F(PlatformMemory, FindTakesTheFirstWholeMatchUnderTheMask)
{
    // One occurrence straddles both the platform's 64 KiB pieces and the two RAM regions.
    Put(kRam2 - 2, {0x12, 0x34, 0x56, 0x78});
    Put(kRam2 + 0x100, {0x12, 0x99, 0x56, 0x78});
    const uint8_t pattern[4] = {0x12, 0x34, 0x56, 0x78};
    const uint8_t ignoreSecond[4] = {0xFF, 0x00, 0xFF, 0xFF};
    TargetAddress found = 0;
    ASSERT_EQ(memory.Find(kRam, kRam2 + 0xFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 4, pattern, nullptr, found), S_OK);
    EXPECT_EQ(found, kRam2 - 2);
    ASSERT_EQ(memory.FindEx(kRam2, kRam2 + 0xFFFF, 0, 0, 0, 4, pattern, ignoreSecond, found), S_OK);
    EXPECT_EQ(found, kRam2 + 0x100) << "at or after start";
    // The gap between flash and RAM is passed over.
    ASSERT_EQ(memory.Find(kFlash, kRam2 + 0xFFFF, 4, pattern, found), S_OK);
    EXPECT_EQ(found, kRam2 - 2);

    found = 7;
    EXPECT_EQ(memory.Find(kRam2 - 2, kRam2, 4, pattern, found), SimPlatformMemory::kFindFailed)
        << "the whole pattern must lie inside the range";
    EXPECT_EQ(found, 7u);
    EXPECT_EQ(memory.Find(0x30000000, 0x30001000, 4, pattern, found), SimPlatformMemory::kFindFailed);
}

TEST_F(PlatformMemory, TestPassesOnRamAndFlashAndFailsWhereBytesDoNotStay)
{
    Put(kRam, Counting(0x100));
    ASSERT_EQ(memory.Test(kRam, kRam + 0xFF), S_OK);
    EXPECT_NE(Bytes(kRam, 0x100), Counting(0x100)) << "the test restores nothing";
    EXPECT_EQ(memory.Test(kFlash, kFlash + 0xFFFF), S_OK);

    EXPECT_EQ(memory.Test(kPeripheral + 0x10, kPeripheral + 0x1F), SimPlatformMemory::kVerifyFailed);

    Put(kRam2 + 0xFFFF, {0x3C});
    EXPECT_EQ(memory.Test(kRam2 + 0xFFFF, kRam2 + 0x10000), SimPlatformMemory::kCannotWrite);
    EXPECT_EQ(Bytes(kRam2 + 0xFFFF, 1)[0], 0x3C);
}

TEST_F(PlatformMemory, NothingIsReadWhileTheTargetRuns)
{
    ASSERT_TRUE(SimHarness::Download(*target, "count"));
    ASSERT_TRUE(target->Go());
    uint8_t byte = 0;
    EXPECT_EQ(memory.Read(kRam, kRam, &byte), SimPlatformMemory::kCannotRead);
    EXPECT_EQ(Text(SimPlatformMemory::kCannotRead), "Can not read memory. The target is running");
    ASSERT_TRUE(target->Halt());
    ASSERT_TRUE(target->WaitUntilHalted(std::chrono::seconds(5)));
}

} // namespace
