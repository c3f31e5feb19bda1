#include <gtest/gtest.h>

#include "component/memory/CCacheMemory.h"
#include "support/CacheRig.h"

namespace
{

using Op = FakeTarget::Op;

class CacheRead : public testing::Test
{
protected:
    CacheRig rig;
    CCacheMemory cache{&rig.first, &rig.second, &rig.second, true};

    std::vector<uint8_t> Read(TargetAddress start, TargetAddress end, HRESULT expect = S_OK)
    {
        std::vector<uint8_t> bytes(AddressRange(start, end).Size(), 0xEE);
        EXPECT_EQ(cache.Read(start, end, bytes.data(), rig.everywhere), expect);
        return bytes;
    }
};

TEST_F(CacheRead, MissFetchesTheWholePageOnce)
{
    EXPECT_EQ(Read(0x1010, 0x1013), Expected(0x1010, 4));
    ASSERT_EQ(rig.target.CallCount(), 1u);
    const auto& call = rig.target.calls[0];
    EXPECT_EQ(call.op, Op::Read);
    EXPECT_EQ(call.generation, 2);
    EXPECT_EQ(call.start, 0x1000u);
    EXPECT_EQ(call.end, 0x1FFFu);
}

TEST_F(CacheRead, HitAsksThePlatformNothing)
{
    Read(0x1010, 0x1013);
    EXPECT_EQ(Read(0x1000, 0x1FFF), Expected(0x1000, 0x1000));
    EXPECT_EQ(Read(0x1FFF, 0x1FFF), Expected(0x1FFF, 1));
    EXPECT_EQ(rig.target.CallCount(), 1u);
}

TEST_F(CacheRead, CrossingAPageBoundaryFetchesBothAndJoinsTheBytes)
{
    EXPECT_EQ(Read(0x1FFE, 0x2001), Expected(0x1FFE, 4));
    ASSERT_EQ(rig.target.CallCount(), 2u);
    EXPECT_EQ(rig.target.calls[0].start, 0x1000u);
    EXPECT_EQ(rig.target.calls[1].start, 0x2000u);
    EXPECT_EQ(rig.target.calls[1].end, 0x2FFFu);
    EXPECT_EQ(cache.PageCount(), 2u);
}

TEST_F(CacheRead, ManyPagesInOneRead)
{
    EXPECT_EQ(Read(0x10800, 0x147FF), Expected(0x10800, 0x4000));
    EXPECT_EQ(rig.target.CallCount(), 5u);
}

struct TopCase {
    uint32_t pageSize;
    TargetAddress start;
    TargetAddress fetchStart;
};

class CacheReadAtTop : public testing::TestWithParam<TopCase>
{
};

// A page size that does not divide the address space gives a last page that
// would run past the top: its fetch and its copy stop at 0xFFFFFFFF.
TEST_P(CacheReadAtTop, StopsAtTheLastAddress)
{
    const auto& c = GetParam();
    CacheRig rig;
    CCacheMemory cache(&rig.first, &rig.second, nullptr, true);
    ASSERT_EQ(cache.SetPageSize(c.pageSize), S_OK);
    const size_t count = AddressRange(c.start, TargetAddress::Top()).Size();
    std::vector<uint8_t> bytes(count + 1, 0xEE);
    ASSERT_EQ(cache.Read(c.start, 0xFFFFFFFF, bytes.data(), rig.everywhere), S_OK);
    EXPECT_EQ(std::vector<uint8_t>(bytes.begin(), bytes.end() - 1), Expected(c.start, count));
    EXPECT_EQ(bytes.back(), 0xEE);
    ASSERT_EQ(rig.target.CallCount(), 1u);
    EXPECT_EQ(rig.target.calls[0].start, c.fetchStart);
    EXPECT_EQ(rig.target.calls[0].end, 0xFFFFFFFFu);
}

INSTANTIATE_TEST_SUITE_P(PageSizes, CacheReadAtTop,
                         testing::Values(TopCase{0x1000, 0xFFFFFFFF, 0xFFFFF000},
                                         TopCase{0x1000, 0xFFFFFFF0, 0xFFFFF000},
                                         TopCase{0x3000, 0xFFFFFFFE, 0xFFFFF000},
                                         TopCase{0x100000, 0xFFFFFFFF, 0xFFF00000}));

TEST_F(CacheRead, OutsideTheAreasReadsZeroWithoutAccess)
{
    std::vector<uint8_t> bytes(0x20, 0xEE);
    EXPECT_EQ(cache.Read(0x1000, 0x101F, bytes.data(), {}), S_OK);
    EXPECT_EQ(bytes, std::vector<uint8_t>(0x20, 0));
    EXPECT_EQ(rig.target.CallCount(), 0u);
}

TEST_F(CacheRead, OnlyTheAreaPartOfAPageIsFetched)
{
    const std::vector<CMemoryArea> areas{CMemoryArea{0x1100, 0x11FF}};
    std::vector<uint8_t> bytes(0x200, 0xEE);
    ASSERT_EQ(cache.Read(0x1000, 0x11FF, bytes.data(), areas), S_OK);
    ASSERT_EQ(rig.target.CallCount(), 1u);
    EXPECT_EQ(rig.target.calls[0].start, 0x1100u);
    EXPECT_EQ(rig.target.calls[0].end, 0x11FFu);
    EXPECT_EQ(std::vector<uint8_t>(bytes.begin(), bytes.begin() + 0x100), std::vector<uint8_t>(0x100, 0));
    EXPECT_EQ(std::vector<uint8_t>(bytes.begin() + 0x100, bytes.end()), Expected(0x1100, 0x100));
}

TEST_F(CacheRead, DisabledMakesOneCallPerReadAndIgnoresAreas)
{
    cache.SetEnabled(VARIANT_FALSE);
    std::vector<uint8_t> bytes(0x3001, 0xEE);
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(cache.Read(0x0FFF, 0x3FFF, bytes.data(), {}), S_OK);
        EXPECT_EQ(bytes, Expected(0x0FFF, 0x3001));
    }
    ASSERT_EQ(rig.target.CallCount(), 2u);
    EXPECT_EQ(rig.target.calls[1].start, 0x0FFFu);
    EXPECT_EQ(rig.target.calls[1].end, 0x3FFFu);
    EXPECT_EQ(cache.PageCount(), 0u);
}

TEST_F(CacheRead, EnablingAgainEmptiesAndCaches)
{
    Read(0x1000, 0x1000);
    cache.SetEnabled(VARIANT_FALSE);
    EXPECT_EQ(cache.PageCount(), 0u);
    cache.SetEnabled(VARIANT_TRUE);
    Read(0x1000, 0x1000);
    Read(0x1001, 0x1001);
    EXPECT_EQ(rig.target.CallCount(), 2u);
}

struct GenerationCase {
    bool first;
    bool second;
    HRESULT result;
    int generation; // 0: no call
};

class CacheReadGeneration : public testing::TestWithParam<GenerationCase>
{
};

TEST_P(CacheReadGeneration, PrefersTheSecondInterface)
{
    const auto& c = GetParam();
    CacheRig rig;
    CCacheMemory cache(c.first ? &rig.first : nullptr, c.second ? &rig.second : nullptr, nullptr, true);
    uint8_t byte = 0;
    EXPECT_EQ(cache.Read(0x40, 0x40, &byte, rig.everywhere), c.result);
    if (c.generation == 0) {
        EXPECT_EQ(rig.target.CallCount(), 0u);
        return;
    }
    ASSERT_EQ(rig.target.CallCount(), 1u);
    EXPECT_EQ(rig.target.calls[0].generation, c.generation);
    EXPECT_EQ(byte, FakeTarget::Pattern(0x40));
}

INSTANTIATE_TEST_SUITE_P(Interfaces, CacheReadGeneration,
                         testing::Values(GenerationCase{true, true, S_OK, 2},
                                         GenerationCase{false, true, S_OK, 2},
                                         GenerationCase{true, false, S_OK, 1},
                                         GenerationCase{false, false, E_FAIL, 0}));

TEST_F(CacheRead, BadArgumentsAreRefusedWithoutAccess)
{
    EXPECT_EQ(cache.Read(0x10, 0x1F, nullptr, rig.everywhere), E_POINTER);
    uint8_t byte = 0;
    EXPECT_EQ(cache.Read(0x20, 0x1F, &byte, rig.everywhere), E_INVALIDARG);
    EXPECT_EQ(rig.target.CallCount(), 0u);
}

} // namespace
