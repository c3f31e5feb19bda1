#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "support/StoreOps.h"
#include "workbench/store/VariantCodec.h"

namespace
{

using Bytes = std::vector<uint8_t>;

Variant Nested(int levels)
{
    Variant v = Variant::String("leaf");
    for (int i = 0; i < levels; ++i)
        v = Variant::Array(VT_ARRAY | VT_VARIANT, {v});
    return v;
}

Variant StringWithElements()
{
    Variant v = Variant::String("head");
    v.Elements().push_back(Variant::UInt(7));
    return v;
}

TEST(VariantCodec, EveryValueReadsBackEqualWithItsType)
{
    const Variant values[] = {Variant(),
                              Variant::String(""),
                              Variant::String("<none>"),
                              Variant::String(std::string("a\0b\xff\xc3\xa9", 6)),
                              Variant::UInt(0),
                              Variant::UInt(0xFFFFFFFF),
                              Variant::Array(VT_ARRAY_BSTR),
                              Variant::Array(VT_ARRAY_UINT),
                              StringList({"$PROJ_DIR$/a.elf", "-1", "elf", "0", "1", "4", "1"}),
                              Variant::Array(VT_ARRAY_UINT, {Variant::UInt(1), Variant::UInt(0x80000000)}),
                              Variant::Array(VT_ARRAY_BSTR, {Variant(), Variant::UInt(3)}),
                              Nested(VariantCodec::kMaxDepth),
                              Variant::Array(0x1234),
                              StringWithElements(),
                              Variant::String(std::string(100000, 'x'))};
    for (const Variant& value : values) {
        auto blob = VariantCodec::Encode(value);
        ASSERT_TRUE(blob);
        std::string error;
        auto back = VariantCodec::Decode(*blob, error);
        ASSERT_TRUE(back) << error;
        EXPECT_EQ(std::pair(*back, back->Type()), std::pair(value, value.Type()));
    }
}

TEST(VariantCodec, DamagedBlobIsRefusedWithAReason)
{
    const std::pair<Bytes, const char*> cases[] = {
        {{}, "not a stored value"},
        {{'X', 'V', 1, 0, 0}, "not a stored value"},
        {{'T', 'V', 2, 0, 0}, "unknown encoding (version 2)"},
        {{'T', 'V', 1}, "ends early"},
        {{'T', 'V', 1, 0, 8}, "unknown field"},
        {{'T', 'V', 1, 0x17, 1, 1, 'a'}, "not a string"},
        {{'T', 'V', 1, 8, 2, 1}, "not a number"},
        {{'T', 'V', 1, 0x80, 0x80, 0x04, 0}, "16 bits"},
        {{'T', 'V', 1, 0x17, 2, 0xFF, 0xFF, 0xFF, 0xFF, 0x1F}, "32 bits"},
        {{'T', 'V', 1, 8, 1, 9, 'a'}, "past the end"},
        {{'T', 'V', 1, 0x88, 0x40, 4, 0xFF, 0xFF, 0xFF, 0xFF, 0x0F}, "past the end"},
        {{'T', 'V', 1, 0, 0, 0}, "follow the value"},
    };
    for (const auto& [blob, reason] : cases) {
        std::string error;
        EXPECT_FALSE(VariantCodec::Decode(blob, error));
        EXPECT_NE(error.find(reason), std::string::npos) << error;
    }
}

TEST(VariantCodec, RefusesNestingBeyondTheLimitEitherWay)
{
    EXPECT_FALSE(VariantCodec::Encode(Nested(VariantCodec::kMaxDepth + 1)));
    Bytes blob{'T', 'V', 1};
    for (int i = 0; i <= VariantCodec::kMaxDepth + 1; ++i)
        blob.insert(blob.end(), {0x8C, 0x40, 4, 1}); // array of variants, one element
    blob.insert(blob.end(), {0, 0});
    std::string error;
    EXPECT_FALSE(VariantCodec::Decode(blob, error));
    EXPECT_NE(error.find("nested too deeply"), std::string::npos) << error;
}

TEST(VariantCodec, RefusesEveryTruncationOfAValue)
{
    auto blob = VariantCodec::Encode(Variant::Array(
        VT_ARRAY_BSTR, {Variant::String("first"), Variant::Array(VT_ARRAY_UINT, {Variant::UInt(300)})}));
    ASSERT_TRUE(blob);
    for (size_t n = 0; n < blob->size(); ++n) {
        std::string error;
        EXPECT_FALSE(VariantCodec::Decode(std::span(blob->data(), n), error)) << "length " << n;
        EXPECT_FALSE(error.empty());
    }
}

// Whatever random bytes decode to must be a value that encodes and decodes
// to itself; everything else must be refused, and nothing may crash.
TEST(VariantCodec, SurvivesRandomAndMutatedBlobs)
{
    std::mt19937 random(20240611);
    auto seed = VariantCodec::Encode(StringList({"a.elf", "0", "elf"}));
    ASSERT_TRUE(seed);
    int decoded = 0;
    for (int round = 0; round < 20000; ++round) {
        Bytes blob;
        if (round % 2 == 0) {
            blob.resize(random() % 40);
            for (auto& b : blob)
                b = static_cast<uint8_t>(random());
            if (blob.size() >= 3 && round % 4 == 0)
                blob[0] = 'T', blob[1] = 'V', blob[2] = 1;
        } else {
            blob = *seed;
            blob[3 + random() % (blob.size() - 3)] = static_cast<uint8_t>(random());
        }
        std::string error;
        auto value = VariantCodec::Decode(blob, error);
        if (!value) {
            EXPECT_FALSE(error.empty());
            continue;
        }
        ++decoded;
        auto again = VariantCodec::Encode(*value);
        ASSERT_TRUE(again);
        EXPECT_EQ(VariantCodec::Decode(*again, error), value);
    }
    EXPECT_GT(decoded, 0);
}

} // namespace
