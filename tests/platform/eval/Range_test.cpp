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
    const char* name;
    Convert convert;
    std::string text;
    HRESULT expected;
    int64_t value;
};

std::string CaseName(const ::testing::TestParamInfo<RangeCase>& info)
{
    return info.param.name;
}

class FitsType : public ::testing::TestWithParam<RangeCase>
{
};

TEST_P(FitsType, Conversion)
{
    ExpressionEvaluator eval;
    int64_t value = 0;
    EXPECT_EQ(GetParam().convert(eval, GetParam().text, value), GetParam().expected);
    if (GetParam().expected == S_OK) {
        EXPECT_EQ(value, GetParam().value);
    } else {
        EXPECT_EQ(eval.LastErrorText(), EvalErrorText(GetParam().expected));
    }
}

const HRESULT kBig = QE_EVAL_TOO_LARGE;

INSTANTIATE_TEST_SUITE_P(
    Unsigned, FitsType,
    ::testing::Values(
        RangeCase{"U8Max", Via(&ExpressionEvaluator::TextToUInt8Radix), "255", S_OK, 255},
        RangeCase{"U8Over", Via(&ExpressionEvaluator::TextToUInt8Radix), "256", kBig, 0},
        // A negative value the width holds as two's complement is its bit pattern.
        RangeCase{"U8Negative", Via(&ExpressionEvaluator::TextToUInt8Radix), "-1", S_OK, 255},
        RangeCase{"U8TooNegative", Via(&ExpressionEvaluator::TextToUInt8Radix), "-129", kBig, 0},
        RangeCase{"U32Negative", Via(&ExpressionEvaluator::TextToUInt32Radix), "-2", S_OK, 4294967294},
        RangeCase{"U16Max", Via(&ExpressionEvaluator::TextToUInt16Radix), "65535", S_OK, 65535},
        RangeCase{"U16Over", Via(&ExpressionEvaluator::TextToUInt16Radix), "65536", kBig, 0},
        RangeCase{"U32Max", Via(&ExpressionEvaluator::TextToUInt32Radix), "4294967295", S_OK, 4294967295},
        RangeCase{"U32Over", Via(&ExpressionEvaluator::TextToUInt32Radix), "4294967296", kBig, 0},
        RangeCase{"AddressMax", Via(&ExpressionEvaluator::TextToAddressRadix), "H'FFFFFFFF", S_OK,
                  4294967295},
        RangeCase{"AddressOver", Via(&ExpressionEvaluator::TextToAddressRadix), "H'100000000", kBig, 0},
        RangeCase{"U64Max", Via(&ExpressionEvaluator::TextToUInt64Radix), "-1", S_OK, -1}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Signed, FitsType,
    ::testing::Values(
        RangeCase{"I8Min", Via(&ExpressionEvaluator::TextToInt8Radix), "-128", S_OK, -128},
        RangeCase{"I8Max", Via(&ExpressionEvaluator::TextToInt8Radix), "127", S_OK, 127},
        RangeCase{"I8Under", Via(&ExpressionEvaluator::TextToInt8Radix), "-129", kBig, 0},
        RangeCase{"I8Over", Via(&ExpressionEvaluator::TextToInt8Radix), "128", kBig, 0},
        RangeCase{"I16Min", Via(&ExpressionEvaluator::TextToInt16Radix), "-32768", S_OK, -32768},
        RangeCase{"I16Over", Via(&ExpressionEvaluator::TextToInt16Radix), "32768", kBig, 0},
        RangeCase{"I32Min", Via(&ExpressionEvaluator::TextToInt32Radix), "-2147483648", S_OK, -2147483648LL},
        RangeCase{"I32Under", Via(&ExpressionEvaluator::TextToInt32Radix), "-2147483649", kBig, 0},
        RangeCase{"I64Min", Via(&ExpressionEvaluator::TextToInt64Radix), "H'8000000000000000", S_OK,
                  INT64_MIN},
        RangeCase{"I64Max", Via(&ExpressionEvaluator::TextToInt64Radix), "9223372036854775807", S_OK,
                  INT64_MAX}),
    CaseName);

TEST(RadixArgument, RejectsUnknownRadix)
{
    ExpressionEvaluator eval;
    uint32_t value = 9;
    EXPECT_EQ(eval.TextToUInt32Radix("1", 7, value), E_INVALIDARG);
    EXPECT_EQ(eval.TextToUInt32Radix("1", -16, value), E_INVALIDARG);
    EXPECT_EQ(value, 9u);
}

TEST(RadixArgument, ZeroMeansCurrentRadix)
{
    ExpressionEvaluator eval;
    ASSERT_EQ(eval.SetRadix(10), S_OK);
    uint32_t value = 0;
    EXPECT_EQ(eval.TextToUInt32Radix("10", 0, value), S_OK);
    EXPECT_EQ(value, 10u);
    EXPECT_EQ(eval.TextToAddress("10", value), S_OK);
    EXPECT_EQ(value, 10u);
    EXPECT_EQ(eval.TextToUInt32Radix("10", 2, value), S_OK);
    EXPECT_EQ(value, 2u);
}

struct RealCase {
    const char* name;
    std::string text;
    HRESULT expected;
    double value;
};

class ParsesReal : public ::testing::TestWithParam<RealCase>
{
};

TEST_P(ParsesReal, DoubleAndFloat)
{
    ExpressionEvaluator eval;
    double wide = -7;
    EXPECT_EQ(eval.TextToDouble(GetParam().text, wide), GetParam().expected);
    if (GetParam().expected == S_OK) {
        EXPECT_DOUBLE_EQ(wide, GetParam().value);
    }
}

INSTANTIATE_TEST_SUITE_P(Reals, ParsesReal,
                         ::testing::Values(RealCase{"Plain", "1.5", S_OK, 1.5},
                                           RealCase{"Exponent", "-2.5e3", S_OK, -2500},
                                           RealCase{"Blanks", "  3.25 ", S_OK, 3.25},
                                           RealCase{"Empty", "", QE_EVAL_SYNTAX, 0},
                                           RealCase{"TrailingGarbage", "1.5x", QE_EVAL_SYNTAX, 0},
                                           RealCase{"Expression", "1+2", QE_EVAL_SYNTAX, 0},
                                           RealCase{"Overflow", "1e999", QE_EVAL_TOO_LARGE, 0}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(ParsesReal, FloatRefusesDoubleOnlyMagnitude)
{
    ExpressionEvaluator eval;
    float value = 1;
    EXPECT_EQ(eval.TextToFloat("1e300", value), QE_EVAL_TOO_LARGE);
    EXPECT_EQ(eval.TextToFloat("0.5", value), S_OK);
    EXPECT_FLOAT_EQ(value, 0.5f);
}

} // namespace
