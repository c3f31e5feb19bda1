#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "platform/eval/ExpressionEvaluator.h"

namespace
{

using Format = std::function<HRESULT(ExpressionEvaluator&, std::string&)>;

struct FormatCase {
    const char* name;
    Format format;
    std::string expected;
};

std::string CaseName(const ::testing::TestParamInfo<FormatCase>& info)
{
    return info.param.name;
}

class WritesText : public ::testing::TestWithParam<FormatCase>
{
};

TEST_P(WritesText, Text)
{
    ExpressionEvaluator eval;
    std::string text;
    ASSERT_EQ(GetParam().format(eval, text), S_OK);
    EXPECT_EQ(text, GetParam().expected);
}

#define CALL(expr) [](ExpressionEvaluator& e, std::string& t) { return e.expr; }

INSTANTIATE_TEST_SUITE_P(
    Integers, WritesText,
    ::testing::Values(FormatCase{"Hex", CALL(UInt32ToText(0xBEEF, 16, t)), "H'BEEF"},
                      FormatCase{"CurrentRadixIsHex", CALL(UInt8ToText(255, 0, t)), "H'FF"},
                      FormatCase{"Decimal", CALL(UInt16ToText(1234, 10, t)), "D'1234"},
                      FormatCase{"Octal", CALL(UInt32ToText(8, 8, t)), "O'10"},
                      FormatCase{"Binary", CALL(UInt8ToText(5, 2, t)), "B'101"},
                      FormatCase{"Zero", CALL(UInt64ToText(0, 16, t)), "H'0"},
                      FormatCase{"Max64", CALL(UInt64ToText(UINT64_MAX, 10, t)), "D'18446744073709551615"},
                      FormatCase{"NegativeHex", CALL(Int8ToText(-5, 16, t)), "-H'5"},
                      FormatCase{"NegativeDecimal", CALL(Int16ToText(-300, 10, t)), "-D'300"},
                      FormatCase{"PositiveSigned", CALL(Int32ToText(31, 2, t)), "B'11111"},
                      FormatCase{"MostNegative", CALL(Int64ToText(INT64_MIN, 16, t)), "-H'8000000000000000"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Addresses, WritesText,
    ::testing::Values(
        FormatCase{"HexPadded", CALL(AddressToText(0x1F, 16, VARIANT_TRUE, t)), "H'0000001F"},
        FormatCase{"DecimalUnpadded", CALL(AddressToText(31, 10, VARIANT_FALSE, t)), "D'31"},
        FormatCase{"HexOperation", CALL(AddressToTextHex(0xABC, VARIANT_FALSE, t)), "H'00000ABC"},
        FormatCase{"FormatFull", CALL(FormatAddress(0x1F, 0, VARIANT_FALSE, VARIANT_TRUE, t)), "H'0000001F"},
        FormatCase{"FormatAutoSize", CALL(FormatAddress(0x1F, 0, VARIANT_TRUE, VARIANT_TRUE, t)), "H'1F"},
        FormatCase{"FormatNoPrefix", CALL(FormatAddress(0x1F, 0, VARIANT_FALSE, VARIANT_FALSE, t)),
                   "0000001F"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(Reals, WritesText,
                         ::testing::Values(FormatCase{"Double", CALL(DoubleToText(1.5, 0, t)), "1.5"},
                                           FormatCase{"Float", CALL(FloatToText(0.25f, 16, t)), "0.25"}),
                         CaseName);

#undef CALL

TEST(WritesText, FollowsCurrentRadix)
{
    ExpressionEvaluator eval;
    ASSERT_EQ(eval.SetRadix(8), S_OK);
    std::string text;
    ASSERT_EQ(eval.UInt32ToText(64, 0, text), S_OK);
    EXPECT_EQ(text, "O'100");
}

TEST(WritesText, RejectsUnknownRadix)
{
    ExpressionEvaluator eval;
    std::string text = "kept";
    EXPECT_EQ(eval.UInt32ToText(1, 3, text), E_INVALIDARG);
    EXPECT_EQ(eval.AddressToText(1, 36, VARIANT_FALSE, text), E_INVALIDARG);
    EXPECT_EQ(eval.DoubleToText(1, 5, text), E_INVALIDARG);
    EXPECT_EQ(text, "kept");
}

// What is written must read back as the same value in any current radix.
TEST(WritesText, RoundTripsThroughEvaluate)
{
    for (int32_t radix : {2, 8, 10, 16}) {
        for (int64_t value : {int64_t{0}, int64_t{-1}, int64_t{12345}, INT64_MIN, INT64_MAX}) {
            ExpressionEvaluator eval;
            std::string text;
            ASSERT_EQ(eval.Int64ToText(value, radix, text), S_OK);
            ASSERT_EQ(eval.SetRadix(radix == 16 ? 2 : 16), S_OK);
            int64_t back = 0;
            EXPECT_EQ(eval.TextToInt64(text, back), S_OK) << text;
            EXPECT_EQ(back, value) << text;
        }
    }
}

} // namespace
