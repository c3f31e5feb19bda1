#include <gtest/gtest.h>

#include <memory>

#include "component/memory/CCacheMemory.h"
#include "component/memory/CCacheMemoryWithSize.h"
#include "support/MemoryRig.h"

namespace
{

enum class Kind { Plain, Verified, Reporting };

struct WriteCase {
    Kind kind;
    AccessSize sizedWith; // 0: the plain cache
    const char* op;       // the platform operation it takes
};

const WriteCase kCases[] = {
    {Kind::Plain, 0, "Write2"},
    {Kind::Verified, 0, "WriteVerified3"},
    {Kind::Reporting, 0, "WriteReporting5"},
    {Kind::Plain, 4, "WriteSized2"},
    {Kind::Verified, 2, "WriteSizedVerified3"},
    {Kind::Reporting, 8, "WriteSizedReporting5"},
};

std::unique_ptr<CCache> MakeCache(CacheRig& rig, AccessSize sizedWith)
{
    if (sizedWith == 0)
        return std::make_unique<CCacheMemory>(rig.first, &rig.platform, &rig.platform, true);
    return std::make_unique<CCacheMemoryWithSize>(sizedWith, 0, rig.first, &rig.platform, &rig.platform,
                                                  true);
}

HRESULT WriteBy(CCache& cache, Kind kind, TargetAddress start, TargetAddress end, const uint8_t* bytes)
{
    VariantBool failed = VARIANT_FALSE;
    TargetAddress address = 0;
    int32_t written = 0, found = 0;
    switch (kind) {
    case Kind::Plain:
        return cache.Write(start, end, bytes);
    case Kind::Verified:
        return cache.WriteVerified(start, end, VARIANT_TRUE, bytes);
    case Kind::Reporting:
        return cache.WriteReporting(start, end, VARIANT_TRUE, bytes, failed, address, written, found);
    }
    return E_FAIL;
}

// Each kind of write reaches the platform by its own operation and empties
// the cache, also when it fails, so that no stale byte is read back.
TEST(CacheWrite, ReachesThePlatformAndLeavesNoStaleByte)
{
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.op);
        CacheRig rig;
        auto cache = MakeCache(rig, c.sizedWith);
        std::vector<uint8_t> bytes(0x10);
        ASSERT_EQ(cache->Read(0x1000, 0x100F, bytes.data(), rig.everywhere), S_OK);
        const uint8_t fresh[4] = {0xDE, 0xAD, 0xBE, 0xEF};
        ASSERT_EQ(WriteBy(*cache, c.kind, 0x1004, 0x1007, fresh), S_OK);
        EXPECT_EQ(cache->PageCount(), 0u);
        ASSERT_EQ(cache->Read(0x1000, 0x100F, bytes.data(), rig.everywhere), S_OK);
        EXPECT_EQ(bytes[4], 0xDE);
        EXPECT_EQ(bytes, rig.platform.Bytes(0x1000, 0x10));
        EXPECT_EQ(rig.platform.log[1], FakePlatformMemory::Line(c.op, 0x1004, 0x1007, c.sizedWith));
        EXPECT_EQ(rig.platform.log.size(), 3u);

        rig.platform.answers[c.op] = E_OUTOFMEMORY;
        EXPECT_EQ(WriteBy(*cache, c.kind, 0x1000, 0x1000, fresh), E_OUTOFMEMORY);
        EXPECT_EQ(cache->PageCount(), 0u);
    }
}

TEST(CacheWrite, VerifiedAndReportingFailWithoutTheirInterface)
{
    FakePlatformMemory platform({FakeArea{0, 0xFFFFFFFF}}, {1, 2, 3, 4});
    CCacheMemory cache(platform.AsFirst(), &platform, nullptr, true);
    uint8_t byte = 0;
    ASSERT_EQ(cache.Read(0, 0, &byte, {{CMemoryArea{0, 0xFFFFFFFF}}}), S_OK);
    EXPECT_EQ(WriteBy(cache, Kind::Verified, 0, 0, &byte), E_FAIL);
    EXPECT_EQ(cache.PageCount(), 0u);
    EXPECT_EQ(WriteBy(cache, Kind::Reporting, 0, 0, &byte), E_FAIL);
    CCacheMemory bare(nullptr, nullptr, nullptr, true);
    EXPECT_EQ(WriteBy(bare, Kind::Plain, 0, 0, &byte), E_FAIL);
    EXPECT_EQ(platform.log.size(), 1u);
}

TEST(CacheWrite, BadArgumentsAreRefusedWithoutAccess)
{
    CacheRig rig;
    CCacheMemory cache(nullptr, &rig.platform, &rig.platform, true);
    uint8_t byte = 0;
    EXPECT_EQ(cache.Write(0, 0, nullptr), E_POINTER);
    EXPECT_EQ(cache.WriteVerified(5, 4, VARIANT_TRUE, &byte), E_INVALIDARG);
    EXPECT_EQ(rig.platform.log, Log{});
}

} // namespace
