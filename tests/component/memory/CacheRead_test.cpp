#include <gtest/gtest.h>

#include <string>

#include "component/memory/CCacheMemory.h"
#include "support/CacheRig.h"

namespace
{

using Range = std::pair<uint32_t, uint32_t>;
using Ranges = std::vector<Range>;

// The ranges the platform was asked for, in order.
Ranges Fetches(const FakeTarget& target)
{
    Ranges ranges;
    for (const auto& call : target.calls)
        ranges.emplace_back(call.start.Value(), call.end.Value());
    return ranges;
}

// Reads in turn through one cache over the whole map, each read checked
// against the target's bytes: what the platform was asked for says what was
// a hit and what was fetched.
TEST(CacheRead, FetchesWholePagesOnceAndJoinsThem)
{
    const struct {
        const char* what;
        std::vector<Range> reads;
        Ranges fetches;
    } cases[] = {
        {"a miss fetches the page", {{0x1010, 0x1013}}, {{0x1000, 0x1FFF}}},
        {"a hit asks nothing", {{0x1010, 0x1013}, {0x1000, 0x1FFF}, {0x1FFF, 0x1FFF}}, {{0x1000, 0x1FFF}}},
        {"a page boundary", {{0x1FFE, 0x2001}}, {{0x1000, 0x1FFF}, {0x2000, 0x2FFF}}},
        {"many pages", {{0x10800, 0x127FF}}, {{0x10000, 0x10FFF}, {0x11000, 0x11FFF}, {0x12000, 0x12FFF}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        CacheRig rig;
        CCacheMemory cache{&rig.first, &rig.second, &rig.second, true};
        for (const auto& [start, end] : c.reads) {
            std::vector<uint8_t> bytes(AddressRange(start, end).Size(), 0xEE);
            ASSERT_EQ(cache.Read(start, end, bytes.data(), rig.everywhere), S_OK);
            EXPECT_EQ(bytes, Expected(start, bytes.size()));
        }
        EXPECT_EQ(Fetches(rig.target), c.fetches);
    }
}

// A page size that does not divide the address space gives a last page that
// would run past the top: its fetch and its copy stop at 0xFFFFFFFF.
TEST(CacheRead, StopsAtTheLastAddress)
{
    const struct {
        uint32_t pageSize;
        uint32_t start;
        uint32_t fetchStart;
    } cases[] = {{0x1000, 0xFFFFFFFF, 0xFFFFF000},
                 {0x1000, 0xFFFFFFF0, 0xFFFFF000},
                 {0x3000, 0xFFFFFFFE, 0xFFFFF000},
                 {0x100000, 0xFFFFFFFF, 0xFFF00000}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pageSize);
        CacheRig rig;
        CCacheMemory cache(&rig.first, &rig.second, nullptr, true);
        ASSERT_EQ(cache.SetPageSize(c.pageSize), S_OK);
        const size_t count = AddressRange(c.start, TargetAddress::Top()).Size();
        std::vector<uint8_t> bytes(count + 1, 0xEE);
        ASSERT_EQ(cache.Read(c.start, 0xFFFFFFFF, bytes.data(), rig.everywhere), S_OK);
        EXPECT_EQ(std::vector<uint8_t>(bytes.begin(), bytes.end() - 1), Expected(c.start, count));
        EXPECT_EQ(bytes.back(), 0xEE);
        EXPECT_EQ(Fetches(rig.target), (Ranges{{c.fetchStart, 0xFFFFFFFF}}));
    }
}

TEST(CacheRead, OnlyTheAreasPartOfAPageIsFetchedAndTheRestReadsZero)
{
    CacheRig rig;
    CCacheMemory cache{&rig.first, &rig.second, &rig.second, true};
    std::vector<uint8_t> bytes(0x200, 0xEE);
    ASSERT_EQ(cache.Read(0x1000, 0x11FF, bytes.data(), {}), S_OK);
    EXPECT_EQ(bytes, std::vector<uint8_t>(0x200, 0));
    EXPECT_EQ(rig.target.CallCount(), 0u);

    // A page once cached stays as it was fetched: the areas count for a fresh cache.
    CCacheMemory fresh{&rig.first, &rig.second, &rig.second, true};
    const std::vector<CMemoryArea> areas{CMemoryArea{0x1100, 0x11FF}};
    ASSERT_EQ(fresh.Read(0x1000, 0x11FF, bytes.data(), areas), S_OK);
    EXPECT_EQ(Fetches(rig.target), (Ranges{{0x1100, 0x11FF}}));
    EXPECT_EQ(std::vector<uint8_t>(bytes.begin(), bytes.begin() + 0x100), std::vector<uint8_t>(0x100, 0));
    EXPECT_EQ(std::vector<uint8_t>(bytes.begin() + 0x100, bytes.end()), Expected(0x1100, 0x100));
}

TEST(CacheRead, DisabledEachReadIsOneCallAndEnablingAgainCachesAfresh)
{
    CacheRig rig;
    CCacheMemory cache{&rig.first, &rig.second, &rig.second, true};
    uint8_t byte = 0;
    ASSERT_EQ(cache.Read(0x1000, 0x1000, &byte, rig.everywhere), S_OK);
    cache.SetEnabled(VARIANT_FALSE);
    EXPECT_EQ(cache.PageCount(), 0u);
    std::vector<uint8_t> bytes(0x3001, 0xEE);
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(cache.Read(0x0FFF, 0x3FFF, bytes.data(), {}), S_OK);
        EXPECT_EQ(bytes, Expected(0x0FFF, 0x3001));
    }
    cache.SetEnabled(VARIANT_TRUE);
    ASSERT_EQ(cache.Read(0x1000, 0x1000, &byte, rig.everywhere), S_OK);
    ASSERT_EQ(cache.Read(0x1001, 0x1001, &byte, rig.everywhere), S_OK);
    EXPECT_EQ(Fetches(rig.target),
              (Ranges{{0x1000, 0x1FFF}, {0x0FFF, 0x3FFF}, {0x0FFF, 0x3FFF}, {0x1000, 0x1FFF}}));
}

TEST(CacheRead, PrefersTheSecondInterfaceAndRefusesBadArguments)
{
    const struct {
        bool first, second;
        HRESULT result;
        int generation; // 0: no call
    } cases[] = {
        {true, true, S_OK, 2}, {false, true, S_OK, 2}, {true, false, S_OK, 1}, {false, false, E_FAIL, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.generation);
        CacheRig rig;
        CCacheMemory cache(c.first ? &rig.first : nullptr, c.second ? &rig.second : nullptr, nullptr, true);
        uint8_t byte = 0;
        EXPECT_EQ(cache.Read(0x40, 0x40, &byte, rig.everywhere), c.result);
        EXPECT_EQ(cache.Read(0x10, 0x1F, nullptr, rig.everywhere), E_POINTER);
        EXPECT_EQ(cache.Read(0x20, 0x1F, &byte, rig.everywhere), E_INVALIDARG);
        ASSERT_EQ(rig.target.CallCount(), c.generation == 0 ? 0u : 1u);
        if (c.generation != 0) {
            EXPECT_EQ(rig.target.calls[0].generation, c.generation);
            EXPECT_EQ(byte, FakeTarget::Pattern(0x40));
        }
    }
}

} // namespace
