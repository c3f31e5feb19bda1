#include <gtest/gtest.h>

#include <string>

#include "platform/eval/EvalErrors.h"
#include "platform/eval/ExpressionEvaluator.h"
#include "support/Labels.h"

namespace
{

struct ErrorCase {
    const char* name;
    std::string text;
    HRESULT expected;
};

std::string CaseName(const ::testing::TestParamInfo<ErrorCase>& info)
{
    return info.param.name;
}

class FailsWith : public ::testing::TestWithParam<ErrorCase>
{
};

TEST_P(FailsWith, CodeAndText)
{
    ExpressionEvaluator eval;
    eval.SetLabelLookup(TestLabels);
    uint64_t value = 0x5A5A;
    EXPECT_EQ(eval.Evaluate(GetParam().text, 0, value), GetParam().expected);
    EXPECT_EQ(value, 0x5A5Au) << "a failure leaves the output alone";
    EXPECT_EQ(eval.LastErrorText(), EvalErrorText(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(
    Syntax, FailsWith,
    ::testing::Values(
        ErrorCase{"Empty", "", QE_EVAL_SYNTAX}, ErrorCase{"OnlyBlanks", "  \t ", QE_EVAL_SYNTAX},
        ErrorCase{"TrailingOperator", "1+", QE_EVAL_SYNTAX}, ErrorCase{"LeadingBinary", "*1", QE_EVAL_SYNTAX},
        ErrorCase{"UnclosedParen", "(1+2", QE_EVAL_SYNTAX}, ErrorCase{"StrayClose", "1+2)", QE_EVAL_SYNTAX},
        ErrorCase{"EmptyParens", "()", QE_EVAL_SYNTAX}, ErrorCase{"TwoOperands", "1 2", QE_EVAL_SYNTAX},
        ErrorCase{"SingleAngle", "1<2", QE_EVAL_SYNTAX},
        ErrorCase{"BadDigitForPrefix", "B'102", QE_EVAL_SYNTAX},
        ErrorCase{"PrefixWithoutDigits", "H'", QE_EVAL_SYNTAX},
        ErrorCase{"UnknownPrefix", "Q'12", QE_EVAL_SYNTAX}, ErrorCase{"BareCHexPrefix", "0x", QE_EVAL_SYNTAX},
        ErrorCase{"DigitThenLetters", "12G", QE_EVAL_SYNTAX}, ErrorCase{"Garbage", "#!@", QE_EVAL_SYNTAX},
        ErrorCase{"NulByte",
                  std::string("1\0"
                              "2",
                              3),
                  QE_EVAL_SYNTAX},
        ErrorCase{"HighBytes", "\xff\xfe", QE_EVAL_SYNTAX},
        ErrorCase{"DeepParentheses", std::string(10000, '(') + "1" + std::string(10000, ')'), QE_EVAL_SYNTAX},
        ErrorCase{"DeepUnary", std::string(10000, '-') + "1", QE_EVAL_SYNTAX},
        ErrorCase{"UnclosedDeep", std::string(10000, '('), QE_EVAL_SYNTAX},
        ErrorCase{"SyntaxBeatsDivideByZero", "1/0+", QE_EVAL_SYNTAX},
        ErrorCase{"SyntaxBeatsUnknownSymbol", "nowhere)", QE_EVAL_SYNTAX}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Semantic, FailsWith,
    ::testing::Values(ErrorCase{"DivideByZero", "1/0", QE_EVAL_DIVIDE_BY_ZERO},
                      ErrorCase{"ModuloByZero", "7%0", QE_EVAL_DIVIDE_BY_ZERO},
                      ErrorCase{"DivideByComputedZero", "1/(3-3)", QE_EVAL_DIVIDE_BY_ZERO},
                      ErrorCase{"UndefinedSymbol", "nowhere", QE_EVAL_UNDEFINED_SYMBOL},
                      ErrorCase{"UndefinedInExpression", "main+nowhere", QE_EVAL_UNDEFINED_SYMBOL},
                      ErrorCase{"FirstSemanticErrorWins", "nowhere/0", QE_EVAL_UNDEFINED_SYMBOL},
                      ErrorCase{"LiteralTooWide", "10000000000000000", QE_EVAL_TOO_LARGE},
                      ErrorCase{"DecimalTooWide", "D'18446744073709551616", QE_EVAL_TOO_LARGE}),
    CaseName);

TEST(Nesting, AtTheLimitStillEvaluates)
{
    ExpressionEvaluator eval;
    const int depth = ExpressionParser::kMaxDepth;
    uint64_t value = 0;
    const std::string text = std::string(depth, '(') + "5" + std::string(depth, ')');
    ASSERT_EQ(eval.Evaluate(text, 0, value), S_OK);
    EXPECT_EQ(value, 5u);
    EXPECT_EQ(eval.Evaluate("(" + text + ")", 0, value), QE_EVAL_SYNTAX);
}

TEST(Labels, WithoutLookupEveryNameIsUndefined)
{
    ExpressionEvaluator eval;
    uint64_t value = 0;
    EXPECT_EQ(eval.Evaluate("main", 0, value), QE_EVAL_UNDEFINED_SYMBOL);
}

TEST(LastError, ClearedBySuccess)
{
    ExpressionEvaluator eval;
    uint64_t value = 0;
    EXPECT_EQ(eval.Evaluate("1/0", 0, value), QE_EVAL_DIVIDE_BY_ZERO);
    EXPECT_EQ(eval.LastErrorText(), "Divide by zero");
    EXPECT_EQ(eval.Evaluate("1", 0, value), S_OK);
    EXPECT_EQ(eval.LastErrorText(), "");
}

TEST(ReporterText, UnknownCodeFails)
{
    ExpressionEvaluator eval;
    std::string text = "kept";
    EXPECT_EQ(eval.GetErrorText(E_OUTOFMEMORY, text), E_FAIL);
    EXPECT_EQ(text, "kept");
}

} // namespace
