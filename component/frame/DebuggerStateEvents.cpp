// How the debugger state receives events, passes them on to the views'
// servers, calls itself back, and keeps sessions that run in step together.
#include <algorithm>

#include "boundary/Ids.h"
#include "boundary/interfaces/Disassembly.h"
#include "component/breaks/CPCBreakManager.h"
#include "component/frame/CDebuggerState.h"
#include "component/memory/CMemoryManager.h"
#include "component/run/CRunner.h"
#include "component/symbols/CLabelManager.h"
#include "component/symbols/CPDEvaluator.h"

namespace
{

// Events that need nothing of the state but reach the views.
bool IsForwardOnly(const Guid& id)
{
    return id == Ids::EVENT_PROGRAMS_CHANGED || id == Ids::EVENT_MEMORY_CHANGED ||
           id == Ids::EVENT_LABELS_CHANGED || id == Ids::EVENT_VIEW_REFRESH ||
           id == Ids::EVENT_TARGET_RESET || id == Ids::EVENT_BREAK_CHANGED ||
           id == Ids::EVENT_MODULES_CHANGED;
}

} // namespace

HRESULT CDebuggerState::OnEvent(const Event& event)
{
    const Guid& id = event.id;
    bool forward = false;
    if (id == Ids::EVENT_CONNECTED) {
        if (Memory)
            Memory->AttachPlatform(Registry);
        if (Labels)
            Labels->OnPlatformAttached(Registry);
        if (Evaluator)
            Evaluator->AttachPlatform();
        PlatformAttached = true;
        TellConnectionListeners(true);
        forward = true;
    } else if (id == Ids::EVENT_DISCONNECTED) {
        if (Labels && PlatformMode == PLATFORM_MODE_VEL)
            Labels->ClearLabelsQuietly();
        if (Memory)
            Memory->DetachPlatform();
        PlatformAttached = false;
        if (Evaluator)
            Evaluator->DetachPlatform();
        forward = true;
    } else if (id == Ids::EVENT_MEMORY_MAP_CHANGED) {
        if (Memory)
            Memory->ReloadAreas();
    } else if (id == Ids::EVENT_TARGET_STOPPED) {
        OnTargetStopped(event);
    } else if (id == Ids::EVENT_REGISTER_CHANGED) {
        OnRegisterChanged(event);
    } else if (id == Ids::EVENT_BUILD_STARTED) {
        Building = true;
    } else if (id == Ids::EVENT_BUILD_FINISHED) {
        // Downloading the rebuilt modules comes with downloading itself; the
        // times and the programs' status are brought up to date either way.
        if (IsConnected())
            NoteRebuiltFiles();
        Building = false;
    } else if (id == Ids::EVENT_SYMBOLS_CHANGED) {
        Breaks->OnSymbolsChanged();
    } else if (id == Ids::EVENT_BATCH_FINISHED) {
        if (BatchRunning > 0)
            --BatchRunning;
        if (BatchRunning == 0 && OpenMemoryAfterBatch)
            OpenMemoryAfterConnection();
    } else if (id == Ids::EVENT_DISCONNECT_REQUEST) {
        Disconnect();
    } else if (id == Ids::EVENT_DOWNLOAD_COMPLETE) {
        Runner->OnDownloadOver();
        Broadcast(Event{Ids::EVENT_PROGRAMS_CHANGED, 1});
        Breaks->ReplantAll();
    } else if (IsForwardOnly(id)) {
        forward = true;
    } else if (id == Ids::EVENT_TARGET_RUNNING) {
        forward = !IsStepState(Runner->GetRunState());
    }
    if (forward && !SteppingBatch)
        ForwardEvent(event);
    return S_OK;
}

void CDebuggerState::OnTargetStopped(const Event& event)
{
    // The connection is the one way a stop report comes in.
    StopAddress = Connection.TakeStopAddress(static_cast<uint32_t>(event.param));
    if (Runner->IsRunning()) {
        Runner->OnStopped();
        if (WaitingCommand) {
            auto finish = std::move(WaitingCommand);
            WaitingCommand = nullptr;
            finish();
        }
        NotifySyncStopped();
    }
    if (Memory)
        Memory->RefreshMemory();
    SyncDriven = false;
}

void CDebuggerState::OnRegisterChanged(const Event& event)
{
    uint32_t pc = 0;
    auto* registers = GetServiceAs<IQPlatformRegisters>(Registry, Ids::IQPlatformRegisters);
    bool read = registers != nullptr && registers->GetRegister(0, pc) == S_OK;
    bool show = false;
    if (read && !Runner->ResetGoInProgress())
        show = Runner->ResetInProgress() || !LastShownValid || pc != LastShownAddress;
    if (show && IsPositionShown())
        ShowPositionAt(pc);
    ForwardEvent(show ? Event{Ids::EVENT_TARGET_STOPPED, 0} : event);
}

void CDebuggerState::ShowPositionAt(uint32_t address)
{
    // The editors' marker follows once source lookup is in place; the state
    // keeps what it last showed so that an unchanged counter is not shown twice.
    LastShownAddress = address;
    LastShownValid = true;
}

bool CDebuggerState::IsPositionShown()
{
    auto* host = QueryAs<IQSessionHost>(Registry, Ids::SessionHost);
    return host == nullptr || host->IsMultiSessionHost() != S_OK || Sync.IsActive();
}

void CDebuggerState::Broadcast(const Event& event)
{
    if (Registry)
        Registry->Broadcast(event);
}

void CDebuggerState::PostToSelf(uint32_t value)
{
    if (auto* posts = GetServiceAs<IQPostMessageService>(Registry, Ids::PostMessageService))
        posts->Post(static_cast<IQPostMessageClient*>(this), value);
}

HRESULT CDebuggerState::OnPostedMessage(uint32_t value)
{
    if (value == 0x447) {
        // The programs whose file changed, reloaded now that the notice has returned.
        std::vector<int32_t> queue;
        queue.swap(ReloadQueue);
        for (int32_t index : queue)
            DownloadPrograms(index, true, false, false, true, true);
        return S_OK;
    }
    // The second half of opening a session.
    if (IsConnected()) {
        RunConnectionBatch();
        RunAutomaticDownloads();
    }
    return S_OK;
}

HRESULT CDebuggerState::CreateServer(IUnknown* client, IUnknown** server)
{
    if (server == nullptr)
        return E_POINTER;
    *server = Views.Create(*this, Registry, static_cast<IQDisassemblyDataClient*>(client));
    return *server != nullptr ? S_OK : E_POINTER;
}

HRESULT CDebuggerState::ReleaseServer(IUnknown* client)
{
    return Views.Release(client) ? S_OK : E_FAIL;
}

// Run ends, as the runner reports them.
void CDebuggerState::OnRunStarts()
{
    Views.SetDisplayFlags(0);
    Stepping = false;
    SteppingBatch = false;
}

void CDebuggerState::OnRunEnded()
{
    if (Stepping) {
        OnSteppingEnded(false);
        return;
    }
    if (IsPositionShown())
        ShowPositionAt(StopAddress);
    ForwardEvent(Event{Ids::EVENT_TARGET_STOPPED, static_cast<int32_t>(StopAddress)});
}

void CDebuggerState::OnStepDone()
{
    if (SteppingBatch)
        return;
    if (IsPositionShown())
        ShowPositionAt(StopAddress);
    ForwardEvent(Event{Ids::EVENT_TARGET_STOPPED, static_cast<int32_t>(StopAddress)});
}

void CDebuggerState::OnSteppingBegins(int32_t, int32_t rate)
{
    Stepping = true;
    SteppingBatch = rate == 7;
    Views.SetDisplayFlags(SteppingBatch ? 3 : 1);
}

void CDebuggerState::OnSteppingEnded(bool cancelled)
{
    Views.SetDisplayFlags(0);
    if (!cancelled || SteppingBatch) {
        if (IsPositionShown())
            ShowPositionAt(StopAddress);
        ForwardEvent(Event{Ids::EVENT_TARGET_STOPPED, static_cast<int32_t>(StopAddress)});
    }
    Stepping = false;
    SteppingBatch = false;
}

// Peers: every entry of the caller's list but this session's own.
void CDebuggerState::NotifySyncGo()
{
    NotifyPeers(true, [](IQDebuggerSync* p) { p->SyncGo(); });
}
void CDebuggerState::NotifySyncResetGo()
{
    NotifyPeers(true, [](IQDebuggerSync* p) { p->SyncResetGo(); });
}
void CDebuggerState::NotifySyncReset()
{
    NotifyPeers(true, [](IQDebuggerSync* p) { p->SyncReset(); });
}
void CDebuggerState::NotifySyncStepIn()
{
    NotifyPeers(true, [](IQDebuggerSync* p) { p->SyncStepIn(); });
    SyncDriven = true;
}
void CDebuggerState::NotifySyncStepOver()
{
    NotifyPeers(true, [](IQDebuggerSync* p) { p->SyncStepOver(); });
    SyncDriven = true;
}
void CDebuggerState::NotifySyncStepOut()
{
    NotifyPeers(true, [](IQDebuggerSync* p) { p->SyncStepOut(); });
    SyncDriven = true;
}
void CDebuggerState::NotifySyncStep(int32_t count, int32_t rate, int32_t over, int32_t source)
{
    NotifyPeers(true, [&](IQDebuggerSync* p) { p->SyncStep(count, rate, over, source); });
    SyncDriven = true;
}
void CDebuggerState::NotifySyncStopped()
{
    NotifyPeers(false, [](IQDebuggerSync* p) { p->SyncStopped(); });
}

// What a peer asks of this session.
HRESULT CDebuggerState::SyncGo()
{
    return Runner->Go();
}
HRESULT CDebuggerState::SyncResetGo()
{
    RecordCommand("go_reset");
    return Runner->ResetGo();
}
HRESULT CDebuggerState::SyncStepIn()
{
    SyncDriven = true;
    return Runner->Step(1, 0, false, false, false);
}
HRESULT CDebuggerState::SyncStepOver()
{
    SyncDriven = true;
    return Runner->Step(1, 0, true, false, false);
}
HRESULT CDebuggerState::SyncStepOut()
{
    SyncDriven = true;
    return Runner->Step(1, 0, false, true, false);
}
HRESULT CDebuggerState::SyncStep(int32_t count, int32_t rate, int32_t over, int32_t source)
{
    SyncDriven = true;
    return Runner->Step(count, rate, over != 0, false, source != 0);
}
HRESULT CDebuggerState::SyncStopped()
{
    if (!SyncDriven && Runner->StepsLeft() == 0 && Runner->IsRunning())
        return Runner->Halt();
    return S_OK;
}
HRESULT CDebuggerState::SyncReset()
{
    return Runner->Reset();
}
