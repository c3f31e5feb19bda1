// The component's entry points and its registry of instances.
#include <gtest/gtest.h>

#include <cstring>

#include "component/frame/CDebuggerApp.h"
#include "support/StateFixture.h"
#include "workbench/ComponentRegistrar.h"

extern "C" {
HRESULT LibraryRegister2(IQRegistrar* registrar);
HRESULT CreateInstance(uint32_t id);
HRESULT QueryInterface2(uint32_t id, const Guid* iid, void** out);
HRESULT DestroyInstance(uint32_t id);
}

namespace
{

struct AppTest : StateFixture {
    CDebuggerApp& app = CDebuggerApp::Instance();
    void TearDown() override
    {
        app.SetStateFactory({});
        for (uint32_t id : {1u, 2u, 7u})
            DestroyInstance(id);
    }
};

TEST_F(AppTest, RegistersTheSessionDataType)
{
    ComponentRegistrar registrar;
    EXPECT_EQ(LibraryRegister2(&registrar), S_OK);
    ASSERT_EQ(registrar.Components().size(), 1u);
    EXPECT_EQ(registrar.Components()[0].dataTypes, std::vector<Guid>{Ids::SessionDataType});
    ASSERT_EQ(registrar.DataTypes().size(), 1u);
    EXPECT_EQ(registrar.DataTypes()[0].name + " " + IdName(registrar.DataTypes()[0].id),
              "Generic DYX Session SessionDataType");
    EXPECT_EQ(LibraryRegister2(nullptr), S_OK);
}

TEST_F(AppTest, QueryAnswersFromTheStateFirstThenTheController)
{
    ASSERT_EQ(CreateInstance(7), S_OK);
    void* out = nullptr;
    ASSERT_EQ(QueryInterface2(7, &Ids::IQComponent, &out), S_OK);
    EXPECT_EQ(out, static_cast<IQComponent*>(app.FindState(7))) << "both answer IQComponent; the state wins";
    ASSERT_EQ(QueryInterface2(7, &Ids::SessionDataType, &out), S_OK);
    EXPECT_EQ(out, static_cast<IQRegistryClient*>(app.FindSession(7)));
    for (auto [id, iid] : {std::pair{7u, &Ids::PlatformList}, {99u, &Ids::IQComponent}}) {
        out = reinterpret_cast<void*>(0x1);
        EXPECT_EQ(QueryInterface2(id, iid, &out), E_NOINTERFACE);
        EXPECT_EQ(out, nullptr);
    }
}

TEST_F(AppTest, AHostThatSpellsIdentitiesAsFieldsFindsTheInterfaces)
{
    ASSERT_EQ(CreateInstance(7), S_OK);
    // How a host writes the component's identity {6E5BE760-CF7F-11D4-8BBB-D607EBD66972}.
    struct {
        uint32_t data1 = 0x6E5BE760;
        uint16_t data2 = 0xCF7F, data3 = 0x11D4;
        uint8_t data4[8] = {0x8B, 0xBB, 0xD6, 0x07, 0xEB, 0xD6, 0x69, 0x72};
    } spelled;
    Guid identity;
    std::memcpy(static_cast<void*>(&identity), &spelled, sizeof identity);
    void* out = nullptr;
    ASSERT_EQ(QueryInterface2(7, &identity, &out), S_OK);
    EXPECT_EQ(out, static_cast<IQDebuggerState*>(app.FindState(7)));
}

TEST_F(AppTest, SecondCreateWithTheSameKeyEndsTheOldInstanceFirst)
{
    const size_t fixtureServices = registry.ServiceCount();
    ASSERT_EQ(CreateInstance(2), S_OK);
    ASSERT_EQ(app.FindState(2)->Initialise(&registry, 1), S_OK);
    ASSERT_EQ(app.FindSession(2)->Initialise(&registry, 1), S_OK);
    ASSERT_EQ(CreateInstance(2), S_OK);
    // What another component does with the state it finds; a pointer left to
    // the old state is a use after free under AddressSanitizer.
    if (auto* found = static_cast<IQDebuggerState*>(registry.Service(Ids::IQDebuggerState)))
        found->IsConnectedA();
    EXPECT_EQ(registry.ServiceCount(), fixtureServices) << "the registry holds nothing of the old state";
    EXPECT_EQ(registry.ProviderCount(), 0u);
    EXPECT_EQ(app.InstanceCount(), 1u);
    void* out = nullptr;
    ASSERT_EQ(QueryInterface2(2, &Ids::IQComponent, &out), S_OK);
    EXPECT_EQ(out, static_cast<IQComponent*>(app.FindState(2)));
}

// A state that notes, as it is destroyed, what its instance still lists.
struct WatchedState : CDebuggerState {
    explicit WatchedState(std::vector<std::string>& notes) : notes_(notes) {}
    ~WatchedState() override
    {
        auto& app = CDebuggerApp::Instance();
        notes_.push_back(std::string("state destroyed; listed: ") + (app.FindState(1) ? "state " : "") +
                         (app.FindSession(1) ? "session" : ""));
    }
    std::vector<std::string>& notes_;
};

TEST_F(AppTest, DestroyEmptiesBothMapsBeforeAnyDestructorRuns)
{
    std::vector<std::string> notes;
    app.SetStateFactory([&] { return std::make_unique<WatchedState>(notes); });
    ASSERT_EQ(CreateInstance(1), S_OK);
    EXPECT_EQ(DestroyInstance(1), S_OK);
    EXPECT_EQ(notes, (std::vector<std::string>{"state destroyed; listed: "}));
}

} // namespace
