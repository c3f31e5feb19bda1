#include <gtest/gtest.h>

#include "component/memory/CCacheMemory.h"
#include "support/MemoryRig.h"

namespace
{

class CacheReplacement : public testing::Test
{
protected:
    CacheRig rig;
    CCacheMemory cache{nullptr, &rig.platform, nullptr, true};

    void Touch(uint32_t pageNumber)
    {
        uint8_t byte = 0;
        ASSERT_EQ(cache.Read(pageNumber * 0x1000 + 7, pageNumber * 0x1000 + 7, &byte, rig.everywhere), S_OK);
        ASSERT_EQ(byte, FakePlatformMemory::Derived(pageNumber * 0x1000 + 7));
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

    const size_t calls = rig.platform.log.size();
    Touch(0);
    EXPECT_EQ(rig.platform.log.size(), calls + 1);
    EXPECT_EQ(cache.PageInSlot(2)->Address, 0u);
    // The victim wraps to the first slot.
    Fill(0x102, 0xFD);
    EXPECT_EQ(cache.NextVictim(), 0);
    EXPECT_EQ(cache.PageInSlot(0xFF)->Address, 0x1FE000u);
}

TEST_F(CacheReplacement, ClearForgetsThePagesButNotTheNextVictim)
{
    Fill(0, 0x102);
    ASSERT_EQ(cache.Clear(), S_OK);
    EXPECT_EQ(cache.PageCount(), 0u);
    EXPECT_EQ(cache.NextVictim(), 2);
    Touch(0x101);
    EXPECT_EQ(rig.platform.log.size(), 0x103u);
    Fill(0x201, 0x100);
    EXPECT_EQ(cache.PageInSlot(2)->Address, 0x300000u);
    EXPECT_EQ(cache.PageInSlot(0)->Address, 0x101000u);
    EXPECT_EQ(cache.NextVictim(), 3);
}

TEST_F(CacheReplacement, SetPageSizeRestartsTheSlotsAndRefusesUnusableSizes)
{
    Fill(0, 0x103);
    for (uint32_t size : {0u, 0x100001u, 0xFFFFFFFFu}) {
        EXPECT_EQ(cache.SetPageSize(size), E_INVALIDARG) << size;
        EXPECT_EQ(cache.PageSize(), 0x1000u);
        EXPECT_EQ(cache.MaxPages(), 0x100);
    }
    ASSERT_EQ(cache.SetPageSize(0x800), S_OK);
    EXPECT_EQ(cache.PageCount(), 0u);
    EXPECT_EQ(cache.NextVictim(), 0);
    EXPECT_EQ(cache.MaxPages(), 0x200);
    uint8_t byte = 0;
    ASSERT_EQ(cache.Read(0x1900, 0x1900, &byte, rig.everywhere), S_OK);
    EXPECT_EQ(rig.platform.log.back(), "Read2 0x1800..0x1FFF");
}

TEST(CachePlatformPageSize, IsTakenWhenUsable)
{
    const struct {
        uint32_t reported;
        HRESULT answer;
        bool second;
        uint32_t pageSize;
        int32_t maxPages;
    } cases[] = {{0x400, S_OK, true, 0x400, 0x400},
                 {0x400, S_FALSE, true, 0x400, 0x400},
                 {0x400, E_NOTIMPL, true, 0x1000, 0x100},
                 {0, S_OK, true, 0x1000, 0x100},
                 {0x200000, S_OK, true, 0x1000, 0x100},
                 {0x100000, S_OK, true, 0x100000, 1},
                 {3, S_OK, true, 3, 0x55555},
                 {0x400, S_OK, false, 0x1000, 0x100}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.reported);
        CacheRig rig;
        rig.platform.pageSize = c.reported;
        rig.platform.pageSizeResult = c.answer;
        CCacheMemory cache(rig.first, c.second ? &rig.platform : nullptr, nullptr, true);
        EXPECT_EQ(cache.PageSize(), c.pageSize);
        EXPECT_EQ(cache.MaxPages(), c.maxPages);
        uint8_t byte = 0;
        ASSERT_EQ(cache.Read(0x12345, 0x12345, &byte, rig.everywhere), S_OK);
        const TargetAddress page = TargetAddress(0x12345).AlignedDown(c.pageSize);
        const auto fetch =
            FakePlatformMemory::Line(c.second ? "Read2" : "Read1", page, page.WrappingAdd(c.pageSize - 1));
        EXPECT_EQ(rig.platform.log, Log{fetch});
    }
}

} // namespace
