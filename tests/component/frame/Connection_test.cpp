// Connecting a session to its platform and letting it go, in the order the
// drivers, the views and the other components see it.
#include <gtest/gtest.h>

#include "component/session/CDyxSessionDataCtrl.h"
#include "support/FakePlatformMemory.h"
#include "support/StateFixture.h"

namespace
{

struct RecordingOutput : IQOutputWindow {
    explicit RecordingOutput(CallLog& log) : log(log) {}
    FAKE_WITHOUT_INTERFACES
    HRESULT AppendText(const std::string& tab, const std::string& text) override
    {
        log.push_back(tab + " " + text.substr(0, text.find('\r')));
        return S_OK;
    }
    HRESULT ClearTab(const std::string&) override { return S_OK; }
    HRESULT BringForward(const std::string&) override { return S_OK; }
    CallLog& log;
};

// The commands made at a connection: the ten file and setup commands, disconnect
// and the seven memory commands.
constexpr int kCommands = 18;

struct Connection : StateFixture {
    RecordingOutput output{log};

    void SetUp() override
    {
        registry.Provide(Ids::OutputWindow, &output);
        StartSession();
        log.clear();
    }
    void TearDown() override
    {
        state->Terminate(1);
        registry.deliverTo = nullptr;
    }
    // The log without the service lookups, which say nothing of the order.
    CallLog Calls() const
    {
        CallLog out;
        for (const auto& line : log)
            if (line.rfind("GetService", 0) != 0)
                out.push_back(line);
        return out;
    }
};

TEST_F(Connection, FailureGivesOneMessageAndHoldsNoDriver)
{
    const std::pair<const char*, const char*> cases[] = {
        {"nosuch", "Target device driver missing, or connection cancelled: nosuch"},
        {"ghostcpu", "Cpu Driver Missing : ghost"},
        {"halfsim", "Target device driver missing, or connection cancelled: halfsim"},
    };
    for (const auto& [platform, message] : cases) {
        SCOPED_TRACE(platform);
        messages.shown.clear();
        log.clear();
        store.text["platform"] = platform;
        EXPECT_EQ(state->Connect(), E_FAIL);
        EXPECT_EQ(messages.shown, (std::vector<std::string>{message}));
        EXPECT_EQ(platforms.Alive(), 0u) << "no driver is left behind";
        EXPECT_FALSE(state->IsConnected());
        EXPECT_EQ(state->GetPlatformName(), platform);
        EXPECT_TRUE(Logged(Sent(Ids::EVENT_PLATFORM_CHANGED)));
        EXPECT_FALSE(Logged(Sent(Ids::EVENT_CONNECTED)));
        EXPECT_EQ(state->CommandCount(), 0u);
    }
    auto created = std::find(log.begin(), log.end(), "Create cpu cm3");
    ASSERT_NE(created, log.end());
    EXPECT_EQ(*(created + 1), "Release cpu cm3") << "the CPU driver goes as soon as the target fails";
}

TEST_F(Connection, ConnectMakesDriversInOrderAndAnnouncesIt)
{
    ASSERT_EQ(state->Connect(), S_OK);
    CallLog expected{
        "GetProviders {453547D2-008B-44A3-BDF4-48B86CBCFB44}",
        Sent(Ids::EVENT_PLATFORM_CHANGED), // the disconnection before a connection
        "Create cpu cm3",
        "Create target sim",
        "SetCpuIdentity 3 7",
        Sent(Ids::EVENT_PLATFORM_CHANGED),
    };
    expected = expected + CommandFaces("RegisterProvider", kCommands) +
               CallLog{
                   Sent(Ids::EVENT_PLATFORM_CHANGED),
                   "Debug Connected",
                   "store FIRST_CONNECTION_TAG=NO",
                   "store limit=0",
                   Sent(Ids::EVENT_CONNECTED),
                   "GetProviders {89194D47-DA5E-40D3-8AC0-661B13DA561D}", // the listeners hear of it
                   "GetProviders {453547D2-008B-44A3-BDF4-48B86CBCFB44}",
               };
    EXPECT_EQ(Calls(), expected);
    EXPECT_TRUE(state->IsConnected());
    EXPECT_EQ(state->CommandCount(), size_t{kCommands}) << "they exist while connected";
    std::string a, b;
    state->GetCpuText1(a);
    state->GetCpuText2(b);
    EXPECT_EQ(a + "|" + b, "ARM|Cortex-M3");
}

struct RecordingListener : IQConnectionListener {
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerFrom({Ids::IUnknown, Ids::ConnectionListener}, iid, this, out);
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT OnTargetConnected(const std::string& text) override { return Note("connected " + text); }
    HRESULT OnTargetDisconnected(const std::string& text) override { return Note("disconnected " + text); }
    HRESULT Note(const std::string& what)
    {
        heard.push_back(what);
        return S_OK;
    }
    CallLog heard;
};

TEST_F(Connection, ListenersHearOfTheTargetByItsFirstLine)
{
    RecordingListener listener;
    registry.RegisterProvider(Ids::ConnectionListener, &listener);
    ASSERT_EQ(state->Connect(), S_OK);
    state->Disconnect();
    EXPECT_EQ(listener.heard, (CallLog{"connected Simulator", "disconnected Simulator"}));
    registry.UnregisterProvider(Ids::ConnectionListener, &listener);
}

TEST_F(Connection, DescriptionsSplitIntoTheirLines)
{
    struct Case {
        std::string cpu, target;
        std::vector<std::string> expected; // cpu1, cpu2, target1..3
    };
    const Case cases[] = {
        {"OneLine", "A\nB", {"OneLine", "", "A", "B", ""}},
        {"x\ny\ndropped", "1\n2\n3\ndropped", {"x", "y", "1", "2", "3"}},
        {"", "\n\nthird", {"", "", "", "", "third"}},
    };
    for (const auto& c : cases) {
        platforms.cpuText = c.cpu;
        platforms.targetText = c.target;
        ASSERT_TRUE(state->ConnectTo("sim", false, false));
        std::vector<std::string> got(5);
        state->GetCpuText1(got[0]);
        state->GetCpuText2(got[1]);
        state->GetTargetText1(got[2]);
        state->GetTargetText2(got[3]);
        state->GetTargetText3(got[4]);
        EXPECT_EQ(got, c.expected) << c.cpu << " / " << c.target;
    }
}

TEST_F(Connection, DisconnectLetsTheTargetGoBeforeTheCpu)
{
    for (bool control : {false, true}) {
        platforms.targetHasControl = control;
        ASSERT_EQ(state->Connect(), S_OK);
        log.clear();
        ASSERT_TRUE(state->CanDisconnect());
        state->Disconnect();
        CallLog expected{
            control ? "control goodbye" : "core goodbye",
            Sent(Ids::EVENT_DISCONNECTED),
            "GetProviders {89194D47-DA5E-40D3-8AC0-661B13DA561D}",
            "Release target sim",
            "Debug Disconnected",
            "Release cpu cm3",
        };
        expected = expected + CommandFaces("UnregisterProvider", kCommands);
        expected.push_back(Sent(Ids::EVENT_PLATFORM_CHANGED));
        EXPECT_EQ(Calls(), expected);
        EXPECT_FALSE(state->IsConnected());
        EXPECT_EQ(state->CommandCount(), 0u);
        EXPECT_EQ(state->GetPlatformName(), "sim") << "the name stays for the next connection";
        EXPECT_EQ(platforms.Alive(), 0u);
    }
}

TEST_F(Connection, FirstConnectionAppliesTheCpuDefaultOnceEvenWhenItFails)
{
    platforms.limitDefault = 0;
    store.text["platform"] = "nosuch";
    EXPECT_EQ(state->Connect(), E_FAIL);
    EXPECT_EQ(store.text["FIRST_CONNECTION_TAG"], "NO");
    EXPECT_EQ(store.number["limit"], 0) << "no CPU driver: the default 1 applies";
    store.text["platform"] = "sim";
    store.number["limit"] = 7;
    ASSERT_EQ(state->Connect(), S_OK);
    EXPECT_EQ(store.number["limit"], 7) << "a second connection leaves the option alone";
    store.text["FIRST_CONNECTION_TAG"] = "YES";
    state->Disconnect();
    ASSERT_EQ(state->Connect(), S_OK);
    EXPECT_EQ(store.number["limit"], 1) << "after a platform change the tag says YES again";
}

TEST_F(Connection, InitialiseAsksFirstAndKeepsTheCommands)
{
    ASSERT_EQ(state->Connect(), S_OK);
    int32_t count = 0;
    IUnknown** providers = nullptr;
    registry.GetProviders(Ids::IQCmdClient2, count, providers);
    // Five symbol commands from initialisation, then those of the connection.
    ASSERT_EQ(count, 5 + kCommands);
    IUnknown* before = providers[count - 1];

    prompts.answerYes = false;
    log.clear();
    state->InitialiseTarget();
    EXPECT_EQ(recorder.Lines(), (std::vector<std::string>{"initialize"}));
    EXPECT_EQ(Calls(),
              (CallLog{"AskYesNo 'Initialize Target' Are you sure you want to initialize the target?"}))
        << "no means nothing happens";

    prompts.answerYes = true;
    state->InitialiseTarget();
    EXPECT_TRUE(state->IsConnected());
    registry.GetProviders(Ids::IQCmdClient2, count, providers);
    ASSERT_EQ(count, 5 + kCommands);
    EXPECT_EQ(providers[count - 1], before) << "the same command objects answer after a restart";
    EXPECT_TRUE(Logged(Sent(Ids::EVENT_INITIALISING)));
}

TEST_F(Connection, DefaultReaderIsMadeAtConnectionAndComparedWithoutCase)
{
    store.text["reader"] = "ELF";
    ASSERT_EQ(state->Connect(), S_OK);
    EXPECT_TRUE(Logged("Create reader ELF"));
    EXPECT_EQ(state->GetReaderName(), "ELF");
    log.clear();
    EXPECT_TRUE(state->SetDefaultReader("elf"));
    EXPECT_TRUE(log.empty()) << "a change of case only changes nothing";
    EXPECT_EQ(state->ListReaders("sim"), (std::vector<std::string>{"elf"}));
    EXPECT_EQ(state->ListReaders("pdsim"), (std::vector<std::string>{"pdobj"}));
}

TEST_F(Connection, OpeningASessionConnectsUnlessTold)
{
    CDyxSessionDataCtrl ctrl(*state, state->GetRunner());
    store.number["noauto"] = static_cast<VariantBool>(VARIANT_TRUE);
    ctrl.SessionOpening("boards", "blinky", "Debug", "default");
    EXPECT_FALSE(state->IsConnected());
    EXPECT_EQ(state->GetPlatformName(), "sim");
    EXPECT_TRUE(state->CanConnect());

    store.number["noauto"] = 0;
    ctrl.SessionOpening("boards", "blinky", "Debug", "default");
    EXPECT_TRUE(state->IsConnected());
    EXPECT_TRUE(Logged(Sent(Ids::EVENT_SESSION_CHANGING)));
    ctrl.WorkspaceClosing("boards");
    EXPECT_FALSE(state->IsConnected());
    EXPECT_TRUE(state->GetPlatformName().empty());
}

struct SymbolicPlatform : IQPlatformSymbols {
    FAKE_WITHOUT_INTERFACES
    HRESULT UsesPlatformSymbols() override { return answer; }
    HRESULT answer = S_OK;
};

// What a connection learns of the platform: whether it knows the symbols
// itself and whether its memory can be verified.
TEST_F(Connection, AConnectionAsksWhatThePlatformOffers)
{
    SymbolicPlatform symbols;
    FakePlatformMemory memory({{0, 0xFFFF}});
    memory.RegisterIn(registry);
    EXPECT_EQ(state->CanVerifyMemory(), E_FAIL) << "not connected";
    struct Case {
        bool service;
        HRESULT answer;
        uint32_t offered;
        bool symbolic;
        HRESULT canVerify;
    };
    const Case cases[] = {
        {false, S_OK, 0x7F, false, S_OK},
        {true, S_OK, 0x7F, true, S_OK},
        {true, S_FALSE, 0, false, E_FAIL},
    };
    for (const auto& c : cases) {
        registry.Provide(Ids::PlatformSymbolsQuery, c.service ? &symbols : nullptr);
        symbols.answer = c.answer;
        memory.offered = c.offered;
        ASSERT_EQ(state->Connect(), S_OK);
        EXPECT_EQ(state->UsesPlatformSymbols(), c.symbolic);
        EXPECT_EQ(state->CanVerifyMemory(), c.canVerify);
        state->Disconnect();
    }
}

} // namespace
