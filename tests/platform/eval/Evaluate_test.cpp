#include <gtest/gtest.h>

#include <string>

#include "platform/eval/ExpressionEvaluator.h"
#include "support/Labels.h"

namespace
{

struct ValueCase {
    const char* name;
    int32_t radix;
    std::string text;
    uint64_t expected;
};

std::string CaseName(const ::testing::TestParamInfo<ValueCase>& info)
{
    return info.param.name;
}

class EvaluatesTo : public ::testing::TestWithParam<ValueCase>
{
};

TEST_P(EvaluatesTo, Value)
{
    ExpressionEvaluator eval;
    eval.SetLabelLookup(TestLabels);
    uint64_t value = 0xBAD;
    ASSERT_EQ(eval.Evaluate(GetParam().text, GetParam().radix, value), S_OK) << eval.LastErrorText();
    EXPECT_EQ(value, GetParam().expected);
    EXPECT_EQ(eval.LastErrorText(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, EvaluatesTo,
    ::testing::Values(ValueCase{"DefaultRadixIsHex", 0, "1F", 0x1F}, ValueCase{"Radix10", 10, "31", 31},
                      ValueCase{"Radix8", 8, "37", 31}, ValueCase{"Radix2", 2, "11111", 31},
                      ValueCase{"HexPrefix", 10, "H'1F", 31}, ValueCase{"HexPrefixLower", 10, "h'1f", 31},
                      ValueCase{"DecimalPrefix", 16, "D'31", 31},
                      ValueCase{"DecimalPrefixLower", 16, "d'31", 31},
                      ValueCase{"OctalPrefix", 16, "O'37", 31}, ValueCase{"OctalPrefixLower", 2, "o'37", 31},
                      ValueCase{"BinaryPrefix", 16, "B'11111", 31},
                      ValueCase{"BinaryPrefixLower", 8, "b'11111", 31},
                      ValueCase{"CHexPrefix", 10, "0x1F", 31}, ValueCase{"CHexPrefixUpper", 2, "0X1f", 31},
                      ValueCase{"ZeroDIsHexInRadix16", 16, "0d31", 0xD31},
                      ValueCase{"Max64", 16, "FFFFFFFFFFFFFFFF", UINT64_MAX},
                      ValueCase{"Max64Decimal", 10, "18446744073709551615", UINT64_MAX},
                      ValueCase{"LeadingZeros", 10, "0000000000000000000000042", 42}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(Words, EvaluatesTo,
                         ::testing::Values(ValueCase{"HexWordIsNumber", 16, "DEAD", 0xDEAD},
                                           ValueCase{"HexWordLowerIsNumber", 16, "dead", 0xDEAD},
                                           ValueCase{"HexWordBeatsLabel", 16, "BEEF", 0xBEEF},
                                           ValueCase{"SameWordInDecimalIsLabel", 10, "BEEF", 1},
                                           ValueCase{"NonHexWordIsLabel", 16, "main", 0x1000},
                                           ValueCase{"UnderscoreLabel", 16, "_stack_top", 0x20008000},
                                           ValueCase{"DottedLabel", 16, "loop.1", 7},
                                           ValueCase{"LabelInArithmetic", 16, "main+10", 0x1010},
                                           ValueCase{"SingleLetterHexDigit", 16, "B", 0xB}),
                         CaseName);

INSTANTIATE_TEST_SUITE_P(
    Operators, EvaluatesTo,
    ::testing::Values(ValueCase{"MulBeforeAdd", 10, "2+3*4", 14}, ValueCase{"Parentheses", 10, "(2+3)*4", 20},
                      ValueCase{"SubtractLeftToRight", 10, "10-3-2", 5},
                      ValueCase{"DivideLeftToRight", 10, "100/10/5", 2}, ValueCase{"Modulo", 10, "17%5", 2},
                      ValueCase{"AddBeforeShift", 10, "1<<2+1", 8}, ValueCase{"ShiftRight", 16, "F0>>4", 0xF},
                      ValueCase{"ShiftBeforeAnd", 16, "FF&1<<4", 0x10},
                      ValueCase{"AndBeforeXor", 16, "F^F&3", 0xC}, ValueCase{"XorBeforeOr", 16, "1|3^2", 1},
                      ValueCase{"ShiftBy64Empties", 10, "1<<64", 0},
                      ValueCase{"HugeShiftEmpties", 16, "FF>>FFFFFFFFFFFFFFFF", 0},
                      ValueCase{"ShiftBy63", 10, "1<<63", 0x8000000000000000},
                      ValueCase{"NestedParentheses", 10, "((((1+2))*(3)))", 9},
                      ValueCase{"BlanksEverywhere", 10, " \t( 1 +\t2 ) *\n3 ", 9},
                      ValueCase{"AdditionWraps", 16, "FFFFFFFFFFFFFFFF+2", 1},
                      ValueCase{"MultiplicationWraps", 16, "8000000000000000*2", 0}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(Unary, EvaluatesTo,
                         ::testing::Values(ValueCase{"Minus", 10, "-1", UINT64_MAX},
                                           ValueCase{"MinusBindsTighterThanMul", 10, "-2*3", 0 - uint64_t{6}},
                                           ValueCase{"DoubleMinus", 10, "--5", 5},
                                           ValueCase{"BinaryThenUnaryMinus", 10, "3--2", 5},
                                           ValueCase{"Plus", 10, "+7", 7},
                                           ValueCase{"Complement", 16, "~0", UINT64_MAX},
                                           ValueCase{"ComplementMask", 16, "~F&FF", 0xF0},
                                           ValueCase{"MinusOfParentheses", 10, "-(2+3)+10", 5},
                                           ValueCase{"MixedChain", 10, "-~-~0", 2}),
                         CaseName);

} // namespace
