#include <gtest/gtest.h>

#include <string>

#include "platform/eval/EvalErrors.h"
#include "platform/eval/ExpressionEvaluator.h"
#include "support/Labels.h"

namespace
{

struct ErrorCase {
    std::string text;
    HRESULT expected;
};

TEST(Evaluate, FailuresGiveTheirCodeAndTextAndLeaveTheOutputAlone)
{
    const HRESULT syntax = QE_EVAL_SYNTAX;
    const std::string deep(10000, '(');
    for (const ErrorCase& c :
         {ErrorCase{"", syntax}, ErrorCase{"  \t ", syntax}, ErrorCase{"1+", syntax}, ErrorCase{"*1", syntax},
          ErrorCase{"(1+2", syntax}, ErrorCase{"1+2)", syntax}, ErrorCase{"()", syntax},
          ErrorCase{"1 2", syntax}, ErrorCase{"1<2", syntax}, ErrorCase{"B'102", syntax},
          ErrorCase{"H'", syntax}, ErrorCase{"Q'12", syntax}, ErrorCase{"0x", syntax},
          ErrorCase{"12G", syntax}, ErrorCase{"#!@", syntax}, ErrorCase{std::string{'1', '\0', '2'}, syntax},
          ErrorCase{"\xff\xfe", syntax},
          // Nesting too deep is a syntax error, not a crash.
          ErrorCase{deep + "1" + std::string(10000, ')'), syntax},
          ErrorCase{std::string(10000, '-') + "1", syntax}, ErrorCase{deep, syntax},
          // Syntax is checked before anything is evaluated; then the first error wins.
          ErrorCase{"1/0+", syntax}, ErrorCase{"nowhere)", syntax},
          ErrorCase{"nowhere/0", QE_EVAL_UNDEFINED_SYMBOL}, ErrorCase{"1/0", QE_EVAL_DIVIDE_BY_ZERO},
          ErrorCase{"7%0", QE_EVAL_DIVIDE_BY_ZERO}, ErrorCase{"1/(3-3)", QE_EVAL_DIVIDE_BY_ZERO},
          ErrorCase{"nowhere", QE_EVAL_UNDEFINED_SYMBOL}, ErrorCase{"main+nowhere", QE_EVAL_UNDEFINED_SYMBOL},
          ErrorCase{"10000000000000000", QE_EVAL_TOO_LARGE},
          ErrorCase{"D'18446744073709551616", QE_EVAL_TOO_LARGE}}) {
        SCOPED_TRACE(c.text.substr(0, 20));
        ExpressionEvaluator eval;
        eval.SetLabelLookup(TestLabels);
        uint64_t value = 0x5A5A;
        EXPECT_EQ(eval.Evaluate(c.text, 0, value), c.expected);
        EXPECT_EQ(value, 0x5A5Au);
        EXPECT_EQ(eval.LastErrorText(), EvalErrorText(c.expected));
    }
}

TEST(Evaluate, WithoutLookupNamesAreUndefinedSuccessClearsTheLastErrorNestingHasALimit)
{
    ExpressionEvaluator eval;
    uint64_t value = 0;
    EXPECT_EQ(eval.Evaluate("main", 0, value), QE_EVAL_UNDEFINED_SYMBOL);
    EXPECT_EQ(eval.LastErrorText(), "Undefined symbol");
    EXPECT_EQ(eval.Evaluate("1", 0, value), S_OK);
    EXPECT_EQ(eval.LastErrorText(), "");
    std::string text = "kept";
    EXPECT_EQ(eval.GetErrorText(E_OUTOFMEMORY, text), E_FAIL) << "an unknown code has no text";
    EXPECT_EQ(text, "kept");

    // Nesting at the limit still evaluates.
    const int depth = ExpressionParser::kMaxDepth;
    const std::string nested = std::string(depth, '(') + "5" + std::string(depth, ')');
    ASSERT_EQ(eval.Evaluate(nested, 0, value), S_OK);
    EXPECT_EQ(value, 5u);
    EXPECT_EQ(eval.Evaluate("(" + nested + ")", 0, value), QE_EVAL_SYNTAX);
}

} // namespace
