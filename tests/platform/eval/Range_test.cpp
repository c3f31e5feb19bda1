#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "platform/eval/EvalErrors.h"
#include "platform/eval/ExpressionEvaluator.h"

namespace
{

// Each case converts with one TextTo operation and answers the value as 64 bits.
using Convert = std::function<HRESULT(ExpressionEvaluator&, const std::string&, int64_t&)>;

template <class T> Convert Via(HRESULT (ExpressionEvaluator::*op)(const std::string&, int32_t, T&))
{
    return [op](ExpressionEvaluator& eval, const std::string& text, int64_t& out) {
        T value{};
        const HRESULT hr = (eval.*op)(text, 10, value);
        out = static_cast<int64_t>(value);
        return hr;
    };
}

struct RangeCase {
    Convert convert;
    std::string text;
    HRESULT expected;
    int64_t value;
};

TEST(TextTo, ValuesMustFitTheType)
{
    using E = ExpressionEvaluator;
    const Convert u8 = Via(&E::TextToUInt8Radix), u16 = Via(&E::TextToUInt16Radix),
                  u32 = Via(&E::TextToUInt32Radix), u64 = Via(&E::TextToUInt64Radix),
                  address = Via(&E::TextToAddressRadix), i8 = Via(&E::TextToInt8Radix),
                  i16 = Via(&E::TextToInt16Radix), i32 = Via(&E::TextToInt32Radix),
                  i64 = Via(&E::TextToInt64Radix);
    const HRESULT big = QE_EVAL_TOO_LARGE;
    for (const RangeCase& c :
         {RangeCase{u8, "255", S_OK, 255}, RangeCase{u8, "256", big, 0},
          // A negative value the width holds as two's complement is its bit pattern.
          RangeCase{u8, "-1", S_OK, 255}, RangeCase{u8, "-129", big, 0},
          RangeCase{u32, "-2", S_OK, 4294967294}, RangeCase{u16, "65535", S_OK, 65535},
          RangeCase{u16, "65536", big, 0}, RangeCase{u32, "4294967295", S_OK, 4294967295},
          RangeCase{u32, "4294967296", big, 0}, RangeCase{address, "H'FFFFFFFF", S_OK, 4294967295},
          RangeCase{address, "H'100000000", big, 0}, RangeCase{u64, "-1", S_OK, -1},
          RangeCase{i8, "-128", S_OK, -128}, RangeCase{i8, "127", S_OK, 127}, RangeCase{i8, "-129", big, 0},
          RangeCase{i8, "128", big, 0}, RangeCase{i16, "-32768", S_OK, -32768},
          RangeCase{i16, "32768", big, 0}, RangeCase{i32, "-2147483648", S_OK, -2147483648LL},
          RangeCase{i32, "-2147483649", big, 0}, RangeCase{i64, "H'8000000000000000", S_OK, INT64_MIN},
          RangeCase{i64, "9223372036854775807", S_OK, INT64_MAX}}) {
        SCOPED_TRACE(c.text);
        ExpressionEvaluator eval;
        int64_t value = 0;
        EXPECT_EQ(c.convert(eval, c.text, value), c.expected);
        if (c.expected == S_OK) {
            EXPECT_EQ(value, c.value);
        } else {
            EXPECT_EQ(eval.LastErrorText(), EvalErrorText(c.expected));
        }
    }
}

TEST(RadixArgument, ZeroMeansCurrentRadixAndUnknownOnesAreRefused)
{
    ExpressionEvaluator eval;
    uint32_t kept = 9;
    EXPECT_EQ(eval.TextToUInt32Radix("1", 7, kept), E_INVALIDARG);
    EXPECT_EQ(eval.TextToUInt32Radix("1", -16, kept), E_INVALIDARG);
    EXPECT_EQ(kept, 9u);
    ASSERT_EQ(eval.SetRadix(10), S_OK);
    uint32_t value = 0;
    EXPECT_EQ(eval.TextToUInt32Radix("10", 0, value), S_OK);
    EXPECT_EQ(value, 10u);
    EXPECT_EQ(eval.TextToAddress("10", value), S_OK);
    EXPECT_EQ(value, 10u);
    EXPECT_EQ(eval.TextToUInt32Radix("10", 2, value), S_OK);
    EXPECT_EQ(value, 2u);
}

TEST(ParsesReal, DoubleAndFloat)
{
    struct RealCase {
        std::string text;
        HRESULT expected;
        double value;
    };
    for (const RealCase& c :
         {RealCase{"1.5", S_OK, 1.5}, RealCase{"-2.5e3", S_OK, -2500}, RealCase{"  3.25 ", S_OK, 3.25},
          RealCase{"", QE_EVAL_SYNTAX, 0}, RealCase{"1.5x", QE_EVAL_SYNTAX, 0},
          RealCase{"1+2", QE_EVAL_SYNTAX, 0}, RealCase{"1e999", QE_EVAL_TOO_LARGE, 0}}) {
        SCOPED_TRACE(c.text);
        ExpressionEvaluator eval;
        double wide = -7;
        EXPECT_EQ(eval.TextToDouble(c.text, wide), c.expected);
        if (c.expected == S_OK) {
            EXPECT_DOUBLE_EQ(wide, c.value);
        }
    }

    // A float refuses what only a double holds.
    ExpressionEvaluator eval;
    float value = 1;
    EXPECT_EQ(eval.TextToFloat("1e300", value), QE_EVAL_TOO_LARGE);
    EXPECT_EQ(eval.TextToFloat("0.5", value), S_OK);
    EXPECT_FLOAT_EQ(value, 0.5f);
}

} // namespace
