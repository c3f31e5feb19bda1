#include <gtest/gtest.h>

#include "component/memory/CCacheMemoryWithSize.h"
#include "support/MemoryRig.h"

namespace
{

TEST(CacheSized, FetchesWholePagesWithItsAccessSize)
{
    const struct {
        AccessSize size;
        bool second;
        const char* fetch;
    } cases[] = {{2, true, "ReadSized2 0x3000..0x3FFF /2"},
                 {4, true, "ReadSized2 0x3000..0x3FFF /4"},
                 {8, false, "ReadSized1 0x3000..0x3FFF /8"},
                 {4, false, "ReadSized1 0x3000..0x3FFF /4"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.fetch);
        CacheRig rig;
        CCacheMemoryWithSize cache(c.size, 1, rig.first, c.second ? &rig.platform : nullptr, nullptr, true);
        std::vector<uint8_t> bytes(8);
        ASSERT_EQ(cache.Read(0x3001, 0x3008, bytes.data(), rig.everywhere), S_OK);
        EXPECT_EQ(bytes, rig.platform.Bytes(0x3001, 8));
        ASSERT_EQ(cache.Read(0x3100, 0x3107, bytes.data(), rig.everywhere), S_OK);
        EXPECT_EQ(rig.platform.log, Log{c.fetch});
    }
}

// Later parts of a page start on a boundary of the access size; the bytes
// skipped by that stay zero.
TEST(CacheSized, LaterPartsStartOnTheAccessSize)
{
    CacheRig rig;
    CCacheMemoryWithSize cache(4, 0, nullptr, &rig.platform, nullptr, true);
    const std::vector<CMemoryArea> areas{CMemoryArea{0x1000, 0x1002}, CMemoryArea{0x1005, 0x100F}};
    std::vector<uint8_t> bytes(0x10, 0xEE);
    ASSERT_EQ(cache.Read(0x1000, 0x100F, bytes.data(), areas), S_OK);
    EXPECT_EQ(rig.platform.log, (Log{"ReadSized2 0x1000..0x1002 /4", "ReadSized2 0x1008..0x100F /4"}));
    auto expected = rig.platform.Bytes(0x1000, 0x10);
    std::fill(expected.begin() + 3, expected.begin() + 8, 0);
    EXPECT_EQ(bytes, expected);
}

TEST(CacheSized, DisabledPassesTheRangeThroughWithItsSize)
{
    CacheRig rig;
    CCacheMemoryWithSize cache(2, 0, nullptr, &rig.platform, nullptr, false);
    std::vector<uint8_t> bytes(6);
    ASSERT_EQ(cache.Read(0x2002, 0x2007, bytes.data(), {}), S_OK);
    EXPECT_EQ(rig.platform.log, Log{"ReadSized2 0x2002..0x2007 /2"});
    EXPECT_EQ(bytes, rig.platform.Bytes(0x2002, 6));
}

} // namespace
