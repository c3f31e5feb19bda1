#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "workbench/store/VariantCodec.h"

namespace
{

using Bytes = std::vector<uint8_t>;

Variant Strings(std::vector<std::string> texts)
{
    Variant v = Variant::Array(VT_ARRAY_BSTR);
    for (auto& t : texts)
        v.Elements().push_back(Variant::String(std::move(t)));
    return v;
}

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

struct RoundTripCase {
    const char* name;
    Variant value;
};

class VariantRoundTrip : public ::testing::TestWithParam<RoundTripCase>
{
};

TEST_P(VariantRoundTrip, ReadsBackEqual)
{
    const Variant& value = GetParam().value;
    auto blob = VariantCodec::Encode(value);
    ASSERT_TRUE(blob);
    std::string error;
    auto back = VariantCodec::Decode(*blob, error);
    ASSERT_TRUE(back) << error;
    EXPECT_EQ(*back, value);
    EXPECT_EQ(back->Type(), value.Type());
}

INSTANTIATE_TEST_SUITE_P(
    VariantCodec, VariantRoundTrip,
    ::testing::Values(
        RoundTripCase{"Empty", Variant()}, RoundTripCase{"EmptyString", Variant::String("")},
        RoundTripCase{"String", Variant::String("<none>")},
        RoundTripCase{"StringWithNulAndHighBytes", Variant::String(std::string("a\0b\xff\xc3\xa9", 6))},
        RoundTripCase{"ZeroNumber", Variant::UInt(0)},
        RoundTripCase{"LargestNumber", Variant::UInt(0xFFFFFFFF)},
        RoundTripCase{"EmptyStringArray", Variant::Array(VT_ARRAY_BSTR)},
        RoundTripCase{"EmptyNumberArray", Variant::Array(VT_ARRAY_UINT)},
        RoundTripCase{"ModuleList", Strings({"$PROJ_DIR$/a.elf", "-1", "elf", "0", "1", "4", "1"})},
        RoundTripCase{"NumberArray",
                      Variant::Array(VT_ARRAY_UINT, {Variant::UInt(1), Variant::UInt(0x80000000)})},
        RoundTripCase{"MixedElements", Variant::Array(VT_ARRAY_BSTR, {Variant(), Variant::UInt(3)})},
        RoundTripCase{"DeepestAllowed", Nested(VariantCodec::kMaxDepth)},
        RoundTripCase{"OddTypeCode", Variant::Array(0x1234)},
        RoundTripCase{"StringCarryingElements", StringWithElements()},
        RoundTripCase{"LongText", Variant::String(std::string(100000, 'x'))}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(VariantCodec, KeepsAnEmptyArrayApartFromAnEmptyVariant)
{
    auto none = VariantCodec::Encode(Variant());
    auto emptyList = VariantCodec::Encode(Variant::Array(VT_ARRAY_BSTR));
    ASSERT_TRUE(none && emptyList);
    EXPECT_NE(*none, *emptyList);
    EXPECT_EQ(none->size(), 5u);
    EXPECT_EQ(emptyList->size(), 6u);
}

TEST(VariantCodec, RefusesToEncodeWhatItCouldNotRead)
{
    EXPECT_FALSE(VariantCodec::Encode(Nested(VariantCodec::kMaxDepth + 1)));
}

struct CorruptCase {
    const char* name;
    Bytes blob;
    const char* reason;
};

class CorruptBlob : public ::testing::TestWithParam<CorruptCase>
{
};

TEST_P(CorruptBlob, IsRefusedWithAReason)
{
    std::string error;
    EXPECT_FALSE(VariantCodec::Decode(GetParam().blob, error));
    EXPECT_NE(error.find(GetParam().reason), std::string::npos) << error;
}

INSTANTIATE_TEST_SUITE_P(
    VariantCodec, CorruptBlob,
    ::testing::Values(
        CorruptCase{"Nothing", {}, "not a stored value"},
        CorruptCase{"WrongMagic", {'X', 'V', 1, 0, 0}, "not a stored value"},
        CorruptCase{"UnknownVersion", {'T', 'V', 2, 0, 0}, "unknown encoding (version 2)"},
        CorruptCase{"NoNode", {'T', 'V', 1}, "ends early"},
        CorruptCase{"UnknownField", {'T', 'V', 1, 0, 8}, "unknown field"},
        CorruptCase{"TextOnNumber", {'T', 'V', 1, 0x17, 1, 1, 'a'}, "not a string"},
        CorruptCase{"NumberOnString", {'T', 'V', 1, 8, 2, 1}, "not a number"},
        CorruptCase{"TypeBeyond16Bits", {'T', 'V', 1, 0x80, 0x80, 0x04, 0}, "16 bits"},
        CorruptCase{"VarintBeyond32Bits", {'T', 'V', 1, 0x17, 2, 0xFF, 0xFF, 0xFF, 0xFF, 0x1F}, "32 bits"},
        CorruptCase{"TextPastEnd", {'T', 'V', 1, 8, 1, 9, 'a'}, "past the end"},
        CorruptCase{
            "CountPastEnd", {'T', 'V', 1, 0x88, 0x40, 4, 0xFF, 0xFF, 0xFF, 0xFF, 0x0F}, "past the end"},
        CorruptCase{"TrailingBytes", {'T', 'V', 1, 0, 0, 0}, "follow the value"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(VariantCodec, RefusesNestingBeyondTheLimit)
{
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
    auto seed = VariantCodec::Encode(Strings({"a.elf", "0", "elf"}));
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
