#include "component/frame/CDebuggerState.h"

#include "boundary/Ids.h"
#include "component/breaks/CPCBreakManager.h"
#include "component/command/CCmd.h"
#include "component/frame/CUserPrompts.h"
#include "component/memory/CMemoryManager.h"
#include "component/memory/CStatusMemoryPane.h"
#include "component/run/CRunner.h"
#include "component/symbols/CLabelManager.h"
#include "component/symbols/CPDEvaluator.h"

// Operations whose subsystem this build does not have yet answer with the
// error table's "Not implemented", so a caller shows a clear text.
static constexpr HRESULT kNotBuilt = QE_NOT_IMPLEMENTED;

CDebuggerState::CDebuggerState()
{
    // Nothing here may touch the workbench: it is not known yet.
    Breaks = std::make_unique<CPCBreakManager>(*this, 1);
    Runner = std::make_unique<CRunner>(*this, *Breaks);
}

CDebuggerState::~CDebuggerState()
{
    Views.Clear();
    Runner.reset();
    Breaks.reset();
}

HRESULT CDebuggerState::QueryInterface(const Guid& iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (iid == Ids::IUnknown)
        *out = static_cast<IQRegistryClient*>(this);
    else if (iid == Ids::IQComponent)
        *out = static_cast<IQComponent*>(this);
    else if (iid == Ids::IQDebuggerSync)
        *out = static_cast<IQDebuggerSync*>(this);
    else if (iid == Ids::IQDebuggerState9 || iid == Ids::IQDebuggerState8 || iid == Ids::IQDebuggerState7 ||
             iid == Ids::IQDebuggerState6 || iid == Ids::IQDebuggerState5 || iid == Ids::IQDebuggerState4 ||
             iid == Ids::IQDebuggerState3 || iid == Ids::IQDebuggerState2)
        *out = static_cast<IQDebuggerState9*>(this);
    else if (iid == Ids::IQDebuggerState)
        *out = static_cast<IQDebuggerState*>(this);
    else if (iid == Ids::IQSourceManager)
        *out = static_cast<IQSourceManager*>(this);
    else if (iid == Ids::IQErrorReporter)
        *out = static_cast<IQErrorReporter*>(this);
    else if (iid == Ids::IQDebuggerApplicationServer)
        *out = static_cast<IQDebuggerApplicationServer*>(this);
    else if (iid == Ids::IQDisassemblyDataManagerServer)
        *out = static_cast<IQDisassemblyDataManagerServer*>(this);
    else if (iid == Ids::Component)
        *out = static_cast<IQDebuggerState*>(this);
    else if (iid == Ids::IQLabelManager2)
        *out = Labels ? static_cast<IQLabelManager2*>(Labels->Primary()) : nullptr;
    else if (iid == Ids::IQPostMessageClient)
        *out = static_cast<IQPostMessageClient*>(this);
    else if (iid == Ids::IQFileMonitorClient)
        *out = static_cast<IQFileMonitorClient*>(this);
    return *out != nullptr ? S_OK : E_NOINTERFACE;
}

HRESULT CDebuggerState::GetCpuText1(std::string& text)
{
    text = Connection.CpuText(0);
    return S_OK;
}
HRESULT CDebuggerState::GetCpuText2(std::string& text)
{
    text = Connection.CpuText(1);
    return S_OK;
}
HRESULT CDebuggerState::GetTargetText1(std::string& text)
{
    text = Connection.TargetText(0);
    return S_OK;
}
HRESULT CDebuggerState::GetTargetText2(std::string& text)
{
    text = Connection.TargetText(1);
    return S_OK;
}
HRESULT CDebuggerState::GetTargetText3(std::string& text)
{
    text = Connection.TargetText(2);
    return S_OK;
}

int32_t CDebuggerState::GetProgramCountA()
{
    return Programs.Count();
}
HRESULT CDebuggerState::GetProgram(int32_t index, IUnknown** program)
{
    if (program == nullptr)
        return E_POINTER;
    CQProgram* found = Programs.At(index);
    *program = found != nullptr ? static_cast<IQProgram*>(found) : nullptr;
    return found != nullptr ? S_OK : E_FAIL;
}
// Finding a program by its source file comes with source lookup.
HRESULT CDebuggerState::FindProgramByFile(const std::string&, IUnknown** loader)
{
    if (loader != nullptr)
        *loader = nullptr;
    return E_FAIL;
}
HRESULT CDebuggerState::GetProgramCount(int32_t& count)
{
    count = GetProgramCountA();
    return S_OK;
}
HRESULT CDebuggerState::GetProgramByName(const std::string& name, IUnknown** program)
{
    auto index = FindProgramIndexByKey(name);
    if (!index) {
        if (program != nullptr)
            *program = nullptr;
        return E_FAIL;
    }
    return GetProgram(*index, program);
}
HRESULT CDebuggerState::DownloadProgramByName(const std::string& name)
{
    auto index = FindProgramIndexByKey(name);
    return index ? DownloadProgramAt(*index) : E_FAIL;
}
HRESULT CDebuggerState::UnloadProgramByName(const std::string& name)
{
    auto index = FindProgramIndexByKey(name);
    return index ? UnloadProgramAt(*index) : E_FAIL;
}
HRESULT CDebuggerState::GetProgramDetails(int32_t index, std::string& file, uint32_t& offset,
                                          std::string& format, VariantBool& debugOnly, VariantBool& verify,
                                          AccessSize& size)
{
    CQProgram* program = Programs.At(index);
    if (program == nullptr)
        return E_FAIL;
    program->GetRawFileName(file);
    program->GetOffset(offset);
    program->GetFormat(format);
    debugOnly = program->LoadMode() == 1 ? VARIANT_TRUE : VARIANT_FALSE;
    verify = program->IsVerifyOff() == S_OK ? VARIANT_FALSE : VARIANT_TRUE;
    int32_t access = 1;
    program->GetAccessSize(access);
    size = static_cast<AccessSize>(access);
    return S_OK;
}

HRESULT CDebuggerState::IsConnectedA()
{
    return IsConnected() ? S_OK : E_FAIL;
}
HRESULT CDebuggerState::IsConnectedB()
{
    return IsConnected() ? S_OK : E_FAIL;
}
HRESULT CDebuggerState::IsDisconnected()
{
    return IsConnected() ? S_FALSE : S_OK;
}
HRESULT CDebuggerState::IsTargetAbsent()
{
    return Connection.HasTarget() ? S_FALSE : S_OK;
}

HRESULT CDebuggerState::GetTargetNames(std::string& a, std::string& b)
{
    return Connection.GetTargetNames(a, b);
}

HRESULT CDebuggerState::GetTargetKind()
{
    return Connection.GetTargetKind();
}

HRESULT CDebuggerState::GetRunnerKind()
{
    return IsConnected() ? S_FALSE : E_FAIL;
}

HRESULT CDebuggerState::RequestTargetToolbars()
{
    TargetToolbarsPending = true;
    return S_OK;
}
HRESULT CDebuggerState::CancelTargetToolbars()
{
    TargetToolbarsPending = false;
    return S_OK;
}

HRESULT CDebuggerState::ForwardToService(uint32_t& low, uint32_t& limit)
{
    auto* target = GetServiceAs<IQForwardTarget>(Registry, Ids::ForwardTarget);
    return target ? target->Forward(low, limit) : E_FAIL;
}

// The one operation a platform thread may call.
HRESULT CDebuggerState::SetStopAddress(uint32_t value)
{
    Connection.SetStopAddress(value);
    return S_OK;
}

HRESULT CDebuggerState::SetSyncPeers(IQDebuggerSync** peers, int32_t count)
{
    Sync.SetPeers(peers, count);
    return S_OK;
}
HRESULT CDebuggerState::SetActiveSession(int32_t flag)
{
    Sync.SetActive(flag != 0);
    return S_OK;
}
HRESULT CDebuggerState::SetSessionsInStep(int32_t flag)
{
    Sync.SetInStep(flag != 0);
    return S_OK;
}

HRESULT CDebuggerState::GetSessionName(std::string& name)
{
    name = SessionName;
    return S_OK;
}

HRESULT CDebuggerState::GetErrorText(HRESULT code, std::string& text)
{
    return ErrorTable ? ErrorTable->GetText(code, text) : E_FAIL;
}

HRESULT CDebuggerState::OnRegistry(IUnknown*)
{
    return S_OK;
}

void CDebuggerState::SetSessionKey(const std::string& workspace, const std::string& project,
                                   const std::string& configuration, const std::string& session)
{
    WorkspaceName = workspace;
    ProjectName = project;
    ConfigurationName = configuration;
    SessionName = session;
}

IQMemoryManager* CDebuggerState::GetMemoryInterface()
{
    return Memory ? static_cast<IQMemoryManager*>(Memory.get()) : nullptr;
}
IQPCBreakManager* CDebuggerState::GetBreakInterface()
{
    return Breaks->Primary();
}
IQLabelManager2* CDebuggerState::GetLabelInterface()
{
    return Labels ? Labels->Primary() : nullptr;
}
IQRunner* CDebuggerState::GetRunnerInterface()
{
    return Runner.get();
}

// Subsystems this build does not carry yet.
HRESULT CDebuggerState::SaveMemoryDialog(VariantBool, TargetAddress, TargetAddress)
{
    return kNotBuilt;
}
HRESULT CDebuggerState::LoadMemoryDialog(VariantBool, TargetAddress)
{
    return kNotBuilt;
}
HRESULT CDebuggerState::CanVerifyMemory()
{
    return IsConnected() && Memory && Memory->GetCanVerify() == S_OK ? S_OK : E_FAIL;
}
HRESULT CDebuggerState::VerifyMemoryDialog(VariantBool, TargetAddress)
{
    return kNotBuilt;
}
HRESULT CDebuggerState::DownloadProgramAt(int32_t index)
{
    return DownloadPrograms(index, true, false, false, true, true);
}
HRESULT CDebuggerState::UnloadProgramAt(int32_t index)
{
    return UnloadPrograms(index);
}
HRESULT CDebuggerState::ShowSourceAt(TargetAddress)
{
    return kNotBuilt;
}
HRESULT CDebuggerState::ShowCurrentPosition()
{
    return kNotBuilt;
}
HRESULT CDebuggerState::ReadSymbolValue(const std::string&, uint32_t& low, uint32_t& high)
{
    low = high = 0;
    return kNotBuilt;
}
HRESULT CDebuggerState::DownloadProgramEx(int32_t index, VariantBool debugDataOnly)
{
    if (index >= Programs.Count())
        return E_FAIL;
    return DownloadPrograms(index, true, debugDataOnly == VARIANT_TRUE, true, true, true);
}
// The debugger's log is the "Debug" tab of the workbench's output window.
HRESULT CDebuggerState::ClearDebugOutput()
{
    if (auto* out = GetServiceAs<IQOutputWindow>(Registry, Ids::OutputWindow))
        out->ClearTab("Debug");
    return S_OK;
}

HRESULT CDebuggerState::WriteDebugLine(const std::string& text)
{
    if (auto* out = GetServiceAs<IQOutputWindow>(Registry, Ids::OutputWindow))
        out->AppendText("Debug", text + "\r\n");
    return S_OK;
}

HRESULT CDebuggerState::ShowDebugOutput()
{
    if (auto* out = GetServiceAs<IQOutputWindow>(Registry, Ids::OutputWindow))
        out->BringForward("Debug");
    return S_OK;
}
