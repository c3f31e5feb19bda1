#include <gtest/gtest.h>

#include "support/MemoryRig.h"

namespace
{

// Two adjacent areas, so that a write across 0x1100 is two chunks.
const std::vector<FakeArea> kTwoAreas{{0x1000, 0x10FF}, {0x1100, 0x11FF}};

// A gap inside the range is skipped; one at its end is reported, after what
// could be written was.
TEST(MemoryWrite, GapsAreSkippedButAGapAtTheEndIsReported)
{
    MemoryRig rig({{0x1000, 0x10FF}, {0x1108, 0x11FF}});
    const Bytes data(32, 0x5A);
    EXPECT_EQ(rig.manager.WriteMemory(0x10F8, 0x1117, 1, data.data()), S_OK);
    EXPECT_EQ(rig.manager.WriteMemory(0x11F0, 0x120F, 1, data.data()), CVELMemoryManager::kWriteOutsideMap);
    EXPECT_EQ(rig.platform.Bytes(0x11F0, 16), Bytes(16, 0x5A));
    EXPECT_EQ(rig.platform.log,
              (Log{"Write2 0x10F8..0x10FF", "Write2 0x1108..0x1117", "Write2 0x11F0..0x11FF"}));
}

TEST(MemoryWrite, ModesFallBackToWhatThePlatformOffers)
{
    struct Case {
        std::set<int> generations;
        const char* refuses; // an operation answering "not implemented"
        int mode;
        Log expected;
    };
    const Case cases[] = {
        {{1, 2, 3, 4, 5}, "", 2, {"WriteReporting5 0x10F0..0x10FF", "WriteReporting5 0x1100..0x110F"}},
        {{1, 2, 3}, "", 2, {"WriteVerified3 0x10F0..0x10FF", "WriteVerified3 0x1100..0x110F"}},
        {{1, 2}, "", 1, {"Write2 0x10F0..0x10FF", "Write2 0x1100..0x110F"}},
        {{1, 2, 3},
         "WriteVerified3",
         1,
         {"WriteVerified3 0x10F0..0x10FF", "Write2 0x10F0..0x10FF", "Write2 0x1100..0x110F"}},
        {{1, 2, 3, 5},
         "WriteReporting5",
         2,
         {"WriteReporting5 0x10F0..0x10FF", "WriteVerified3 0x10F0..0x10FF",
          "WriteVerified3 0x1100..0x110F"}},
        {{1, 2, 3, 5}, "", 0, {"Write2 0x10F0..0x10FF", "Write2 0x1100..0x110F"}},
    };
    for (const auto& c : cases) {
        MemoryRig rig(kTwoAreas, c.generations);
        if (*c.refuses != '\0')
            rig.platform.answers[c.refuses] = E_NOTIMPL;
        const Bytes data(32, 0x5A);
        const HRESULT hr = rig.manager.WriteMemoryEx(0x10F0, 0x110F, VARIANT_TRUE, 1, data.data(), nullptr,
                                                     nullptr, nullptr, nullptr, c.mode);
        EXPECT_EQ(hr, S_OK);
        EXPECT_EQ(rig.platform.log, c.expected) << "mode " << c.mode << " refusing '" << c.refuses << "'";
    }
}

TEST(MemoryWrite, SizedAreasAreWrittenWithTheirSize)
{
    MemoryRig rig({{0x3000, 0x3FFF, 1, true}}, {1, 2, 3});
    const Bytes data(8, 0x5A);
    ASSERT_EQ(rig.manager.WriteMemory(0x3000, 0x3007, 4, data.data()), S_OK);
    ASSERT_EQ(rig.manager.WriteMemoryVerified(0x3000, 0x3007, VARIANT_TRUE, 2, data.data()), S_OK);
    EXPECT_EQ(rig.platform.log,
              (Log{"WriteSized2 0x3000..0x3007 /4", "WriteSizedVerified3 0x3000..0x3007 /2"}));
}

TEST(MemoryWrite, AReportedDifferenceComesBackWithItsPlace)
{
    MemoryRig rig(kTwoAreas);
    rig.platform.verifyFailsAt = 0x1104;
    const Bytes data(32, 0x5A);
    VariantBool failed = VARIANT_FALSE;
    TargetAddress address = 0;
    int32_t written = -1, found = -1;
    EXPECT_EQ(rig.manager.WriteMemoryReporting(0x10F0, 0x110F, VARIANT_TRUE, 1, data.data(), failed, address,
                                               written, found),
              FakePlatformMemory::kVerifyFailed);
    EXPECT_EQ(std::make_tuple(failed, address.Value(), written, found),
              std::make_tuple(VariantBool{VARIANT_TRUE}, uint32_t{0x1104}, 0x5A, 0));
}

TEST(MemoryWrite, WritesCopiesAndTestsEmptyTheCaches)
{
    MemoryRig rig({{0x1000, 0x1FFF}});
    const Bytes data{1, 2, 3, 4};
    rig.Read(0x1000, 4);
    ASSERT_EQ(rig.manager.WriteMemory(0x1000, 0x1003, 1, data.data()), S_OK);
    EXPECT_EQ(rig.Read(0x1000, 4), data);

    uint8_t first = 0, second = 0;
    TargetAddress address = 0;
    ASSERT_EQ(rig.manager.CopyMemory(0x1000, 0x1003, 0x1800, VARIANT_FALSE, 1, first, second, address), S_OK);
    EXPECT_EQ(rig.Read(0x1800, 4), data);
    ASSERT_EQ(rig.manager.CopyMemorySimple(0x1000, 0x1003, 0x1900), S_OK);
    EXPECT_EQ(rig.Read(0x1900, 4), data);
    ASSERT_EQ(rig.manager.TestMemory(0x1000, 0x1003), S_OK);
    rig.Read(0x1900, 4);
    EXPECT_EQ(rig.platform.log,
              (Log{"Read2 0x1000..0x1FFF", "Write2 0x1000..0x1003", "Read2 0x1000..0x1FFF",
                   "Copy2 0x1000..0x1003", "Read2 0x1000..0x1FFF", "Copy1 0x1000..0x1003",
                   "Read2 0x1000..0x1FFF", "Test2 0x1000..0x1003", "Read2 0x1000..0x1FFF"}));
}

TEST(MemoryFill, AFillThatRunsIntoAGapStopsThere)
{
    MemoryRig rig({{0x1000, 0x10FF}, {0x1108, 0x11FF}});
    const uint8_t pattern = 0xAB;
    EXPECT_EQ(rig.manager.FillMemory(0x10F0, 0x110F, 1, &pattern), CVELMemoryManager::kFillOutsideMap);
    EXPECT_EQ(rig.platform.Bytes(0x10F0, 16), Bytes(16, 0xAB));
    EXPECT_EQ(rig.platform.log, (Log{"Fill2 0x10F0..0x10FF"}));
    rig.platform.log.clear();
    EXPECT_EQ(rig.manager.FillMemory(0x1100, 0x110F, 1, &pattern), CVELMemoryManager::kFillOutsideMap);
    EXPECT_TRUE(rig.platform.log.empty());
}

TEST(MemoryFill, ThePatternFollowsEachAreasByteOrder)
{
    MemoryRig rig({{0x1000, 0x1007, 1}, {0x1008, 0x100F, 2}});
    const Bytes pattern{1, 2, 3, 4};
    ASSERT_EQ(rig.manager.FillMemory(0x1000, 0x100F, 4, pattern.data()), S_OK);
    EXPECT_EQ(rig.platform.Bytes(0x1000, 16), (Bytes{1, 2, 3, 4, 1, 2, 3, 4, 4, 3, 2, 1, 4, 3, 2, 1}));
}

TEST(MemoryFill, AVerifiedFillFallsBackToAPlainOne)
{
    const uint8_t pattern = 0x11;
    {
        MemoryRig rig({{0x1000, 0x11FF}});
        rig.platform.answers["FillVerified3"] = E_NOTIMPL;
        EXPECT_EQ(rig.manager.FillMemoryVerified(0x1000, 0x100F, VARIANT_TRUE, 1, &pattern), S_OK);
        EXPECT_EQ(rig.platform.log, (Log{"FillVerified3 0x1000..0x100F", "Fill2 0x1000..0x100F"}));
    }
    {
        MemoryRig rig({{0x1000, 0x11FF}}, {1});
        EXPECT_EQ(rig.manager.FillMemoryVerified(0x1000, 0x100F, VARIANT_TRUE, 1, &pattern), S_OK);
        EXPECT_EQ(rig.platform.log, (Log{"Fill1 0x1000..0x100F"}));
    }
}

TEST(MemoryFind, EachAreaSearchesTheWholeRangeInItsOwnOrder)
{
    MemoryRig rig({{0x1000, 0x10FF, 1}, {0x1100, 0x11FF, 2}});
    rig.platform.Poke(0x1000, Bytes(0x200, 0));
    rig.platform.Poke(0x1180, {0xBB, 0xAA});
    const Bytes pattern{0xAA, 0xBB};
    TargetAddress found = 0;
    EXPECT_EQ(rig.manager.FindMemorySimple(0x1000, 0x11FF, 2, pattern.data(), found), S_OK);
    EXPECT_EQ(found, 0x1180u);
    EXPECT_EQ(rig.platform.log, (Log{"Find1 0x1000..0x11FF", "Find1 0x1000..0x11FF"}));
    EXPECT_EQ(rig.manager.FindMemorySimple(0x0F00, 0x11FF, 2, pattern.data(), found), E_FAIL)
        << "a start in no area";
}

} // namespace
