#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "support/PlainObject.h"
#include "support/RecordingComponent.h"
#include "workbench/BusyMark.h"
#include "workbench/ServiceRegistry.h"

namespace
{

constexpr Guid kIdA = "{11111111-0000-0000-0000-000000000001}"_guid;
constexpr Guid kIdB = "{11111111-0000-0000-0000-000000000002}"_guid;

IUnknown* Found(ServiceRegistry& registry, const Guid& id, HRESULT expected)
{
    PlainObject stale;
    IUnknown* out = &stale;
    EXPECT_EQ(registry.GetService(id, &out), expected);
    return out;
}

TEST(ServiceRegistryServices, LatestRegistrationHoldsUntilItsHolderWithdraws)
{
    ServiceRegistry registry;
    PlainObject first, second;
    EXPECT_EQ(Found(registry, kIdA, E_FAIL), nullptr);
    EXPECT_EQ(registry.RegisterService(kIdA, &first), S_OK);
    EXPECT_EQ(Found(registry, kIdA, S_OK), &first);
    EXPECT_EQ(Found(registry, kIdB, E_FAIL), nullptr);
    EXPECT_EQ(registry.RegisterService(kIdA, nullptr), E_POINTER);
    EXPECT_EQ(registry.RegisterService(kIdA, &second), S_OK);
    EXPECT_EQ(Found(registry, kIdA, S_OK), &second);
    EXPECT_EQ(registry.UnregisterService(kIdA, &first), E_FAIL) << "a replaced one cannot take the successor";
    EXPECT_EQ(Found(registry, kIdA, S_OK), &second);
    EXPECT_EQ(registry.UnregisterService(kIdA, &second), S_OK);
    EXPECT_EQ(Found(registry, kIdA, E_FAIL), nullptr);
    EXPECT_EQ(registry.UnregisterService(kIdB, &first), E_FAIL);
    EXPECT_EQ(registry.GetService(kIdA, nullptr), E_POINTER);
}

std::vector<IUnknown*> Providers(ServiceRegistry& registry, const Guid& id)
{
    int32_t count = -1;
    IUnknown** array = nullptr;
    EXPECT_EQ(registry.GetProviders(id, count, array), S_OK);
    if (count == 0) {
        EXPECT_EQ(array, nullptr);
    }
    return count > 0 ? std::vector<IUnknown*>(array, array + count) : std::vector<IUnknown*>{};
}

TEST(ServiceRegistryProviders, KeepRegistrationOrderAndIgnoreDuplicates)
{
    ServiceRegistry registry;
    PlainObject a, b, c;
    EXPECT_TRUE(Providers(registry, kIdA).empty());
    for (IUnknown* p : std::vector<IUnknown*>{&b, &a, &b, &c})
        EXPECT_EQ(registry.RegisterProvider(kIdA, p), S_OK);
    EXPECT_EQ(Providers(registry, kIdA), (std::vector<IUnknown*>{&b, &a, &c}));
    EXPECT_TRUE(Providers(registry, kIdB).empty());
    EXPECT_EQ(registry.UnregisterProvider(kIdA, &a), S_OK);
    EXPECT_EQ(registry.UnregisterProvider(kIdA, &a), E_FAIL);
    EXPECT_EQ(Providers(registry, kIdA), (std::vector<IUnknown*>{&b, &c}));
    EXPECT_EQ(registry.UnregisterProvider(kIdA, &b), S_OK);
    EXPECT_EQ(registry.UnregisterProvider(kIdA, &c), S_OK);
    EXPECT_TRUE(Providers(registry, kIdA).empty());
    EXPECT_EQ(registry.RegisterProvider(kIdA, nullptr), E_POINTER);
}

TEST(ServiceRegistryProviders, ArrayOutlivesChangesToOtherIds)
{
    ServiceRegistry registry;
    PlainObject a, other;
    registry.RegisterProvider(kIdA, &a);
    int32_t count = 0;
    IUnknown** array = nullptr;
    registry.GetProviders(kIdA, count, array);
    // Enough other ids to make the table grow several times.
    for (uint8_t i = 0; i < 200; ++i) {
        Guid id = kIdB;
        id.bytes[0] = i;
        registry.RegisterProvider(id, &other);
    }
    ASSERT_EQ(count, 1);
    EXPECT_EQ(array[0], &a);
}

TEST(ServiceRegistryBusy, MarksNestAndNeverGoBelowZeroAndAGuardHoldsOneForItsScope)
{
    // 's' sets, 'c' clears; the digit is IsBusy after the step.
    for (const std::string steps : {"s1c0", "s1s1c1c0", "c0c0s1c0"}) {
        ServiceRegistry registry;
        for (size_t i = 0; i < steps.size(); i += 2) {
            if (steps[i] == 's')
                EXPECT_EQ(registry.SetBusy(Ids::BusyRun), S_OK);
            else
                registry.ClearBusy(Ids::BusyRun);
            EXPECT_EQ(registry.IsBusy(Ids::BusyRun), steps[i + 1] - '0') << steps << " at " << i;
            EXPECT_EQ(registry.IsBusy(Ids::BusyLoad), 0);
        }
    }
    ServiceRegistry registry;
    std::optional<BusyMark> guard(std::in_place, &registry, Ids::BusyLoad);
    EXPECT_EQ(registry.IsBusy(Ids::BusyLoad), 1) << "a guard holds the mark for its scope";
    guard.reset();
    EXPECT_EQ(registry.IsBusy(Ids::BusyLoad), 0);
}

class ServiceRegistryBroadcast : public ::testing::Test
{
protected:
    std::vector<std::string> log;
    RecordingComponent a{"a", log}, b{"b", log}, c{"c", log}, d{"d", log};
    ServiceRegistry registry;

    void SetUp() override
    {
        for (auto* component : {&a, &b, &c})
            ASSERT_TRUE(registry.AddComponent(component));
    }
    void Send(int32_t param) { registry.Broadcast(Event{Ids::EVENT_RADIX_CHANGED, param}); }
};

TEST_F(ServiceRegistryBroadcast, ReachesEveryComponentInOrderIncludingTheSender)
{
    a.onEvent = [&](const Event& e) {
        if (e.param == 0)
            Send(7);
    };
    Send(0);
    EXPECT_EQ(log, (std::vector<std::string>{"a:0", "a:7", "b:7", "c:7", "b:0", "c:0"}));
    EXPECT_FALSE(registry.AddComponent(nullptr));
    EXPECT_FALSE(registry.AddComponent(&a)) << "no duplicates";
    EXPECT_FALSE(registry.RemoveComponent(&d));
}

TEST_F(ServiceRegistryBroadcast, ChangesDuringABroadcastHoldForTheRestOfItOrFromTheNext)
{
    a.onEvent = [&](const Event& e) {
        if (e.param == 1)
            registry.RemoveComponent(&b);
    };
    c.onEvent = [&](const Event& e) {
        if (e.param == 1) {
            registry.RemoveComponent(&c);
            registry.AddComponent(&d);
        }
    };
    Send(1);
    Send(2);
    EXPECT_EQ(log, (std::vector<std::string>{"a:1", "c:1", "a:2", "d:2"}))
        << "one removed is not called afterwards; a self-removal and an addition count from the next";
    EXPECT_EQ(registry.ComponentCount(), 2u);
}

} // namespace
