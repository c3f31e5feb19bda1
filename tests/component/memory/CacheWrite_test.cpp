#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "component/memory/CCacheMemory.h"
#include "component/memory/CCacheMemoryWithSize.h"
#include "support/CacheRig.h"

namespace
{

using Op = FakeTarget::Op;

enum class Kind { Plain, Verified, Reporting };

struct WriteCase {
    const char* name;
    Kind kind;
    AccessSize sizedWith; // 0: the plain cache
    Op op;
    int generation;
};

const WriteCase kCases[] = {
    {"Plain", Kind::Plain, 0, Op::Write, 2},
    {"Verified", Kind::Verified, 0, Op::WriteVerified, 3},
    {"Reporting", Kind::Reporting, 0, Op::WriteReporting, 5},
    {"SizedPlain", Kind::Plain, 4, Op::WriteSized, 2},
    {"SizedVerified", Kind::Verified, 2, Op::WriteSizedVerified, 3},
    {"SizedReporting", Kind::Reporting, 8, Op::WriteSizedReporting, 5},
};

std::unique_ptr<CCache> MakeCache(CacheRig& rig, AccessSize sizedWith, bool withFirst = true)
{
    IQPlatformMemory* first = withFirst ? &rig.first : nullptr;
    if (sizedWith == 0)
        return std::make_unique<CCacheMemory>(first, &rig.second, &rig.second, true);
    return std::make_unique<CCacheMemoryWithSize>(sizedWith, 0, first, &rig.second, &rig.second, true);
}

HRESULT WriteBy(CCache& cache, Kind kind, TargetAddress start, TargetAddress end, const uint8_t* bytes)
{
    VariantBool failed = VARIANT_FALSE;
    TargetAddress address = 0;
    int32_t written = 0;
    int32_t found = 0;
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

class CacheWrite : public testing::TestWithParam<WriteCase>
{
};

TEST_P(CacheWrite, ReachesThePlatformAndLeavesNoStaleByte)
{
    const auto& c = GetParam();
    CacheRig rig;
    auto cache = MakeCache(rig, c.sizedWith);
    std::vector<uint8_t> bytes(0x10);
    ASSERT_EQ(cache->Read(0x1000, 0x100F, bytes.data(), rig.everywhere), S_OK);

    const uint8_t fresh[4] = {0xDE, 0xAD, 0xBE, 0xEF};
    ASSERT_EQ(WriteBy(*cache, c.kind, 0x1004, 0x1007, fresh), S_OK);
    ASSERT_EQ(rig.target.CallCount(), 2u);
    const auto& call = rig.target.calls[1];
    EXPECT_EQ(call.op, c.op);
    EXPECT_EQ(call.generation, c.generation);
    EXPECT_EQ(call.start, 0x1004u);
    EXPECT_EQ(call.end, 0x1007u);
    EXPECT_EQ(call.accessSize, c.sizedWith == 0 ? 1 : c.sizedWith);
    EXPECT_EQ(cache->PageCount(), 0u);

    ASSERT_EQ(cache->Read(0x1000, 0x100F, bytes.data(), rig.everywhere), S_OK);
    EXPECT_EQ(rig.target.CallCount(), 3u);
    auto expected = Expected(0x1000, 0x10);
    std::copy(fresh, fresh + 4, expected.begin() + 4);
    EXPECT_EQ(bytes, expected);
}

TEST_P(CacheWrite, FailureGivesThePlatformCodeAndStillEmpties)
{
    const auto& c = GetParam();
    CacheRig rig;
    auto cache = MakeCache(rig, c.sizedWith);
    uint8_t byte = 0;
    ASSERT_EQ(cache->Read(0x2000, 0x2000, &byte, rig.everywhere), S_OK);
    rig.target.writeResult = E_OUTOFMEMORY;
    EXPECT_EQ(WriteBy(*cache, c.kind, 0x2000, 0x2000, &byte), E_OUTOFMEMORY);
    EXPECT_EQ(cache->PageCount(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Kinds, CacheWrite, testing::ValuesIn(kCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(CacheWriteFallback, PlainWritesUseTheFirstInterfaceWithoutTheSecond)
{
    CacheRig rig;
    CCacheMemory plain(&rig.first, nullptr, nullptr, true);
    CCacheMemoryWithSize sized(2, 1, &rig.first, nullptr, nullptr, true);
    const uint8_t bytes[2] = {1, 2};
    EXPECT_EQ(plain.Write(0x10, 0x11, bytes), S_OK);
    EXPECT_EQ(sized.Write(0x10, 0x11, bytes), S_OK);
    ASSERT_EQ(rig.target.CallCount(), 2u);
    EXPECT_EQ(rig.target.calls[0].op, Op::Write);
    EXPECT_EQ(rig.target.calls[1].op, Op::WriteSized);
    EXPECT_EQ(rig.target.calls[1].accessSize, 2);
    EXPECT_EQ(rig.target.calls[1].generation, 1);
}

TEST(CacheWriteMissingInterface, VerifiedAndReportingFailWithoutTheirInterface)
{
    CacheRig rig;
    rig.second.offerFifth = false;
    CCacheMemory cache(&rig.first, &rig.second, nullptr, true);
    uint8_t byte = 0;
    ASSERT_EQ(cache.Read(0, 0, &byte, rig.everywhere), S_OK);
    EXPECT_EQ(WriteBy(cache, Kind::Verified, 0, 0, &byte), E_FAIL);
    EXPECT_EQ(cache.PageCount(), 0u);
    EXPECT_EQ(WriteBy(cache, Kind::Reporting, 0, 0, &byte), E_FAIL);
    CCacheMemory bare(nullptr, nullptr, nullptr, true);
    EXPECT_EQ(WriteBy(bare, Kind::Plain, 0, 0, &byte), E_FAIL);
    EXPECT_EQ(rig.target.CallCount(), 1u);
}

TEST(CacheWriteReporting, PassesTheFailureDetailsBack)
{
    CacheRig rig;
    CCacheMemory cache(nullptr, &rig.second, &rig.second, true);
    rig.target.writeResult = E_FAIL;
    const uint8_t value = 0x5C;
    VariantBool failed = VARIANT_FALSE;
    TargetAddress address = 0;
    int32_t written = 0;
    int32_t found = 0;
    EXPECT_EQ(cache.WriteReporting(0x30, 0x30, VARIANT_TRUE, &value, failed, address, written, found),
              E_FAIL);
    EXPECT_EQ(failed, VARIANT_TRUE);
    EXPECT_EQ(address, 0x30u);
    EXPECT_EQ(written, 0x5C);
    EXPECT_EQ(found, FakeTarget::Pattern(0x30));
}

TEST(CacheWriteArguments, BadArgumentsAreRefusedWithoutAccess)
{
    CacheRig rig;
    CCacheMemory cache(nullptr, &rig.second, &rig.second, true);
    uint8_t byte = 0;
    EXPECT_EQ(cache.Write(0, 0, nullptr), E_POINTER);
    EXPECT_EQ(cache.WriteVerified(5, 4, VARIANT_TRUE, &byte), E_INVALIDARG);
    EXPECT_EQ(rig.target.CallCount(), 0u);
}

} // namespace
