#include <gtest/gtest.h>

#include "component/memory/CCacheMemory.h"
#include "support/CacheRig.h"

namespace
{

constexpr HRESULT kLinkDown = MakeResult(0x80040218u);

class CacheFailure : public testing::Test
{
protected:
    CacheRig rig;
    CCacheMemory cache{nullptr, &rig.second, nullptr, true};
};

TEST_F(CacheFailure, FailedFetchGivesItsCodeAndIsAskedAgain)
{
    rig.target.failingReads = 1;
    rig.target.failCode = kLinkDown;
    uint8_t bytes[4] = {};
    EXPECT_EQ(cache.Read(0x1000, 0x1003, bytes, rig.everywhere), kLinkDown);
    EXPECT_EQ(cache.PageCount(), 0u);

    ASSERT_EQ(cache.Read(0x1000, 0x1003, bytes, rig.everywhere), S_OK);
    EXPECT_EQ(std::vector<uint8_t>(bytes, bytes + 4), Expected(0x1000, 4));
    EXPECT_EQ(rig.target.CallCount(), 2u);
    EXPECT_EQ(cache.PageCount(), 1u);
}

TEST_F(CacheFailure, PagesBeforeTheFailureStayCached)
{
    uint8_t bytes[0x10] = {};
    ASSERT_EQ(cache.Read(0x0FF8, 0x0FFF, bytes, rig.everywhere), S_OK);
    rig.target.failingReads = 1;
    EXPECT_EQ(cache.Read(0x0FF8, 0x1007, bytes, rig.everywhere), E_FAIL);
    EXPECT_EQ(cache.PageCount(), 1u);
    ASSERT_EQ(cache.Read(0x0FF8, 0x1007, bytes, rig.everywhere), S_OK);
    EXPECT_EQ(std::vector<uint8_t>(bytes, bytes + 0x10), Expected(0x0FF8, 0x10));
    EXPECT_EQ(rig.target.CallCount(), 3u);
}

TEST_F(CacheFailure, FailureStopsTheFetchAtTheFailingPart)
{
    const std::vector<CMemoryArea> areas{CMemoryArea{0x1000, 0x10FF}, CMemoryArea{0x1200, 0x12FF}};
    rig.target.failingReads = 1;
    uint8_t byte = 0;
    EXPECT_EQ(cache.Read(0x1000, 0x1000, &byte, areas), E_FAIL);
    EXPECT_EQ(rig.target.CallCount(), 1u);
}

// A failed fetch when the table is full gives up no victim.
TEST_F(CacheFailure, FullTableKeepsItsPagesWhenAFetchFails)
{
    uint8_t byte = 0;
    for (uint32_t page = 0; page < 0x100; ++page)
        ASSERT_EQ(cache.Read(page * 0x1000, page * 0x1000, &byte, rig.everywhere), S_OK);
    rig.target.failingReads = 1;
    EXPECT_EQ(cache.Read(0x100000, 0x100000, &byte, rig.everywhere), E_FAIL);
    EXPECT_EQ(cache.NextVictim(), 0);
    EXPECT_EQ(cache.PageInSlot(0)->Address, 0u);
    const size_t calls = rig.target.CallCount();
    ASSERT_EQ(cache.Read(0, 0, &byte, rig.everywhere), S_OK);
    EXPECT_EQ(rig.target.CallCount(), calls);
}

} // namespace
