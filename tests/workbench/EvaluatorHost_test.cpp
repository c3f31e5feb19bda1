#include <gtest/gtest.h>

#include "boundary/Ids.h"
#include "tests/component/support/FakeEvaluator.h"
#include "workbench/EvaluatorHost.h"
#include "workbench/ServiceRegistry.h"

namespace
{

// Only identity matters here: the host never calls an evaluator.
using StubEvaluator = FakeEvaluator;

IQEvaluator2* Current(ServiceRegistry& registry)
{
    return GetServiceAs<IQEvaluator2>(&registry, Ids::IQEvaluator2);
}

TEST(EvaluatorHost, ASessionEvaluatorCoversThePlatformsUntilCleared)
{
    ServiceRegistry registry;
    EvaluatorHost host(registry);
    StubEvaluator platform, session;
    registry.RegisterService(Ids::IQEvaluator2, &platform);

    EXPECT_EQ(host.SetEvaluator(&session), S_OK);
    EXPECT_EQ(Current(registry), &session);
    EXPECT_EQ(host.ClearEvaluator(), S_OK);
    EXPECT_EQ(Current(registry), &platform);
    // Nothing left in front: clearing again changes nothing.
    EXPECT_EQ(host.ClearEvaluator(), S_FALSE);
    EXPECT_EQ(Current(registry), &platform);
}

TEST(EvaluatorHost, WithoutAPlatformEvaluatorClearingLeavesNone)
{
    ServiceRegistry registry;
    EvaluatorHost host(registry);
    StubEvaluator session;
    host.SetEvaluator(&session);
    host.SetEvaluator(&session);
    host.ClearEvaluator();
    EXPECT_EQ(Current(registry), nullptr);
    EXPECT_EQ(host.SetEvaluator(nullptr), E_POINTER);
}

TEST(EvaluatorHost, AnEvaluatorRegisteredMeanwhileIsNotTakenAway)
{
    ServiceRegistry registry;
    EvaluatorHost host(registry);
    StubEvaluator platform, session, later;
    registry.RegisterService(Ids::IQEvaluator2, &platform);
    host.SetEvaluator(&session);
    registry.RegisterService(Ids::IQEvaluator2, &later);
    host.ClearEvaluator();
    EXPECT_EQ(Current(registry), &later);
}

} // namespace
