#include <gtest/gtest.h>

#include "support/MemoryRig.h"

namespace
{

// Two areas with a gap of six bytes between them.
const std::vector<FakeArea> kGapped{{0x1000, 0x10FF}, {0x1106, 0x11FF}};

TEST(MemoryRead, GapBytesOfTheBufferKeepWhatTheyHad)
{
    MemoryRig rig(kGapped);
    HRESULT hr = E_FAIL;
    const Bytes out = rig.Read(0x10FE, 12, 1, &hr);
    EXPECT_EQ(hr, S_OK);
    EXPECT_EQ(Bytes(out.begin(), out.begin() + 2), rig.platform.Bytes(0x10FE, 2));
    EXPECT_EQ(Bytes(out.begin() + 2, out.begin() + 8), Bytes(6, 0xEE));
    EXPECT_EQ(Bytes(out.begin() + 8, out.end()), rig.platform.Bytes(0x1106, 4));
}

TEST(MemoryRead, SkipOverAGapIsAWholeNumberOfElements)
{
    // With four-byte elements a six-byte gap costs eight: the read resumes two
    // bytes into the next area, and those two stay untouched too.
    MemoryRig rig(kGapped);
    Bytes out(20, 0xEE);
    ASSERT_EQ(rig.manager.ReadMemoryValuesDirect(0x10FC, 0x110F, 4, out.data()), S_OK);
    EXPECT_EQ(rig.platform.log, (Log{"Read2 0x10FC..0x10FF", "Read2 0x1108..0x110F"}));
    EXPECT_EQ(Bytes(out.begin() + 4, out.begin() + 12), Bytes(8, 0xEE));
    EXPECT_EQ(Bytes(out.begin() + 12, out.end()), rig.platform.Bytes(0x1108, 8));
}

TEST(MemoryRead, ARangeOutsideTheMapReadsNothingAndSucceeds)
{
    MemoryRig rig(kGapped);
    HRESULT hr = E_FAIL;
    EXPECT_EQ(rig.Read(0x5000, 8, 1, &hr), Bytes(8, 0xEE));
    EXPECT_EQ(hr, S_OK);
    EXPECT_TRUE(rig.platform.log.empty());
}

TEST(MemoryRead, DirectReadsAndRefreshGoPastTheCache)
{
    MemoryRig rig({{0x1000, 0x1FFF}});
    rig.Read(0x1000, 4);
    rig.platform.Poke(0x1000, {1, 2, 3, 4});
    EXPECT_NE(rig.Read(0x1000, 4), (Bytes{1, 2, 3, 4})) << "the cache still holds the old bytes";
    Bytes out(4);
    ASSERT_EQ(rig.manager.ReadMemoryDirect(0x1000, 0x1003, 1, out.data()), S_OK);
    EXPECT_EQ(out, (Bytes{1, 2, 3, 4}));
    ASSERT_EQ(rig.manager.RefreshMemory(), S_OK);
    EXPECT_EQ(rig.Read(0x1000, 4), (Bytes{1, 2, 3, 4}));
    EXPECT_EQ(rig.platform.log, (Log{"Read2 0x1000..0x1FFF", "Read2 0x1000..0x1003", "Refresh2 0x0..0x0",
                                     "Read2 0x1000..0x1FFF"}));
}

TEST(MemoryRead, SwitchingTheCacheOffSendsEveryReadToThePlatform)
{
    MemoryRig rig({{0x1000, 0x1FFF}});
    rig.Read(0x1000, 4);
    ASSERT_EQ(rig.manager.SetCacheEnabled(VARIANT_FALSE), S_OK);
    EXPECT_EQ(rig.manager.GetCacheEnabled(), E_FAIL);
    rig.Read(0x1000, 4);
    rig.Read(0x1000, 4);
    ASSERT_EQ(rig.manager.SetCacheEnabled(VARIANT_TRUE), S_OK);
    EXPECT_EQ(rig.manager.GetCacheEnabled(), S_OK);
    rig.Read(0x1000, 4);
    EXPECT_EQ(rig.platform.log, (Log{"Read2 0x1000..0x1FFF", "Read2 0x1000..0x1003", "Read2 0x1000..0x1003",
                                     "Read2 0x1000..0x1FFF"}))
        << "switched back on, the cache starts empty";
}

TEST(MemoryRead, SizedAreasAreReadWithTheNormalisedSize)
{
    struct Case {
        AccessSize asked;
        const char* cached;
        const char* direct;
        const char* directValues;
    };
    const Case cases[] = {
        {4, "ReadSized2 0x3000..0x3FFF /4", "ReadSized2 0x3000..0x3007 /4", "ReadSized2 0x3000..0x3007 /4"},
        {8, "ReadSized2 0x3000..0x3FFF /8", "ReadSized2 0x3000..0x3007 /8", "ReadSized2 0x3000..0x3007 /8"},
        {6, "ReadSized2 0x3000..0x3FFF /2", "ReadSized2 0x3000..0x3007 /2", "ReadSized2 0x3000..0x3007 /6"},
        {3, "ReadSized2 0x3000..0x3FFF /1", "ReadSized2 0x3000..0x3007 /1", "ReadSized2 0x3000..0x3007 /3"},
    };
    for (const auto& c : cases) {
        MemoryRig rig({{0x3000, 0x3FFF, 1, true}});
        Bytes out(8);
        rig.manager.ReadMemory(0x3000, 0x3007, c.asked, out.data());
        rig.manager.ReadMemoryDirect(0x3000, 0x3007, c.asked, out.data());
        rig.manager.ReadMemoryValuesDirect(0x3000, 0x3007, c.asked, out.data());
        EXPECT_EQ(rig.platform.log, (Log{c.cached, c.direct, c.directValues})) << "size " << c.asked;
    }
}

TEST(MemoryRead, EachAlignmentOfASizedReadHasItsOwnCache)
{
    MemoryRig rig({{0x3000, 0x3FFF, 1, true}});
    Bytes out(4);
    rig.manager.ReadMemory(0x3000, 0x3003, 4, out.data());
    rig.manager.ReadMemory(0x3002, 0x3005, 4, out.data());
    rig.manager.ReadMemory(0x3004, 0x3007, 4, out.data());
    EXPECT_EQ(rig.platform.log, (Log{"ReadSized2 0x3000..0x3FFF /4", "ReadSized2 0x3000..0x3FFF /4"}));
}

TEST(MemoryRead, TheFirstGenerationAloneServesReads)
{
    // Its flags say sized access through bit 1 alone, and an area with only
    // attribute bits set is plain memory.
    MemoryRig rig({{0x1000, 0x1FFF}, {0x3000, 0x3FFF, 1, true}}, {1});
    rig.Read(0x1000, 4);
    Bytes out(4);
    rig.manager.ReadMemory(0x3000, 0x3003, 4, out.data());
    EXPECT_EQ(rig.platform.log, (Log{"Read1 0x1000..0x1FFF", "ReadSized1 0x3000..0x3FFF /4"}));
}

TEST(MemoryRead, BadRequestsAreRefusedWithoutAPlatformCall)
{
    MemoryRig rig({{0x1000, 0x1FFF}});
    Bytes out(4);
    EXPECT_EQ(rig.manager.ReadMemory(0x1003, 0x1000, 1, out.data()), E_INVALIDARG);
    EXPECT_EQ(rig.manager.ReadMemory(0x1000, 0x1003, 0, out.data()), E_INVALIDARG);
    EXPECT_EQ(rig.manager.ReadMemory(0x1000, 0x1003, 1, nullptr), E_POINTER);
    EXPECT_TRUE(rig.platform.log.empty());
}

} // namespace
