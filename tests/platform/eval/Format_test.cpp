#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>

#include "platform/eval/EvalErrors.h"
#include "platform/eval/ExpressionEvaluator.h"
#include "support/FakePlatformFunctions.h"
#include "support/Recording.h"

namespace
{

using Format = std::function<HRESULT(ExpressionEvaluator&, std::string&)>;

struct FormatCase {
    Format format;
    std::string expected;
};

// A case that calls one operation on the evaluator, writing into t.
#define ROW(expr, text) (FormatCase{[](ExpressionEvaluator& e, std::string& t) { return e.expr; }, text})

TEST(WritesText, Text)
{
    for (const FormatCase& c :
         {// Widths by size: hexadecimal 2 a byte, decimal 3 5 10 20, octal 3 6 11 21, binary 8 a byte.
          ROW(UInt32ToText(0x1234, 16, t), "H'00001234"), ROW(UInt8ToText(0x2F, 16, t), "H'2F"),
          ROW(UInt8ToText(255, 0, t), "H'FF"), ROW(UInt8ToText(7, 10, t), "D'007"),
          ROW(UInt16ToText(10, 10, t), "D'00010"), ROW(UInt32ToText(10, 10, t), "D'0000000010"),
          ROW(UInt16ToText(8, 8, t), "O'000010"), ROW(UInt32ToText(8, 8, t), "O'00000000010"),
          ROW(UInt64ToText(8, 8, t), "O'000000000000000000010"), ROW(UInt8ToText(5, 2, t), "B'00000101"),
          ROW(UInt16ToText(5, 2, t), "B'0000000000000101"), ROW(UInt64ToText(0, 16, t), "H'0000000000000000"),
          ROW(UInt64ToText(UINT64_MAX, 8, t), "O'1777777777777777777777"),
          ROW(UInt64ToText(UINT64_MAX, 10, t), "D'18446744073709551615"),
          // A signed value up to 32 bits is its 32-bit sign extension, wider than its width.
          ROW(Int8ToText(-1, 16, t), "H'FFFFFFFF"), ROW(Int8ToText(-5, 16, t), "H'FFFFFFFB"),
          ROW(Int8ToText(5, 16, t), "H'05"), ROW(Int16ToText(-300, 10, t), "D'4294966996"),
          ROW(Int16ToText(-1, 8, t), "O'37777777777"),
          ROW(Int32ToText(31, 2, t), "B'00000000000000000000000000011111"),
          ROW(Int8ToText(-2, 2, t), "B'11111111111111111111111111111110"),
          ROW(Int64ToText(-1, 16, t), "H'FFFFFFFFFFFFFFFF"),
          ROW(Int64ToText(INT64_MIN, 16, t), "H'8000000000000000"), ROW(Int64ToText(-1, 10, t), "-D'1"),
          ROW(Int64ToText(INT64_MIN, 10, t), "-D'9223372036854775808"),
          ROW(AddressToText(0x1F, 16, VARIANT_TRUE, t), "H'0000001F"),
          ROW(AddressToText(31, 10, VARIANT_FALSE, t), "D'0000000031"),
          ROW(AddressToTextHex(0xABC, VARIANT_FALSE, t), "H'00000ABC"),
          ROW(FormatAddress(0x1000, 0, 0, VARIANT_TRUE, t), "H'00001000"),
          ROW(FormatAddress(0x1F, 0, VARIANT_FALSE, VARIANT_FALSE, t), "0000001F"),
          ROW(FormatAddress(0x1F, 0, 1, 1, t), "0000001F"),
          ROW(FormatAddress(0x1F, 0, VARIANT_TRUE, VARIANT_TRUE, t), "H'0000001F"),
          // A real is its integer part, written as an integer of 4 or 8 bytes.
          ROW(FloatToText(2.75f, 16, t), "H'00000002"), ROW(DoubleToText(1.5, 0, t), "H'0000000000000001"),
          ROW(FloatToText(-2.5f, 10, t), "D'4294967294"), ROW(FloatToText(-0x1p31f, 16, t), "H'80000000"),
          ROW(FloatToText(4294967040.0f, 16, t), "H'FFFFFF00"),
          ROW(DoubleToText(-1.9, 16, t), "H'FFFFFFFFFFFFFFFF"),
          ROW(DoubleToText(-0x1p63, 16, t), "H'8000000000000000"),
          ROW(DoubleToText(0x1p64 - 2048, 16, t), "H'FFFFFFFFFFFFF800")}) {
        SCOPED_TRACE(c.expected);
        ExpressionEvaluator eval;
        std::string text;
        ASSERT_EQ(c.format(eval, text), S_OK);
        EXPECT_EQ(text, c.expected);
    }
}

#undef ROW

TEST(WritesText, RealsNoIntegerHoldsAndUnknownRadixesAreRefused)
{
    ExpressionEvaluator eval;
    std::string text = "kept";
    EXPECT_EQ(eval.FloatToText(0x1p32f, 16, text), QE_EVAL_TOO_LARGE);
    EXPECT_EQ(eval.FloatToText(-0x1p31f - 256, 16, text), QE_EVAL_TOO_LARGE);
    EXPECT_EQ(eval.DoubleToText(0x1p64, 16, text), QE_EVAL_TOO_LARGE);
    EXPECT_EQ(eval.DoubleToText(INFINITY, 16, text), QE_EVAL_TOO_LARGE);
    EXPECT_EQ(eval.DoubleToText(NAN, 16, text), QE_EVAL_FLOAT_ERROR);
    EXPECT_EQ(eval.LastErrorText(), "Float error");
    EXPECT_EQ(eval.UInt32ToText(1, 3, text), E_INVALIDARG);
    EXPECT_EQ(eval.AddressToText(1, 36, VARIANT_FALSE, text), E_INVALIDARG);
    EXPECT_EQ(eval.DoubleToText(1, 5, text), E_INVALIDARG);
    EXPECT_EQ(text, "kept");
}

TEST(WritesText, FollowsTheCurrentRadixAndReadsBackInAny)
{
    ExpressionEvaluator eval;
    ASSERT_EQ(eval.SetRadix(8), S_OK);
    std::string text;
    ASSERT_EQ(eval.UInt32ToText(64, 0, text), S_OK);
    EXPECT_EQ(text, "O'00000000100");
    ASSERT_EQ(eval.FormatAddress(64, 0, 0, VARIANT_TRUE, text), S_OK);
    EXPECT_EQ(text, "H'00000040") << "an address is hexadecimal whatever the radix";

    // What is written reads back as the same value in any current radix.
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

TEST(FormatAddress, AutoSizeFollowsTheTargetsHighestAddress)
{
    struct Case {
        uint32_t highest;
        HRESULT answer;
        uint32_t value;
        VariantBool prefix;
        const char* expected;
    };
    for (const Case& c :
         {Case{0xFF, S_OK, 0x1F, 0, "1F"}, Case{0x100, S_OK, 0x1F, 0, "001F"},
          Case{0xFFFF, S_OK, 0x1F, 0, "001F"}, Case{0x10000, S_OK, 0x1F, 0, "00001F"},
          Case{0xFFFFFF, S_OK, 0x1F, 0, "00001F"}, Case{0x1000000, S_OK, 0x1F, 0, "0000001F"},
          Case{0xFF, E_FAIL, 0x1F, 0, "0000001F"},
          // A value wider than the target keeps its digits.
          Case{0xFFFF, S_OK, 0x1000, 0, "1000"}, Case{0xFFFF, S_OK, 0x123456, VARIANT_TRUE, "H'123456"}}) {
        SCOPED_TRACE(c.expected);
        FakeForwardTarget limits;
        limits.highest = c.highest;
        limits.result = c.answer;
        CallLog log;
        RecordingRegistry registry(log);
        registry.Provide(Ids::ForwardTarget, &limits);
        ExpressionEvaluator eval(&registry);
        std::string text;
        ASSERT_EQ(eval.FormatAddress(c.value, 0, VARIANT_TRUE, c.prefix, text), S_OK);
        EXPECT_EQ(text, c.expected);
        ASSERT_EQ(eval.FormatAddress(0x1F, 0, 0, 0, text), S_OK);
        EXPECT_EQ(text, "0000001F") << "without autoSize the width is full";
    }
}

} // namespace
