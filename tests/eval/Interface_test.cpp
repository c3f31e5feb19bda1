#include <gtest/gtest.h>

#include "boundary/Ids.h"
#include "platform/eval/ExpressionEvaluator.h"
#include "support/RecordingRegistry.h"

namespace
{

struct QueryCase {
    const char* name;
    Guid iid;
    bool answered;
};

class Query : public ::testing::TestWithParam<QueryCase>
{
};

TEST_P(Query, Answers)
{
    ExpressionEvaluator eval;
    void* out = &eval;
    EXPECT_EQ(eval.QueryInterface(GetParam().iid, &out) == S_OK, GetParam().answered);
    EXPECT_EQ(out != nullptr, GetParam().answered);
}

INSTANTIATE_TEST_SUITE_P(Interfaces, Query,
                         ::testing::Values(QueryCase{"IUnknown", Ids::IUnknown, true},
                                           QueryCase{"Evaluator", Ids::IQEvaluator, true},
                                           QueryCase{"Evaluator2", Ids::IQEvaluator2, true},
                                           QueryCase{"ErrorReporter", Ids::IQErrorReporter, true},
                                           QueryCase{"Component", Ids::IQComponent, false}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(Query, ReporterIsTheSameObject)
{
    ExpressionEvaluator eval;
    auto* reporter = QueryAs<IQErrorReporter>(static_cast<IQEvaluator2*>(&eval), Ids::IQErrorReporter);
    ASSERT_NE(reporter, nullptr);
    std::string text;
    EXPECT_EQ(reporter->GetErrorText(MakeResult(0x80040901u), text), S_OK);
    EXPECT_EQ(text, "Syntax error");
    EXPECT_EQ(eval.QueryInterface(Ids::IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(eval.AddRef(), 1u);
    EXPECT_EQ(eval.Release(), 0u);
}

TEST(Radix, DefaultsToSixteen)
{
    ExpressionEvaluator eval;
    int32_t radix = 0;
    EXPECT_EQ(eval.GetRadix(radix), S_OK);
    EXPECT_EQ(radix, 16);
}

TEST(Radix, ChangeIsBroadcast)
{
    RecordingRegistry registry;
    ExpressionEvaluator eval(&registry);
    for (int32_t radix : {10, 2, 8, 16}) {
        ASSERT_EQ(eval.SetRadix(radix), S_OK);
        int32_t current = 0;
        eval.GetRadix(current);
        EXPECT_EQ(current, radix);
        ASSERT_FALSE(registry.events.empty());
        EXPECT_EQ(registry.events.back().id, Ids::EVENT_RADIX_CHANGED);
        EXPECT_EQ(registry.events.back().param, radix);
    }
    EXPECT_EQ(registry.events.size(), 4u);
}

TEST(Radix, UnknownRadixIsRefusedAndNotBroadcast)
{
    RecordingRegistry registry;
    ExpressionEvaluator eval(&registry);
    for (int32_t radix : {0, 1, 3, 17, -16, 1000}) {
        EXPECT_EQ(eval.SetRadix(radix), E_INVALIDARG);
    }
    int32_t current = 0;
    eval.GetRadix(current);
    EXPECT_EQ(current, 16);
    EXPECT_TRUE(registry.events.empty());
}

TEST(Radix, NullRegistryIsAllowed)
{
    ExpressionEvaluator eval(nullptr);
    EXPECT_EQ(eval.SetRadix(10), S_OK);
}

} // namespace
