#include <gtest/gtest.h>

#include "boundary/Ids.h"
#include "platform/eval/ExpressionEvaluator.h"
#include "support/Recording.h"
#include "support/RecordingComponent.h"

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
    std::vector<std::string> broadcasts;
    RecordingComponent broadcast{"radix", broadcasts};
    broadcast.onEvent = [](const Event& event) { EXPECT_EQ(event.id, Ids::EVENT_RADIX_CHANGED); };
    registry.deliverTo = &broadcast;
    ExpressionEvaluator eval(&registry);
    for (int32_t radix : {0, 1, 3, 17, -16, 1000})
        EXPECT_EQ(eval.SetRadix(radix), E_INVALIDARG) << radix;
    int32_t current = 0;
    eval.GetRadix(current);
    EXPECT_EQ(current, 16);
    EXPECT_TRUE(broadcasts.empty());
    for (int32_t radix : {10, 2, 8, 16}) {
        ASSERT_EQ(eval.SetRadix(radix), S_OK);
        eval.GetRadix(current);
        EXPECT_EQ(current, radix);
    }
    EXPECT_EQ(broadcasts, (std::vector<std::string>{"radix:10", "radix:2", "radix:8", "radix:16"}));
    EXPECT_EQ(ExpressionEvaluator(nullptr).SetRadix(10), S_OK) << "without a registry";
}

} // namespace
