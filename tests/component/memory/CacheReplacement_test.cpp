#include <gtest/gtest.h>

#include "component/memory/CCacheMemory.h"
#include "support/CacheRig.h"

namespace
{

class CacheReplacement : public testing::Test
{
protected:
    CacheRig rig;
    CCacheMemory cache{nullptr, &rig.second, nullptr, true};

    void Touch(uint32_t pageNumber)
    {
        uint8_t byte = 0;
        ASSERT_EQ(cache.Read(pageNumber * 0x1000 + 7, pageNumber * 0x1000 + 7, &byte, rig.everywhere), S_OK);
        ASSERT_EQ(byte, FakeTarget::Pattern(pageNumber * 0x1000 + 7));
    }
    void Fill(uint32_t first, uint32_t count)
    {
        for (uint32_t n = first; n < first + count; ++n)
            Touch(n);
    }
};

// The slot order is cyclic: the page read last is no safer than any other.
TEST_F(CacheReplacement, NewPagesTakeTheSlotsInTurn)
{
    Fill(0, 0x100);
    Touch(0);
    Touch(0x100);
    EXPECT_EQ(cache.PageInSlot(0)->Address, 0x100000u);
    EXPECT_EQ(cache.NextVictim(), 1);
    Touch(0x101);
    EXPECT_EQ(cache.PageInSlot(1)->Address, 0x101000u);
    EXPECT_EQ(cache.NextVictim(), 2);
    EXPECT_EQ(cache.PageCount(), 0x100u);

    const size_t calls = rig.target.CallCount();
    Touch(0);
    EXPECT_EQ(rig.target.CallCount(), calls + 1);
    EXPECT_EQ(cache.PageInSlot(2)->Address, 0u);
}

TEST_F(CacheReplacement, VictimWrapsToTheFirstSlot)
{
    Fill(0, 0x200);
    EXPECT_EQ(cache.NextVictim(), 0);
    EXPECT_EQ(cache.PageInSlot(0xFF)->Address, 0x1FF000u);
}

TEST_F(CacheReplacement, NextVictimSurvivesClear)
{
    Fill(0, 0x102);
    ASSERT_EQ(cache.Clear(), S_OK);
    EXPECT_EQ(cache.PageCount(), 0u);
    EXPECT_EQ(cache.NextVictim(), 2);
    Fill(0x200, 0x101);
    EXPECT_EQ(cache.PageInSlot(2)->Address, 0x300000u);
    EXPECT_EQ(cache.PageInSlot(0)->Address, 0x200000u);
    EXPECT_EQ(cache.NextVictim(), 3);
}

TEST_F(CacheReplacement, ClearMakesTheNextReadFetch)
{
    Touch(3);
    cache.Clear();
    Touch(3);
    EXPECT_EQ(rig.target.CallCount(), 2u);
}

TEST_F(CacheReplacement, SetPageSizeRestartsTheSlots)
{
    Fill(0, 0x103);
    ASSERT_EQ(cache.SetPageSize(0x800), S_OK);
    EXPECT_EQ(cache.PageCount(), 0u);
    EXPECT_EQ(cache.NextVictim(), 0);
    EXPECT_EQ(cache.MaxPages(), 0x200);
    uint8_t byte = 0;
    ASSERT_EQ(cache.Read(0x1900, 0x1900, &byte, rig.everywhere), S_OK);
    EXPECT_EQ(rig.target.calls.back().start, 0x1800u);
    EXPECT_EQ(rig.target.calls.back().end, 0x1FFFu);
}

TEST_F(CacheReplacement, UnusablePageSizesAreRefused)
{
    for (uint32_t size : {0u, 0x100001u, 0xFFFFFFFFu}) {
        EXPECT_EQ(cache.SetPageSize(size), E_INVALIDARG) << size;
        EXPECT_EQ(cache.PageSize(), 0x1000u);
        EXPECT_EQ(cache.MaxPages(), 0x100);
    }
}

struct PlatformPageCase {
    uint32_t reported;
    HRESULT answer;
    uint32_t pageSize;
    int32_t maxPages;
};

class CachePlatformPageSize : public testing::TestWithParam<PlatformPageCase>
{
};

TEST_P(CachePlatformPageSize, IsTakenWhenUsable)
{
    const auto& c = GetParam();
    CacheRig rig(c.reported);
    rig.second.pageSizeResult = c.answer;
    CCacheMemory cache(nullptr, &rig.second, nullptr, true);
    EXPECT_EQ(cache.PageSize(), c.pageSize);
    EXPECT_EQ(cache.MaxPages(), c.maxPages);
    uint8_t byte = 0;
    ASSERT_EQ(cache.Read(0x12345, 0x12345, &byte, rig.everywhere), S_OK);
    EXPECT_EQ(AddressRange(rig.target.calls[0].start, rig.target.calls[0].end).Size(), c.pageSize);
}

INSTANTIATE_TEST_SUITE_P(Sizes, CachePlatformPageSize,
                         testing::Values(PlatformPageCase{0x400, S_OK, 0x400, 0x400},
                                         PlatformPageCase{0x400, S_FALSE, 0x400, 0x400},
                                         PlatformPageCase{0x400, E_NOTIMPL, 0x1000, 0x100},
                                         PlatformPageCase{0, S_OK, 0x1000, 0x100},
                                         PlatformPageCase{0x200000, S_OK, 0x1000, 0x100},
                                         PlatformPageCase{0x100000, S_OK, 0x100000, 1},
                                         PlatformPageCase{3, S_OK, 3, 0x55555}));

TEST(CacheWithoutSecondInterface, KeepsTheDefaultPageSize)
{
    CacheRig rig(0x400);
    CCacheMemory cache(&rig.first, nullptr, nullptr, true);
    EXPECT_EQ(cache.PageSize(), 0x1000u);
}

} // namespace
