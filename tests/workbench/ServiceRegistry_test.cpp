#include <gtest/gtest.h>

#include <array>
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

enum class Op { Register, Unregister, Get };

// One call on the registry: object -1 stands for a null pointer.
struct Step {
    Op op;
    const Guid* id;
    int object;
    HRESULT expected;
    int expectedObject = -1; // for Get: the object answered, -1 for null
};

struct ServiceCase {
    const char* name;
    std::vector<Step> steps;
};

class ServiceRules : public ::testing::TestWithParam<ServiceCase>
{
};

TEST_P(ServiceRules, FollowsTheSteps)
{
    ServiceRegistry registry;
    std::array<PlainObject, 2> objects;
    auto pointer = [&](int i) -> IUnknown* { return i < 0 ? nullptr : &objects[i]; };
    int n = 0;
    for (const Step& step : GetParam().steps) {
        SCOPED_TRACE("step " + std::to_string(n++));
        switch (step.op) {
        case Op::Register:
            EXPECT_EQ(registry.RegisterService(*step.id, pointer(step.object)), step.expected);
            break;
        case Op::Unregister:
            EXPECT_EQ(registry.UnregisterService(*step.id, pointer(step.object)), step.expected);
            break;
        case Op::Get: {
            IUnknown* out = &objects[0];
            EXPECT_EQ(registry.GetService(*step.id, &out), step.expected);
            EXPECT_EQ(out, pointer(step.expectedObject));
            break;
        }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    ServiceRegistryServices, ServiceRules,
    ::testing::Values(
        ServiceCase{"UnknownIdFailsWithNull", {{Op::Get, &kIdA, 0, E_FAIL, -1}}},
        ServiceCase{
            "RegisteredIsFound",
            {{Op::Register, &kIdA, 0, S_OK}, {Op::Get, &kIdA, 0, S_OK, 0}, {Op::Get, &kIdB, 0, E_FAIL, -1}}},
        ServiceCase{
            "SecondRegistrationReplaces",
            {{Op::Register, &kIdA, 0, S_OK}, {Op::Register, &kIdA, 1, S_OK}, {Op::Get, &kIdA, 0, S_OK, 1}}},
        ServiceCase{"UnregisterByHolderRemoves",
                    {{Op::Register, &kIdA, 0, S_OK},
                     {Op::Unregister, &kIdA, 0, S_OK},
                     {Op::Get, &kIdA, 0, E_FAIL, -1}}},
        ServiceCase{"UnregisterByReplacedOneKeepsSuccessor",
                    {{Op::Register, &kIdA, 0, S_OK},
                     {Op::Register, &kIdA, 1, S_OK},
                     {Op::Unregister, &kIdA, 0, E_FAIL},
                     {Op::Get, &kIdA, 0, S_OK, 1}}},
        ServiceCase{"UnregisterOfUnknownIdFails", {{Op::Unregister, &kIdB, 0, E_FAIL}}},
        ServiceCase{"NullServiceIsRefused",
                    {{Op::Register, &kIdA, 0, S_OK},
                     {Op::Register, &kIdA, -1, E_POINTER},
                     {Op::Get, &kIdA, 0, S_OK, 0}}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(ServiceRegistryServices, GetServiceWithoutOutPointerIsRefused)
{
    ServiceRegistry registry;
    EXPECT_EQ(registry.GetService(kIdA, nullptr), E_POINTER);
}

TEST(ServiceRegistryServices, AnswersOnlyIUnknown)
{
    ServiceRegistry registry;
    void* out = nullptr;
    EXPECT_EQ(registry.QueryInterface(Ids::IUnknown, &out), S_OK);
    EXPECT_EQ(out, static_cast<IUnknown*>(&registry));
    EXPECT_EQ(registry.QueryInterface(Ids::IQComponent, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
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
    for (IUnknown* p : {static_cast<IUnknown*>(&b), static_cast<IUnknown*>(&a), static_cast<IUnknown*>(&b),
                        static_cast<IUnknown*>(&c)})
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
    EXPECT_TRUE(Providers(registry, kIdA).empty());
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

struct BusyCase {
    const char* name;
    std::vector<char> ops; // 's' set, 'c' clear
    std::vector<HRESULT> busyAfter;
};

class BusyNesting : public ::testing::TestWithParam<BusyCase>
{
};

TEST_P(BusyNesting, CountsMarks)
{
    ServiceRegistry registry;
    const auto& c = GetParam();
    ASSERT_EQ(c.ops.size(), c.busyAfter.size());
    for (size_t i = 0; i < c.ops.size(); ++i) {
        if (c.ops[i] == 's')
            EXPECT_EQ(registry.SetBusy(Ids::BusyRun), S_OK);
        else
            registry.ClearBusy(Ids::BusyRun);
        EXPECT_EQ(registry.IsBusy(Ids::BusyRun), c.busyAfter[i]) << "after op " << i;
        EXPECT_EQ(registry.IsBusy(Ids::BusyLoad), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(ServiceRegistryBusy, BusyNesting,
                         ::testing::Values(BusyCase{"SetThenClear", {'s', 'c'}, {1, 0}},
                                           BusyCase{"Nested", {'s', 's', 'c', 'c'}, {1, 1, 1, 0}},
                                           BusyCase{
                                               "ClearNeverGoesNegative", {'c', 'c', 's', 'c'}, {0, 0, 1, 0}}),
                         [](const auto& info) { return std::string(info.param.name); });

HRESULT Work(ServiceRegistry& registry, bool leaveEarly, HRESULT& seenInside)
{
    BusyMark mark(&registry, Ids::BusyLoad);
    seenInside = registry.IsBusy(Ids::BusyLoad);
    if (leaveEarly)
        return E_FAIL;
    return S_OK;
}

TEST(ServiceRegistryBusy, GuardGivesTheMarkBackOnEveryPath)
{
    ServiceRegistry registry;
    for (bool early : {false, true}) {
        HRESULT inside = 0;
        Work(registry, early, inside);
        EXPECT_EQ(inside, 1);
        EXPECT_EQ(registry.IsBusy(Ids::BusyLoad), 0);
    }
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
};

TEST_F(ServiceRegistryBroadcast, ReachesEveryComponentInOrderIncludingTheSender)
{
    bool sent = false;
    a.onEvent = [&](const Event& e) {
        if (e.param == 0 && !sent) {
            sent = true;
            registry.Broadcast(Event{Ids::EVENT_RADIX_CHANGED, 7});
        }
    };
    registry.Broadcast(Event{Ids::EVENT_RADIX_CHANGED, 0});
    EXPECT_EQ(log, (std::vector<std::string>{"a:0", "a:7", "b:7", "c:7", "b:0", "c:0"}));
}

TEST_F(ServiceRegistryBroadcast, RemovedDuringBroadcastIsNotCalledAfterwards)
{
    a.onEvent = [&](const Event&) { registry.RemoveComponent(&b); };
    registry.Broadcast(Event{Ids::EVENT_RADIX_CHANGED, 1});
    EXPECT_EQ(log, (std::vector<std::string>{"a:1", "c:1"}));
    EXPECT_EQ(registry.ComponentCount(), 2u);
}

TEST_F(ServiceRegistryBroadcast, SelfRemovalAndAdditionTakeEffectNextTime)
{
    b.onEvent = [&](const Event&) {
        registry.RemoveComponent(&b);
        registry.AddComponent(&d);
    };
    registry.Broadcast(Event{Ids::EVENT_RADIX_CHANGED, 1});
    registry.Broadcast(Event{Ids::EVENT_RADIX_CHANGED, 2});
    EXPECT_EQ(log, (std::vector<std::string>{"a:1", "b:1", "c:1", "a:2", "c:2", "d:2"}));
}

TEST_F(ServiceRegistryBroadcast, RefusesNullAndDuplicates)
{
    EXPECT_FALSE(registry.AddComponent(nullptr));
    EXPECT_FALSE(registry.AddComponent(&a));
    EXPECT_FALSE(registry.RemoveComponent(&d));
    registry.Broadcast(Event{Ids::EVENT_RADIX_CHANGED, 3});
    EXPECT_EQ(log, (std::vector<std::string>{"a:3", "b:3", "c:3"}));
}

} // namespace
