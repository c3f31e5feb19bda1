#include <gtest/gtest.h>

#include "boundary/Ids.h"
#include "platform/eval/ExpressionEvaluator.h"
#include "support/FakePlatformFunctions.h"
#include "support/Recording.h"

namespace
{

TEST(Query, ReporterIsTheSameObject)
{
    ExpressionEvaluator eval;
    auto* reporter = QueryAs<IQErrorReporter>(static_cast<IQEvaluator2*>(&eval), Ids::IQErrorReporter);
    ASSERT_NE(reporter, nullptr);
    std::string text;
    EXPECT_EQ(reporter->GetErrorText(MakeResult(0x80040901u), text), S_OK);
    EXPECT_EQ(text, "Syntax error");
    EXPECT_EQ(eval.QueryInterface(Ids::IUnknown, nullptr), E_POINTER);
}

TEST(Radix, ChangeIsBroadcastAndAnUnknownRadixRefusedWithoutOne)
{
    CallLog log;
    RecordingRegistry registry(log);
    EventLog broadcast;
    registry.deliverTo = &broadcast;
    ExpressionEvaluator eval(&registry);
    for (int32_t radix : {0, 1, 3, 17, -16, 1000})
        EXPECT_EQ(eval.SetRadix(radix), E_INVALIDARG) << radix;
    int32_t current = 0;
    eval.GetRadix(current);
    EXPECT_EQ(current, 16);
    EXPECT_TRUE(broadcast.events.empty());
    for (int32_t radix : {10, 2, 8, 16}) {
        ASSERT_EQ(eval.SetRadix(radix), S_OK);
        eval.GetRadix(current);
        EXPECT_EQ(current, radix);
        ASSERT_FALSE(broadcast.events.empty());
        EXPECT_EQ(broadcast.events.back().id, Ids::EVENT_RADIX_CHANGED);
        EXPECT_EQ(broadcast.events.back().param, radix);
    }
    EXPECT_EQ(broadcast.events.size(), 4u);
    EXPECT_EQ(ExpressionEvaluator(nullptr).SetRadix(10), S_OK) << "without a registry";
}

} // namespace
