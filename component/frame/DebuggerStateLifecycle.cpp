// How the debugger state meets the workbench and leaves it, and how it picks
// its family of managers.
#include "boundary/Ids.h"
#include "component/breaks/CPCBreakManager.h"
#include "component/command/CCmd.h"
#include "component/frame/CDebuggerState.h"
#include "component/frame/CUserPrompts.h"
#include "component/frame/ErrorTexts.h"
#include "component/frame/StringTable.h"
#include "component/memory/CPDMemoryManager.h"
#include "component/memory/CStatusMemoryPane.h"
#include "component/memory/CVELMemoryManagerDisableAble.h"
#include "component/run/CRunner.h"
#include "component/session/CDyxSessionDataCommandSink.h"
#include "component/symbols/CPDEvaluator.h"
#include "component/symbols/CPDLabelManager.h"
#include "component/symbols/CVELLabelManager.h"

namespace
{

// The state's nine service identifiers, highest version first.
const Guid kStateVersions[] = {Ids::IQDebuggerState9, Ids::IQDebuggerState8, Ids::IQDebuggerState7,
                               Ids::IQDebuggerState6, Ids::IQDebuggerState5, Ids::IQDebuggerState4,
                               Ids::IQDebuggerState3, Ids::IQDebuggerState2};
const Guid kBreakIds[] = {Ids::IQPCBreakManager, Ids::IQPCBreakManager2, Ids::IQPCBreakManager3};
const Guid kRunnerIds[] = {Ids::IQRunner,  Ids::IQRunner2, Ids::IQRunner3,
                           Ids::IQRunner4, Ids::IQRunner5, Ids::IQRunner6};

} // namespace

HRESULT CDebuggerState::Initialise(IQServiceRegistry* registry, int32_t flag)
{
    if (!flag || registry == nullptr)
        return S_OK;
    Host = registry;
    Registry = registry;
    auto* extras = QueryAs<IQHostExtras>(Registry, Ids::HostExtras);
    ErrorTable = GetServiceAs<IQErrorTable>(Registry, Ids::ErrorTable);
    auto* platforms = GetServiceAs<IQPlatformList>(Registry, Ids::PlatformList);
    auto* factory = GetServiceAs<IQDriverFactory>(Registry, Ids::DriverFactory);
    Connection.Attach(Registry, extras, platforms, factory);
    EditorService = GetServiceAs<IUnknown>(Registry, Ids::EditorService);
    SourceViewer = GetServiceAs<IUnknown>(Registry, Ids::SourceViewer);
    DisassemblyViewer = GetServiceAs<IUnknown>(Registry, Ids::DisassemblyViewer);

    for (const Guid& id : kStateVersions)
        Registry->RegisterService(id, static_cast<IQDebuggerState9*>(this));
    Registry->RegisterService(Ids::IQDebuggerState, static_cast<IQDebuggerState*>(this));

    Labels = std::make_unique<CVELLabelManager>(Registry, *this);
    Memory = std::make_unique<CVELMemoryManagerDisableAble>(Registry);
    Prompts = std::make_unique<CUserPrompts>(Registry);

    Registry->RegisterProvider(Ids::IQPostMessageClient, static_cast<IQPostMessageClient*>(this));
    Registry->RegisterProvider(Ids::IQFileMonitorClient, static_cast<IQFileMonitorClient*>(this));

    for (const Guid& id : kBreakIds)
        Registry->RegisterService(id, Breaks->Primary());
    Breaks->SetRegistry(Registry);
    Runner->SetRegistry(Registry);

    RegisteredRunnerIds.clear();
    for (const Guid& id : kRunnerIds) {
        void* face = nullptr;
        if (Runner->QueryInterface(id, &face) != S_OK)
            continue;
        Registry->RegisterService(id, static_cast<IUnknown*>(face));
        RegisteredRunnerIds.push_back(id);
    }

    Registry->RegisterService(Ids::IQSourceManager, static_cast<IQSourceManager*>(this));
    Registry->RegisterService(Ids::IQDebuggerApplicationServer,
                              static_cast<IQDebuggerApplicationServer*>(this));
    StatusPane = std::make_unique<CStatusMemoryPane>(*this, Registry);
    return S_OK;
}

HRESULT CDebuggerState::Terminate(int32_t flag)
{
    if (!flag || Registry == nullptr)
        return S_OK;
    if (PlatformAttached && Memory)
        Memory->DetachPlatform();
    EmptySession();
    Commands.clear();
    RetiredCommands.clear();
    StatusPane.reset();
    Recent.Save(Registry);

    for (auto it = RegisteredRunnerIds.rbegin(); it != RegisteredRunnerIds.rend(); ++it) {
        void* face = nullptr;
        Runner->QueryInterface(*it, &face);
        Registry->UnregisterService(*it, static_cast<IUnknown*>(face));
    }
    RegisteredRunnerIds.clear();
    Runner->DropRegistry();

    Breaks->DropRegistry();
    for (const Guid& id : kBreakIds)
        Registry->UnregisterService(id, Breaks->Primary());

    Registry->UnregisterService(Ids::IQSourceManager, static_cast<IQSourceManager*>(this));
    Registry->UnregisterService(Ids::IQDebuggerApplicationServer,
                                static_cast<IQDebuggerApplicationServer*>(this));

    DeletePrompts();
    if (ErrorTextsRegistered)
        ErrorTexts::Unregister(ErrorTable);
    ErrorTextsRegistered = false;

    Registry->UnregisterProvider(Ids::IQPostMessageClient, static_cast<IQPostMessageClient*>(this));
    Registry->UnregisterProvider(Ids::IQFileMonitorClient, static_cast<IQFileMonitorClient*>(this));
    Registry->UnregisterService(Ids::IQDebuggerState, static_cast<IQDebuggerState*>(this));
    for (auto it = std::rbegin(kStateVersions); it != std::rend(kStateVersions); ++it)
        Registry->UnregisterService(*it, static_cast<IQDebuggerState9*>(this));
    ClearServicePointers();
    Prompts.reset();
    Labels.reset();
    Memory.reset();
    Evaluator.reset();
    Host = nullptr;
    return S_OK;
}

void CDebuggerState::EmptySession()
{
    RemoveAllPrograms();
    RemoveAllCommandFiles();
    DisconnectTarget(true, false);
    ReleaseReader();
    WorkspaceName.clear();
    ProjectName.clear();
    ConfigurationName.clear();
    SessionName.clear();
}

void CDebuggerState::ClearServicePointers()
{
    Registry = nullptr;
    Connection.Detach();
    ErrorTable = nullptr;
    EditorService = nullptr;
    SourceViewer = nullptr;
    DisassemblyViewer = nullptr;
}

void CDebuggerState::RegisterPrompts()
{
    if (!Prompts)
        return;
    PromptLoad = Prompts->Add(StringTable::Load(5051), false);
    PromptUnload = Prompts->Add(StringTable::Load(5052), false);
    PromptSave = Prompts->Add(StringTable::Load(5053), false);
    PromptInit = Prompts->Add(StringTable::Load(5054), true);
    PromptDownloadAfterBuild = Prompts->Add(StringTable::Load(57661), true);
    PromptReload = Prompts->Add(StringTable::Load(57781), true);
    PromptBuild = Prompts->Add(StringTable::Load(57710), true);
    PromptGoEmpty = Prompts->Add(StringTable::Load(57716), true);
    PromptBatchMissing = Prompts->Add(StringTable::Load(57728), true);
    Recent.Load(Registry);
}

void CDebuggerState::DeletePrompts()
{
    if (!Prompts)
        return;
    for (Guid* key : {&PromptSave, &PromptUnload, &PromptLoad, &PromptInit, &PromptDownloadAfterBuild,
                      &PromptReload, &PromptBuild, &PromptGoEmpty, &PromptBatchMissing})
        Prompts->Delete(*key);
}

void CDebuggerState::RegisterErrorTexts()
{
    if (ErrorTable == nullptr || ErrorTextsRegistered)
        return;
    ErrorTexts::Register(ErrorTable);
    ErrorTextsRegistered = true;
}

bool CDebuggerState::AskUser(const std::string& text, const Guid& key)
{
    return Prompts && Prompts->AskYesNo(key, text);
}

void CDebuggerState::SelectPlatformMode(const std::string& platform)
{
    const int32_t oldMode = PlatformMode;
    int32_t newMode = PLATFORM_MODE_VEL;
    if (!platform.empty() && Connection.IsFunctionPlatform(platform))
        newMode = PLATFORM_MODE_PD;
    if (newMode == oldMode && newMode == PLATFORM_MODE_VEL)
        return;
    PlatformMode = newMode;
    if (oldMode == PLATFORM_MODE_PD && newMode == PLATFORM_MODE_VEL && CommandSink)
        CommandSink->RemovePlatformCommands();
    Labels.reset();
    Memory.reset();
    Evaluator.reset();
    if (newMode == PLATFORM_MODE_VEL) {
        Labels = std::make_unique<CVELLabelManager>(Registry, *this);
        Memory = std::make_unique<CVELMemoryManagerDisableAble>(Registry);
        return;
    }
    Labels = std::make_unique<CPDLabelManager>(Registry, *this);
    Memory = std::make_unique<CPDMemoryManagerDisableAble>(Registry);
    if (oldMode == PLATFORM_MODE_VEL && CommandSink)
        CommandSink->AddPlatformCommands();
    Evaluator = std::make_unique<CPDEvaluator>(Registry, *this);
}

void CDebuggerState::RecordCommand(const std::string& command)
{
    auto* recorder = GetServiceAs<IQCommandRecorder>(Registry, Ids::IQCommandRecorder);
    if (recorder != nullptr && recorder->IsLogging() == S_OK)
        recorder->LogCommand(command);
}

void CDebuggerState::SetRadix(int32_t value)
{
    // In the family driven by function name the session's own evaluator holds
    // the radix; otherwise the platform's, found as a service.
    IQEvaluator2* evaluator = Evaluator ? static_cast<IQEvaluator2*>(Evaluator.get())
                                        : GetServiceAs<IQEvaluator2>(Registry, Ids::IQEvaluator2);
    if (evaluator == nullptr)
        return;
    int32_t current = 0;
    if (evaluator->GetRadix(current) == S_OK && current == value)
        return;
    const char* word = value == 2    ? "bin"
                       : value == 8  ? "oct"
                       : value == 10 ? "dec"
                       : value == 16 ? "hex"
                                     : nullptr;
    if (word == nullptr)
        return;
    RecordCommand(std::string("radix ") + word);
    evaluator->SetRadix(value);
}
