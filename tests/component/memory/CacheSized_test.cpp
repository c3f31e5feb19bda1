#include <gtest/gtest.h>

#include "component/memory/CCacheMemoryWithSize.h"
#include "support/CacheRig.h"

namespace
{

using Op = FakeTarget::Op;

struct SizedCase {
    AccessSize size;
    bool second;
    int generation;
};

class CacheSized : public testing::TestWithParam<SizedCase>
{
};

TEST_P(CacheSized, FetchesWholePagesWithItsAccessSize)
{
    const auto& c = GetParam();
    CacheRig rig;
    CCacheMemoryWithSize cache(c.size, 1, &rig.first, c.second ? &rig.second : nullptr, nullptr, true);
    EXPECT_EQ(cache.GetAccessSize(), c.size);
    std::vector<uint8_t> bytes(8);
    ASSERT_EQ(cache.Read(0x3001, 0x3008, bytes.data(), rig.everywhere), S_OK);
    EXPECT_EQ(bytes, Expected(0x3001, 8));
    ASSERT_EQ(cache.Read(0x3100, 0x3107, bytes.data(), rig.everywhere), S_OK);
    ASSERT_EQ(rig.target.CallCount(), 1u);
    const auto& call = rig.target.calls[0];
    EXPECT_EQ(call.op, Op::ReadSized);
    EXPECT_EQ(call.generation, c.generation);
    EXPECT_EQ(call.accessSize, c.size);
    EXPECT_EQ(call.start, 0x3000u);
    EXPECT_EQ(call.end, 0x3FFFu);
}

INSTANTIATE_TEST_SUITE_P(Sizes, CacheSized,
                         testing::Values(SizedCase{2, true, 2}, SizedCase{4, true, 2}, SizedCase{8, false, 1},
                                         SizedCase{4, false, 1}));

// Later parts of a page start on a boundary of the access size; the bytes
// skipped by that stay zero.
TEST(CacheSizedAreas, LaterPartsStartOnTheAccessSize)
{
    CacheRig rig;
    CCacheMemoryWithSize cache(4, 0, nullptr, &rig.second, nullptr, true);
    const std::vector<CMemoryArea> areas{CMemoryArea{0x1000, 0x1002}, CMemoryArea{0x1005, 0x100F}};
    std::vector<uint8_t> bytes(0x10, 0xEE);
    ASSERT_EQ(cache.Read(0x1000, 0x100F, bytes.data(), areas), S_OK);
    ASSERT_EQ(rig.target.CallCount(), 2u);
    EXPECT_EQ(rig.target.calls[0].start, 0x1000u);
    EXPECT_EQ(rig.target.calls[0].end, 0x1002u);
    EXPECT_EQ(rig.target.calls[1].start, 0x1008u);
    EXPECT_EQ(rig.target.calls[1].end, 0x100Fu);
    auto expected = Expected(0x1000, 0x10);
    std::fill(expected.begin() + 3, expected.begin() + 8, 0);
    EXPECT_EQ(bytes, expected);
}

TEST(CacheSizedDisabled, PassesTheRangeThroughWithItsSize)
{
    CacheRig rig;
    CCacheMemoryWithSize cache(2, 0, nullptr, &rig.second, nullptr, false);
    std::vector<uint8_t> bytes(6);
    ASSERT_EQ(cache.Read(0x2002, 0x2007, bytes.data(), {}), S_OK);
    ASSERT_EQ(rig.target.CallCount(), 1u);
    EXPECT_EQ(rig.target.calls[0].op, Op::ReadSized);
    EXPECT_EQ(rig.target.calls[0].accessSize, 2);
    EXPECT_EQ(bytes, Expected(0x2002, 6));
}

} // namespace
