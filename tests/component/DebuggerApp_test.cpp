// The component's entry points and its registry of instances.
#include <gtest/gtest.h>

#include "component/frame/CDebuggerApp.h"
#include "component/frame/CDebuggerState.h"
#include "component/session/CDyxSessionDataCtrl.h"
#include "support/Recording.h"

extern "C" {
HRESULT GetComponentVersion(int32_t* major, int32_t* minor);
HRESULT LibraryRegister2(IQRegistrar* registrar);
HRESULT CreateInstance(uint32_t id);
HRESULT QueryInterface2(uint32_t id, const Guid* iid, void** out);
HRESULT DestroyInstance(uint32_t id);
}

namespace
{

struct AppTest : ::testing::Test {
    void TearDown() override
    {
        CDebuggerApp::Instance().SetStateFactory({});
        for (uint32_t id : {1u, 2u, 7u})
            DestroyInstance(id);
    }
};

TEST_F(AppTest, VersionIsAlwaysOneZero)
{
    int32_t major = -1, minor = -1;
    EXPECT_EQ(GetComponentVersion(&major, &minor), S_OK);
    EXPECT_EQ(major, 1);
    EXPECT_EQ(minor, 0);
}

TEST_F(AppTest, RegistersDisplayNameAndSessionDataType)
{
    RecordingRegistrar registrar;
    EXPECT_EQ(LibraryRegister2(&registrar), S_OK);
    EXPECT_EQ(registrar.log,
              (CallLog{"RegisterComponent 'Tessel Debugger' 1 [SessionDataType] 0 1 0 Component",
                       "RegisterDataType 'Generic DYX Session' 1 1 0 SessionDataType"}));
}

TEST_F(AppTest, QueryAnswersFromTheStateFirstThenTheController)
{
    ASSERT_EQ(CreateInstance(7), S_OK);
    auto& app = CDebuggerApp::Instance();
    CDebuggerState* state = app.FindState(7);
    CDyxSessionDataCtrl* session = app.FindSession(7);
    ASSERT_NE(state, nullptr);
    ASSERT_NE(session, nullptr);

    void* out = nullptr;
    ASSERT_EQ(QueryInterface2(7, &Ids::IQComponent, &out), S_OK);
    EXPECT_EQ(out, static_cast<IQComponent*>(state)) << "both answer IQComponent; the state wins";

    ASSERT_EQ(QueryInterface2(7, &Ids::SessionDataType, &out), S_OK);
    EXPECT_EQ(out, static_cast<IQRegistryClient*>(session));

    out = reinterpret_cast<void*>(0x1);
    EXPECT_EQ(QueryInterface2(7, &Ids::PlatformList, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    out = reinterpret_cast<void*>(0x1);
    EXPECT_EQ(QueryInterface2(99, &Ids::IQComponent, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
}

TEST_F(AppTest, SecondCreateWithTheSameKeyReplacesBothEntries)
{
    ASSERT_EQ(CreateInstance(2), S_OK);
    auto& app = CDebuggerApp::Instance();
    size_t count = app.InstanceCount();
    CDyxSessionDataCtrl* firstSession = app.FindSession(2);
    ASSERT_EQ(CreateInstance(2), S_OK);
    EXPECT_EQ(app.InstanceCount(), count);
    // The new controller is bound to the new state.
    void* out = nullptr;
    ASSERT_EQ(QueryInterface2(2, &Ids::IQComponent, &out), S_OK);
    EXPECT_EQ(out, static_cast<IQComponent*>(app.FindState(2)));
    (void)firstSession;
}

// A state that notes, as it is destroyed, whether its instance is still listed.
struct WatchedState : CDebuggerState {
    explicit WatchedState(uint32_t id, std::vector<std::string>& notes) : id_(id), notes_(notes) {}
    ~WatchedState() override
    {
        auto& app = CDebuggerApp::Instance();
        notes_.push_back(std::string("state destroyed; listed: ") + (app.FindState(id_) ? "state " : "") +
                         (app.FindSession(id_) ? "session" : ""));
    }
    uint32_t id_;
    std::vector<std::string>& notes_;
};

TEST_F(AppTest, DestroyEmptiesBothMapsBeforeAnyDestructorRuns)
{
    std::vector<std::string> notes;
    CDebuggerApp::Instance().SetStateFactory([&] { return std::make_unique<WatchedState>(1, notes); });
    ASSERT_EQ(CreateInstance(1), S_OK);
    EXPECT_EQ(DestroyInstance(1), S_OK);
    EXPECT_EQ(notes, (std::vector<std::string>{"state destroyed; listed: "}));
    EXPECT_EQ(CDebuggerApp::Instance().FindSession(1), nullptr);
}

} // namespace
