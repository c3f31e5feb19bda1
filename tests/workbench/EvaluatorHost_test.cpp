#include <gtest/gtest.h>

#include "boundary/Ids.h"
#include "support/RecordingEvaluator.h"
#include "workbench/EvaluatorHost.h"
#include "workbench/ServiceRegistry.h"

namespace
{

// Only identity matters here: the host never calls an evaluator.
struct EvaluatorHostTest : ::testing::Test {
    ServiceRegistry registry;
    EvaluatorHost host{registry};
    RecordingEvaluator platform, session, later;
    IQEvaluator2* Current() { return GetServiceAs<IQEvaluator2>(&registry, Ids::IQEvaluator2); }
};

TEST_F(EvaluatorHostTest, ASessionEvaluatorCoversThePlatformsUntilCleared)
{
    registry.RegisterService(Ids::IQEvaluator2, platform.Service());
    EXPECT_EQ(host.SetEvaluator(&session), S_OK);
    EXPECT_EQ(Current(), &session);
    EXPECT_EQ(host.ClearEvaluator(), S_OK);
    EXPECT_EQ(Current(), &platform);
    EXPECT_EQ(host.ClearEvaluator(), S_FALSE) << "nothing left in front";
    EXPECT_EQ(Current(), &platform);
    EXPECT_EQ(host.SetEvaluator(nullptr), E_POINTER);
}

TEST_F(EvaluatorHostTest, ClearingLeavesWhatWasThereBeforeOrRegisteredMeanwhile)
{
    host.SetEvaluator(&session);
    host.SetEvaluator(&session);
    host.ClearEvaluator();
    EXPECT_EQ(Current(), nullptr);
    registry.RegisterService(Ids::IQEvaluator2, platform.Service());
    host.SetEvaluator(&session);
    registry.RegisterService(Ids::IQEvaluator2, later.Service());
    host.ClearEvaluator();
    EXPECT_EQ(Current(), &later);
}

} // namespace
