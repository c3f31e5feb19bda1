// Events reaching the debugger state, passed to the views' servers, and the
// sessions that run in step.
#include <gtest/gtest.h>

#include <thread>

#include "boundary/interfaces/Disassembly.h"
#include "component/memory/CMemoryManager.h"
#include "component/run/CRunner.h"
#include "support/StateFixture.h"

namespace
{

// Writes what it is told into a shared log, under its name.
struct Noting {
    Noting(std::string name, CallLog& log) : name(std::move(name)), log(log) {}
    HRESULT Note(std::string what, std::vector<int64_t> values = {})
    {
        for (int64_t value : values)
            what += " " + std::to_string(value);
        log.push_back(name + " " + what);
        return S_OK;
    }
    std::string name;
    CallLog& log;
};

// A view that notes what its server tells it.
struct RecordingView : IQDisassemblyDataClient, Noting {
    using Noting::Noting;
    using Text = const std::string&;
    FAKE_WITHOUT_INTERFACES
    HRESULT Reserved3() override { return S_OK; }
    HRESULT OnDataChanged(int32_t reason) override { return Note("OnDataChanged", {reason}); }
    HRESULT OnConnected() override { return Note("OnConnected"); }
    HRESULT OnDisconnected() override { return Note("OnDisconnected"); }
    HRESULT OnProgramLoaded() override { return Note("OnProgramLoaded"); }
    HRESULT OnProgramUnloaded() override { return Note("OnProgramUnloaded"); }
    using I = int32_t;
    // clang-format off
    HRESULT OnStopLine(uint32_t pc, Text, I, I kind) override { return Note("OnStopLine", {pc, kind}); }
    HRESULT OnPCLine(uint32_t pc, Text, I, I kind) override { return Note("OnPCLine", {pc, kind}); }
    HRESULT OnTargetRunning() override { return Note("OnTargetRunning"); }
    HRESULT OnBreakChanged(Text, I, uint32_t, VariantBool, VariantBool) override { return Note("Break"); }
    // clang-format on
    HRESULT OnDisplayFlags(uint32_t flags) override { return Note("OnDisplayFlags", {flags}); }
};

struct FakeRegisters : IQPlatformRegisters {
    FAKE_WITHOUT_INTERFACES
    HRESULT GetRegister(uint32_t index, uint32_t& value) override
    {
        if (index != 0)
            return E_FAIL;
        value = pc;
        return S_OK;
    }
    uint32_t pc = 0x100;
};

// A session running in step with the one under test.
struct RecordingPeer : IQDebuggerSync, Noting {
    using Noting::Noting;
    FAKE_WITHOUT_INTERFACES
    HRESULT SyncGo() override { return Note("SyncGo"); }
    HRESULT SyncResetGo() override { return Note("SyncResetGo"); }
    HRESULT SyncStepIn() override { return Note("SyncStepIn"); }
    HRESULT SyncStepOver() override { return Note("SyncStepOver"); }
    HRESULT SyncStepOut() override { return Note("SyncStepOut"); }
    HRESULT SyncStep(int32_t count, int32_t, int32_t, int32_t) override { return Note("SyncStep", {count}); }
    HRESULT SyncStopped() override { return Note("SyncStopped"); }
    HRESULT SyncReset() override { return Note("SyncReset"); }
    HRESULT SyncReserved() override { return S_OK; }
};

struct Events : StateFixture {
    CallLog views, peers;
    RecordingView a{"A", views}, b{"B", views};
    RecordingPeer p1{"P1", peers}, p2{"P2", peers};
    IQDebuggerSync* self = state.get();
    FakeRegisters registers;

    void SetUp() override
    {
        registry.Provide(Ids::IQPlatformRegisters, &registers);
        ASSERT_EQ(state->Initialise(&registry, 1), S_OK);
        IUnknown* server = nullptr;
        ASSERT_EQ(state->CreateServer(&a, &server), S_OK);
        ASSERT_NE(server, nullptr);
        ASSERT_EQ(state->CreateServer(&b, &server), S_OK);
        views.clear();
    }
    void TearDown() override { state->Terminate(1); }
    void Send(const Guid& id, int32_t param = 0) { state->OnEvent(Event{id, param}); }
};

TEST_F(Events, ServersGetAnEventInTwoPassesSoNoViewRedrawsEarly)
{
    Send(Ids::EVENT_CONNECTED);
    EXPECT_TRUE(state->IsPlatformAttached());
    EXPECT_EQ(views, (CallLog{"A OnConnected", "B OnConnected"}));
    views.clear();
    state->ForwardEvent(Event{Ids::EVENT_TARGET_STOPPED, 0});
    EXPECT_EQ(views,
              (CallLog{"A OnStopLine 256 1", "B OnStopLine 256 1", "A OnPCLine 256 1", "B OnPCLine 256 1"}));
    views.clear();
    ASSERT_EQ(state->ReleaseServer(&a), S_OK);
    EXPECT_EQ(state->ReleaseServer(&a), E_FAIL);
    Send(Ids::EVENT_DISCONNECTED);
    EXPECT_FALSE(state->IsPlatformAttached());
    EXPECT_EQ(views, (CallLog{"B OnDisconnected"}));
}

TEST_F(Events, StopAddressFromAPlatformThreadWinsOverTheEventsOwn)
{
    std::thread platform([&] { state->SetStopAddress(0x300); });
    platform.join();
    Send(Ids::EVENT_TARGET_STOPPED, 0x200);
    EXPECT_EQ(state->GetStopAddress(), 0x300u);
    Send(Ids::EVENT_TARGET_STOPPED, 0x200);
    EXPECT_EQ(state->GetStopAddress(), 0x200u) << "the pending address is taken once";
}

// With no run known a stop still empties the caches and ends a drive by a
// peer; a stop of a run also finishes the waiting command, once, and tells the peers.
TEST_F(Events, StopRefreshesMemoryAndEndsTheRunItBelongsTo)
{
    IQDebuggerSync* list[] = {&p1, self};
    state->SetSyncPeers(list, 2);
    state->SetSessionsInStep(1);
    for (bool running : {false, true}) {
        SCOPED_TRACE(running ? "a run" : "no run");
        peers.clear();
        state->NotifySyncStepIn();
        ASSERT_TRUE(state->IsSyncDriven());
        state->GetRunner()->SetRunState(running ? RUN_GOING : RUN_HALTED);
        int finished = 0;
        state->SetWaitingCommand([&] { ++finished; });
        const uint64_t before = state->GetMemory()->Generation();
        Send(Ids::EVENT_TARGET_STOPPED, 0x40);
        Send(Ids::EVENT_TARGET_STOPPED, 0x40);
        EXPECT_EQ(state->GetMemory()->Generation(), before + 2);
        EXPECT_FALSE(state->IsSyncDriven());
        EXPECT_FALSE(state->GetRunner()->IsRunning());
        EXPECT_EQ(finished, running ? 1 : 0);
        EXPECT_EQ(peers, running ? CallLog{"P1 SyncStopped"} : CallLog{});
        EXPECT_TRUE(views.empty()) << "a stop reaches the views through the runner, not directly";
        state->SetWaitingCommand(nullptr);
    }
}

TEST_F(Events, PeersAreToldInOrderAndNeverThemselves)
{
    IQDebuggerSync* list[] = {&p1, self, &p2};
    state->SetSyncPeers(list, 3);

    state->NotifySyncGo();
    EXPECT_TRUE(peers.empty()) << "sessions not in step tell nobody";
    state->SetSessionsInStep(1);
    state->NotifySyncGo();
    EXPECT_TRUE(peers.empty()) << "only the active session leads";
    state->SetActiveSession(1);
    state->NotifySyncGo();
    state->NotifySyncStep(3, 0, 1, 0);
    state->NotifySyncReset();
    EXPECT_EQ(peers, (CallLog{"P1 SyncGo", "P2 SyncGo", "P1 SyncStep 3", "P2 SyncStep 3", "P1 SyncReset",
                              "P2 SyncReset"}));
    EXPECT_TRUE(state->IsSyncDriven());
    peers.clear();
    state->SetActiveSession(0);
    state->NotifySyncStopped();
    EXPECT_EQ(peers, (CallLog{"P1 SyncStopped", "P2 SyncStopped"})) << "a stop needs only the in-step switch";
}

TEST_F(Events, RunningIsForwardedForAGoButNotForAStep)
{
    state->GetRunner()->SetRunState(RUN_GOING);
    Send(Ids::EVENT_TARGET_RUNNING);
    EXPECT_EQ(views, (CallLog{"A OnTargetRunning", "B OnTargetRunning"}));
    views.clear();
    state->GetRunner()->SetRunState(RUN_STEP_OVER_LINE);
    Send(Ids::EVENT_TARGET_RUNNING);
    EXPECT_TRUE(views.empty());
}

TEST_F(Events, BatchSteppingHoldsViewsBackUntilTheLastStep)
{
    state->OnSteppingBegins(1, 7);
    EXPECT_EQ(views, (CallLog{"A OnDisplayFlags 3", "B OnDisplayFlags 3"}));
    views.clear();
    Send(Ids::EVENT_MEMORY_CHANGED);
    state->OnStepDone();
    EXPECT_TRUE(views.empty());
    state->OnSteppingEnded(false);
    EXPECT_EQ(views, (CallLog{"A OnDisplayFlags 0", "B OnDisplayFlags 0", "A OnStopLine 256 1",
                              "B OnStopLine 256 1", "A OnPCLine 256 1", "B OnPCLine 256 1"}));
    EXPECT_FALSE(state->IsStepping());
    views.clear();
    Send(Ids::EVENT_MEMORY_CHANGED);
    EXPECT_EQ(views, (CallLog{"A OnDataChanged 4", "B OnDataChanged 4"}));
}

TEST_F(Events, RegisterChangeShowsANewCounterOnceAndForwardsAnUnchangedOneAsItIs)
{
    registers.pc = 0x500;
    Send(Ids::EVENT_REGISTER_CHANGED);
    uint32_t shown = 0;
    ASSERT_TRUE(state->LastShown(shown));
    EXPECT_EQ(shown, 0x500u);
    EXPECT_EQ(views, (CallLog{"A OnStopLine 1280 1", "B OnStopLine 1280 1", "A OnPCLine 1280 1",
                              "B OnPCLine 1280 1"}))
        << "a new counter goes to the views as a stop";
    views.clear();
    Send(Ids::EVENT_REGISTER_CHANGED);
    EXPECT_TRUE(views.empty()) << "the same counter again: forwarded as a register change, which the servers "
                                  "answer only when their own last counter differs";
}

TEST_F(Events, BuildMarksAndDownloadEnd)
{
    Send(Ids::EVENT_BUILD_STARTED);
    EXPECT_TRUE(state->IsBuilding());
    Send(Ids::EVENT_BUILD_FINISHED);
    EXPECT_FALSE(state->IsBuilding());
    state->GetRunner()->SetRunState(RUN_DOWNLOADING);
    size_t mark = log.size();
    Send(Ids::EVENT_DOWNLOAD_COMPLETE);
    EXPECT_EQ(state->GetRunner()->GetRunState(), RUN_HALTED);
    EXPECT_EQ(Since(mark), (CallLog{"Broadcast {2289D125-1242-11D5-9690-00B0D0167C2F}"}));
}

} // namespace
