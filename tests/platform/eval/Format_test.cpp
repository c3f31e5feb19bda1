#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>

#include "boundary/interfaces/Platform.h"
#include "platform/eval/EvalErrors.h"
#include "platform/eval/ExpressionEvaluator.h"
#include "support/EventRegistry.h"

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

// Widths by size: hexadecimal 2 a byte, decimal 3 5 10 20, octal 3 6 11 21, binary 8 a byte.
INSTANTIATE_TEST_SUITE_P(
    Unsigned, WritesText,
    ::testing::Values(FormatCase{"Hex32", CALL(UInt32ToText(0x1234, 16, t)), "H'00001234"},
                      FormatCase{"Hex8", CALL(UInt8ToText(0x2F, 16, t)), "H'2F"},
                      FormatCase{"CurrentRadixIsHex", CALL(UInt8ToText(255, 0, t)), "H'FF"},
                      FormatCase{"Decimal8", CALL(UInt8ToText(7, 10, t)), "D'007"},
                      FormatCase{"Decimal16", CALL(UInt16ToText(10, 10, t)), "D'00010"},
                      FormatCase{"Decimal32", CALL(UInt32ToText(10, 10, t)), "D'0000000010"},
                      FormatCase{"Octal16", CALL(UInt16ToText(8, 8, t)), "O'000010"},
                      FormatCase{"Octal32", CALL(UInt32ToText(8, 8, t)), "O'00000000010"},
                      FormatCase{"Octal64", CALL(UInt64ToText(8, 8, t)), "O'000000000000000000010"},
                      FormatCase{"Binary8", CALL(UInt8ToText(5, 2, t)), "B'00000101"},
                      FormatCase{"Binary16", CALL(UInt16ToText(5, 2, t)), "B'0000000000000101"},
                      FormatCase{"Hex64", CALL(UInt64ToText(0, 16, t)), "H'0000000000000000"},
                      FormatCase{"WiderThanItsWidth", CALL(UInt64ToText(UINT64_MAX, 8, t)),
                                 "O'1777777777777777777777"},
                      FormatCase{"Max64", CALL(UInt64ToText(UINT64_MAX, 10, t)), "D'18446744073709551615"}),
    CaseName);

// A signed value up to 32 bits is its 32-bit sign extension, wider than its width.
INSTANTIATE_TEST_SUITE_P(
    Signed, WritesText,
    ::testing::Values(
        FormatCase{"MinusOne8", CALL(Int8ToText(-1, 16, t)), "H'FFFFFFFF"},
        FormatCase{"Negative8", CALL(Int8ToText(-5, 16, t)), "H'FFFFFFFB"},
        FormatCase{"Positive8", CALL(Int8ToText(5, 16, t)), "H'05"},
        FormatCase{"Negative16Decimal", CALL(Int16ToText(-300, 10, t)), "D'4294966996"},
        FormatCase{"Negative16Octal", CALL(Int16ToText(-1, 8, t)), "O'37777777777"},
        FormatCase{"Positive32Binary", CALL(Int32ToText(31, 2, t)), "B'00000000000000000000000000011111"},
        FormatCase{"Negative8Binary", CALL(Int8ToText(-2, 2, t)), "B'11111111111111111111111111111110"},
        FormatCase{"Negative64", CALL(Int64ToText(-1, 16, t)), "H'FFFFFFFFFFFFFFFF"},
        FormatCase{"MostNegative64", CALL(Int64ToText(INT64_MIN, 16, t)), "H'8000000000000000"},
        FormatCase{"Negative64Decimal", CALL(Int64ToText(-1, 10, t)), "-D'1"},
        FormatCase{"MostNegative64Decimal", CALL(Int64ToText(INT64_MIN, 10, t)), "-D'9223372036854775808"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Addresses, WritesText,
    ::testing::Values(
        FormatCase{"HexFixed", CALL(AddressToText(0x1F, 16, VARIANT_TRUE, t)), "H'0000001F"},
        FormatCase{"DecimalFixed", CALL(AddressToText(31, 10, VARIANT_FALSE, t)), "D'0000000031"},
        FormatCase{"HexOperation", CALL(AddressToTextHex(0xABC, VARIANT_FALSE, t)), "H'00000ABC"},
        FormatCase{"FormatPrefixed", CALL(FormatAddress(0x1000, 0, 0, VARIANT_TRUE, t)), "H'00001000"},
        FormatCase{"FormatNoPrefix", CALL(FormatAddress(0x1F, 0, VARIANT_FALSE, VARIANT_FALSE, t)),
                   "0000001F"},
        FormatCase{"OnlyAllOnesIsAFlag", CALL(FormatAddress(0x1F, 0, 1, 1, t)), "0000001F"},
        FormatCase{"AutoSizeWithoutTargetIsFull", CALL(FormatAddress(0x1F, 0, VARIANT_TRUE, VARIANT_TRUE, t)),
                   "H'0000001F"}),
    CaseName);

// A real is its integer part, written as an integer of 4 or 8 bytes.
INSTANTIATE_TEST_SUITE_P(
    Reals, WritesText,
    ::testing::Values(FormatCase{"FloatTruncated", CALL(FloatToText(2.75f, 16, t)), "H'00000002"},
                      FormatCase{"DoubleTruncated", CALL(DoubleToText(1.5, 0, t)), "H'0000000000000001"},
                      FormatCase{"FloatNegative", CALL(FloatToText(-2.5f, 10, t)), "D'4294967294"},
                      FormatCase{"FloatLowest", CALL(FloatToText(-0x1p31f, 16, t)), "H'80000000"},
                      FormatCase{"FloatHighest", CALL(FloatToText(4294967040.0f, 16, t)), "H'FFFFFF00"},
                      FormatCase{"DoubleNegative", CALL(DoubleToText(-1.9, 16, t)), "H'FFFFFFFFFFFFFFFF"},
                      FormatCase{"DoubleLowest", CALL(DoubleToText(-0x1p63, 16, t)), "H'8000000000000000"},
                      FormatCase{"DoubleHighest", CALL(DoubleToText(0x1p64 - 2048, 16, t)),
                                 "H'FFFFFFFFFFFFF800"}),
    CaseName);

#undef CALL

TEST(WritesText, RealsNoIntegerHoldsAreRefused)
{
    ExpressionEvaluator eval;
    std::string text = "kept";
    EXPECT_EQ(eval.FloatToText(0x1p32f, 16, text), QE_EVAL_TOO_LARGE);
    EXPECT_EQ(eval.FloatToText(-0x1p31f - 256, 16, text), QE_EVAL_TOO_LARGE);
    EXPECT_EQ(eval.DoubleToText(0x1p64, 16, text), QE_EVAL_TOO_LARGE);
    EXPECT_EQ(eval.DoubleToText(INFINITY, 16, text), QE_EVAL_TOO_LARGE);
    EXPECT_EQ(eval.DoubleToText(NAN, 16, text), QE_EVAL_FLOAT_ERROR);
    EXPECT_EQ(eval.LastErrorText(), "Float error");
    EXPECT_EQ(text, "kept");
}

TEST(WritesText, FollowsCurrentRadix)
{
    ExpressionEvaluator eval;
    ASSERT_EQ(eval.SetRadix(8), S_OK);
    std::string text;
    ASSERT_EQ(eval.UInt32ToText(64, 0, text), S_OK);
    EXPECT_EQ(text, "O'00000000100");
    ASSERT_EQ(eval.FormatAddress(64, 0, 0, VARIANT_TRUE, text), S_OK);
    EXPECT_EQ(text, "H'00000040") << "an address is hexadecimal whatever the radix";
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

// The target's address limits, as the driver of a connected target gives them.
struct Limits : IQForwardTarget {
    HRESULT QueryInterface(const Guid&, void** out) override
    {
        *out = nullptr;
        return E_NOINTERFACE;
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT Forward(uint32_t& low, uint32_t& limit) override
    {
        low = 0;
        limit = highest;
        return answer;
    }
    uint32_t highest = 0;
    HRESULT answer = S_OK;
};

TEST(FormatAddress, AutoSizeFollowsTheTargetsHighestAddress)
{
    struct Case {
        uint32_t highest;
        HRESULT answer;
        const char* expected;
    };
    for (const Case& c : {Case{0xFF, S_OK, "1F"}, Case{0x100, S_OK, "001F"}, Case{0xFFFF, S_OK, "001F"},
                          Case{0x10000, S_OK, "00001F"}, Case{0xFFFFFF, S_OK, "00001F"},
                          Case{0x1000000, S_OK, "0000001F"}, Case{0xFF, E_FAIL, "0000001F"}}) {
        Limits limits;
        limits.highest = c.highest;
        limits.answer = c.answer;
        EventRegistry registry;
        registry.forwardTarget = &limits;
        ExpressionEvaluator eval(&registry);
        std::string text;
        ASSERT_EQ(eval.FormatAddress(0x1F, 0, VARIANT_TRUE, 0, text), S_OK);
        EXPECT_EQ(text, c.expected) << std::hex << c.highest;
        ASSERT_EQ(eval.FormatAddress(0x1F, 0, 0, 0, text), S_OK);
        EXPECT_EQ(text, "0000001F") << "without autoSize the width is full";
    }
}

TEST(FormatAddress, ValueWiderThanTheTargetKeepsItsDigits)
{
    Limits limits;
    limits.highest = 0xFFFF;
    EventRegistry registry;
    registry.forwardTarget = &limits;
    ExpressionEvaluator eval(&registry);
    std::string text;
    ASSERT_EQ(eval.FormatAddress(0x1000, 0, VARIANT_TRUE, 0, text), S_OK);
    EXPECT_EQ(text, "1000");
    ASSERT_EQ(eval.FormatAddress(0x123456, 0, VARIANT_TRUE, VARIANT_TRUE, text), S_OK);
    EXPECT_EQ(text, "H'123456");
}

} // namespace
