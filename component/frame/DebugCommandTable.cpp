#include "component/frame/DebugCommandTable.h"

#include "boundary/Ids.h"
#include "component/frame/CDebuggerState.h"
#include "component/frame/TargetConnection.h"
#include "component/run/CRunner.h"

namespace
{

enum : uint32_t {
    kResetCpu = 32798,
    kGo = 32799,
    kFreeGo = 32958,
    kResetGo = 32800,
    kReservedA = 39515,
    kReservedB = 39516,
    kRun = 32803,
    kStepIn = 39517,
    kStepOver = 39518,
    kStepOut = 39519,
    kStepDialog = 39520,
    kHalt = 39521,
    kHaltMenu = 32807,
    kHex = 32814,
    kDecimal = 32815,
    kOctal = 32816,
    kBinary = 32817,
    kEvaluate = 32818,
    kInitialise = 32819,
    kStepAuto = 32820,
    kStepAssembly = 32821,
    kStepSource = 32822,
    kDisconnect = 32823,
    kConnect = 32824,
    kDisplayPc = 32954,
    kSaveMemory = 32797,
    kVerifyMemory = 32837,
    kSettings = 32783,
    kBreakpoints = 32796,
};

int32_t RadixOf(uint32_t id)
{
    switch (id) {
    case kHex:
        return 16;
    case kDecimal:
        return 10;
    case kOctal:
        return 8;
    default:
        return 2;
    }
}

} // namespace

const std::vector<DebugCommandRow>& DebugCommandTable::Rows()
{
    static const std::vector<DebugCommandRow> rows = {
        {kResetCpu, "Reset CP&U"},
        {kGo, "&Go\tF5"},
        {kFreeGo, "Free Go"},
        {kResetGo, "R&eset Go\tShift+F5"},
        {kReservedA, ""},
        {kReservedB, ""},
        {kRun, "&Run..."},
        {kStepIn, ""},
        {kStepOver, ""},
        {kStepOut, ""},
        {kStepDialog, ""},
        {kHalt, "&Halt Program\tEsc"},
        {kHaltMenu, "&Halt Program\tEsc"},
        {kHex, "&Hex"},
        {kDecimal, "&Decimal"},
        {kOctal, "&Oct"},
        {kBinary, "&Bin"},
        {kEvaluate, "E&valuate..."},
        {kInitialise, "Initiali&ze"},
        {kStepAuto, "A&uto"},
        {kStepAssembly, "&Assembly"},
        {kStepSource, "&Source"},
        {kDisconnect, "Disconnec&t"},
        {kConnect, "Co&nnect"},
        {kDisplayPc, "Displa&y PC\tShift+Ctrl+Y"},
        {kSaveMemory, "S&ave Memory..."},
        {kVerifyMemory, "Veri&fy Memory..."},
        {kSettings, "Debug &Settings..."},
        {kBreakpoints, "Source &Breakpoints...\tCtrl+B"},
    };
    return rows;
}

bool DebugCommandTable::Running() const
{
    return state_.GetRunner() != nullptr && state_.GetRunner()->IsRunning();
}

bool DebugCommandTable::Connected() const
{
    return state_.IsConnected();
}

bool DebugCommandTable::PlatformNamed() const
{
    return !TargetConnection::NamesNothing(state_.GetPlatformName());
}

int32_t DebugCommandTable::Radix() const
{
    int32_t radix = 0;
    auto* evaluator = GetServiceAs<IQEvaluator2>(state_.GetRegistry(), Ids::IQEvaluator2);
    return evaluator != nullptr && Succeeded(evaluator->GetRadix(radix)) ? radix : 0;
}

bool DebugCommandTable::IsEnabled(uint32_t id) const
{
    // Go and the resets light up on a session not yet connected: the run connects first.
    const bool canGo = !Running() && (Connected() || PlatformNamed());
    const bool stopped = Connected() && !Running();
    const bool sessionOpen = !state_.GetSessionName().empty();
    switch (id) {
    case kResetCpu:
    case kGo:
    case kResetGo:
        return canGo;
    case kFreeGo:
        return stopped && GetServiceAs<IUnknown>(state_.GetRegistry(), Ids::IQPlatformFreeRun) != nullptr;
    case kRun:
    case kStepIn:
    case kStepOver:
    case kStepOut:
    case kStepDialog:
    case kInitialise:
    case kDisplayPc:
        return stopped;
    case kHalt:
    case kHaltMenu:
        return Running();
    case kHex:
    case kDecimal:
    case kOctal:
    case kBinary:
        return Radix() != 0;
    case kEvaluate:
    case kStepAuto:
    case kStepAssembly:
    case kStepSource:
        return true;
    case kDisconnect:
        return state_.CanDisconnect();
    case kConnect:
        return state_.CanConnect();
    case kSaveMemory:
        return Connected();
    case kVerifyMemory:
        return state_.CanVerifyMemory() == S_OK;
    case kSettings:
        return sessionOpen && !Running() &&
               (state_.GetRegistry() == nullptr || state_.GetRegistry()->IsBusy(Ids::BusyLoad) == 0);
    case kBreakpoints:
        return sessionOpen;
    default:
        return false;
    }
}

bool DebugCommandTable::IsChecked(uint32_t id) const
{
    if (id >= kHex && id <= kBinary)
        return Radix() == RadixOf(id);
    if (id >= kStepAuto && id <= kStepSource)
        return stepMode_ == static_cast<int32_t>(id - kStepAuto);
    return false;
}

HRESULT DebugCommandTable::Run(uint32_t id)
{
    if (!IsEnabled(id))
        return E_FAIL;
    CRunner& runner = *state_.GetRunner();
    const bool source = stepMode_ == 2;
    switch (id) {
    case kResetCpu:
        return runner.Reset();
    case kGo:
        return runner.Go();
    case kResetGo:
        return runner.ResetGo();
    case kStepIn:
        return runner.Step(1, 0, false, false, source);
    case kStepOver:
        return runner.Step(1, 0, true, false, source);
    case kStepOut:
        return runner.Step(1, 0, false, true, source);
    case kHalt:
    case kHaltMenu:
        return runner.Halt();
    case kHex:
    case kDecimal:
    case kOctal:
    case kBinary:
        state_.SetRadix(RadixOf(id));
        return S_OK;
    case kInitialise:
        state_.InitialiseTarget();
        return S_OK;
    case kStepAuto:
    case kStepAssembly:
    case kStepSource:
        stepMode_ = static_cast<int32_t>(id - kStepAuto);
        return S_OK;
    case kDisconnect:
        return state_.Disconnect();
    case kConnect:
        return state_.Connect();
    case kDisplayPc:
        return state_.ShowCurrentPosition();
    case kSaveMemory:
        return state_.SaveMemoryDialog(VARIANT_FALSE, 0, 0);
    case kVerifyMemory:
        return state_.VerifyMemoryDialog(VARIANT_FALSE, 0);
    case kSettings:
        return state_.ApplySessionSettings();
    default:
        // The dialogs of running, stepping, evaluating and breakpoints have no
        // form on this console; their commands do the work.
        return E_NOTIMPL;
    }
}
