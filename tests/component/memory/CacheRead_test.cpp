#include <gtest/gtest.h>

#include "component/memory/CCacheMemory.h"
#include "support/MemoryRig.h"

namespace
{

using Range = std::pair<uint32_t, uint32_t>;

// Reads in turn through one cache over the whole map, each read checked
// against the target's bytes: what the platform was asked for says what was
// a hit and what was fetched.
TEST(CacheRead, FetchesWholePagesOnceAndJoinsThem)
{
    const struct {
        const char* what;
        std::vector<Range> reads;
        Log fetches;
    } cases[] = {
        {"a miss fetches the page", {{0x1010, 0x1013}}, {"Read2 0x1000..0x1FFF"}},
        {"a hit asks nothing",
         {{0x1010, 0x1013}, {0x1000, 0x1FFF}, {0x1FFF, 0x1FFF}},
         {"Read2 0x1000..0x1FFF"}},
        {"a page boundary", {{0x1FFE, 0x2001}}, {"Read2 0x1000..0x1FFF", "Read2 0x2000..0x2FFF"}},
        {"many pages",
         {{0x10800, 0x127FF}},
         {"Read2 0x10000..0x10FFF", "Read2 0x11000..0x11FFF", "Read2 0x12000..0x12FFF"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        CacheRig rig;
        CCacheMemory cache{rig.first, &rig.platform, &rig.platform, true};
        for (const auto& [start, end] : c.reads) {
            std::vector<uint8_t> bytes(AddressRange(start, end).Size(), 0xEE);
            ASSERT_EQ(cache.Read(start, end, bytes.data(), rig.everywhere), S_OK);
            EXPECT_EQ(bytes, rig.platform.Bytes(start, bytes.size()));
        }
        EXPECT_EQ(rig.platform.log, c.fetches);
    }
}

// A page size that does not divide the address space gives a last page that
// would run past the top: its fetch and its copy stop at 0xFFFFFFFF.
TEST(CacheRead, StopsAtTheLastAddress)
{
    const struct {
        uint32_t pageSize;
        uint32_t start;
        const char* fetch;
    } cases[] = {{0x1000, 0xFFFFFFFF, "Read2 0xFFFFF000..0xFFFFFFFF"},
                 {0x1000, 0xFFFFFFF0, "Read2 0xFFFFF000..0xFFFFFFFF"},
                 {0x3000, 0xFFFFFFFE, "Read2 0xFFFFF000..0xFFFFFFFF"},
                 {0x100000, 0xFFFFFFFF, "Read2 0xFFF00000..0xFFFFFFFF"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pageSize);
        CacheRig rig;
        CCacheMemory cache(rig.first, &rig.platform, nullptr, true);
        ASSERT_EQ(cache.SetPageSize(c.pageSize), S_OK);
        const size_t count = AddressRange(c.start, TargetAddress::Top()).Size();
        std::vector<uint8_t> bytes(count + 1, 0xEE);
        ASSERT_EQ(cache.Read(c.start, 0xFFFFFFFF, bytes.data(), rig.everywhere), S_OK);
        EXPECT_EQ(std::vector<uint8_t>(bytes.begin(), bytes.end() - 1), rig.platform.Bytes(c.start, count));
        EXPECT_EQ(bytes.back(), 0xEE);
        EXPECT_EQ(rig.platform.log, Log{c.fetch});
    }
}

TEST(CacheRead, DisabledEachReadIsOneCallAndEnablingAgainCachesAfresh)
{
    CacheRig rig;
    CCacheMemory cache{rig.first, &rig.platform, &rig.platform, true};
    uint8_t byte = 0;
    ASSERT_EQ(cache.Read(0x1000, 0x1000, &byte, rig.everywhere), S_OK);
    cache.SetEnabled(VARIANT_FALSE);
    EXPECT_EQ(cache.PageCount(), 0u);
    std::vector<uint8_t> bytes(0x3001, 0xEE);
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(cache.Read(0x0FFF, 0x3FFF, bytes.data(), {}), S_OK);
        EXPECT_EQ(bytes, rig.platform.Bytes(0x0FFF, 0x3001));
    }
    cache.SetEnabled(VARIANT_TRUE);
    ASSERT_EQ(cache.Read(0x1000, 0x1000, &byte, rig.everywhere), S_OK);
    ASSERT_EQ(cache.Read(0x1001, 0x1001, &byte, rig.everywhere), S_OK);
    EXPECT_EQ(rig.platform.log, (Log{"Read2 0x1000..0x1FFF", "Read2 0xFFF..0x3FFF", "Read2 0xFFF..0x3FFF",
                                     "Read2 0x1000..0x1FFF"}));
}

TEST(CacheRead, PrefersTheSecondInterfaceAndRefusesBadArguments)
{
    const struct {
        bool first, second;
        HRESULT result;
        Log log;
    } cases[] = {{true, true, S_OK, {"Read2 0x0..0xFFF"}},
                 {false, true, S_OK, {"Read2 0x0..0xFFF"}},
                 {true, false, S_OK, {"Read1 0x0..0xFFF"}},
                 {false, false, E_FAIL, {}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.result);
        CacheRig rig;
        CCacheMemory cache(c.first ? rig.first : nullptr, c.second ? &rig.platform : nullptr, nullptr, true);
        uint8_t byte = 0;
        EXPECT_EQ(cache.Read(0x40, 0x40, &byte, rig.everywhere), c.result);
        EXPECT_EQ(cache.Read(0x10, 0x1F, nullptr, rig.everywhere), E_POINTER);
        EXPECT_EQ(cache.Read(0x20, 0x1F, &byte, rig.everywhere), E_INVALIDARG);
        EXPECT_EQ(rig.platform.log, c.log);
        EXPECT_EQ(byte, c.result == S_OK ? FakePlatformMemory::Derived(0x40) : 0);
    }
}

} // namespace
