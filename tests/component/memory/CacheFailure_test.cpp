#include <gtest/gtest.h>

#include "component/memory/CCacheMemory.h"
#include "support/MemoryRig.h"

namespace
{

constexpr HRESULT kLinkDown = MakeResult(0x80040218u);

class CacheFailure : public testing::Test
{
protected:
    CacheRig rig;
    CCacheMemory cache{nullptr, &rig.platform, nullptr, true};
    uint8_t bytes[0x10] = {};

    // One read while the platform's reads fail with `code`.
    HRESULT ReadFailing(TargetAddress start, TargetAddress end, HRESULT code = E_FAIL,
                        const std::vector<CMemoryArea>* areas = nullptr)
    {
        rig.platform.answers["Read2"] = code;
        const HRESULT hr = cache.Read(start, end, bytes, areas != nullptr ? *areas : rig.everywhere);
        rig.platform.answers.clear();
        return hr;
    }
};

TEST_F(CacheFailure, PagesBeforeTheFailureStayCached)
{
    ASSERT_EQ(cache.Read(0x0FF8, 0x0FFF, bytes, rig.everywhere), S_OK);
    EXPECT_EQ(ReadFailing(0x0FF8, 0x1007, kLinkDown), kLinkDown);
    EXPECT_EQ(cache.PageCount(), 1u);
    ASSERT_EQ(cache.Read(0x0FF8, 0x1007, bytes, rig.everywhere), S_OK);
    EXPECT_EQ(std::vector<uint8_t>(bytes, bytes + 0x10), rig.platform.Bytes(0x0FF8, 0x10));
    EXPECT_EQ(rig.platform.log, (Log{"Read2 0x0..0xFFF", "Read2 0x1000..0x1FFF", "Read2 0x1000..0x1FFF"}));
}

TEST_F(CacheFailure, FailureStopsTheFetchAtTheFailingPart)
{
    const std::vector<CMemoryArea> areas{CMemoryArea{0x1000, 0x10FF}, CMemoryArea{0x1200, 0x12FF}};
    EXPECT_EQ(ReadFailing(0x1000, 0x1000, E_FAIL, &areas), E_FAIL);
    EXPECT_EQ(rig.platform.log, Log{"Read2 0x1000..0x10FF"});
}

// A failed fetch when the table is full gives up no victim.
TEST_F(CacheFailure, FullTableKeepsItsPagesWhenAFetchFails)
{
    for (uint32_t page = 0; page < 0x100; ++page)
        ASSERT_EQ(cache.Read(page * 0x1000, page * 0x1000, bytes, rig.everywhere), S_OK);
    EXPECT_EQ(ReadFailing(0x100000, 0x100000), E_FAIL);
    EXPECT_EQ(cache.NextVictim(), 0);
    EXPECT_EQ(cache.PageInSlot(0)->Address, 0u);
    const size_t calls = rig.platform.log.size();
    ASSERT_EQ(cache.Read(0, 0, bytes, rig.everywhere), S_OK);
    EXPECT_EQ(rig.platform.log.size(), calls);
}

} // namespace
