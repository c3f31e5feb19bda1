// Connecting a session to its platform, and letting it go again.
#include <strings.h>

#include <algorithm>

#include "boundary/Ids.h"
#include "boundary/interfaces/Platform.h"
#include "boundary/interfaces/Store.h"
#include "component/breaks/CPCBreakManager.h"
#include "component/command/CCmd.h"
#include "component/command/CCmdConnect.h"
#include "component/command/CCmdRadix.h"
#include "component/command/memory/CCmdMemoryCompare.h"
#include "component/command/memory/CCmdMemoryDisplay.h"
#include "component/command/memory/CCmdMemoryEdit.h"
#include "component/command/memory/CCmdMemoryFill.h"
#include "component/command/memory/CCmdMemoryFind.h"
#include "component/command/memory/CCmdMemoryMove.h"
#include "component/command/memory/CCmdMemoryTest.h"
#include "component/frame/CDebuggerState.h"
#include "component/frame/CUserPrompts.h"
#include "component/frame/StringTable.h"
#include "component/memory/CMemoryManager.h"
#include "component/run/CRunner.h"
#include "component/symbols/CLabelManager.h"

namespace
{

constexpr const char* kNone = "<none>";
constexpr const char* kFirstConnectionTag = "FIRST_CONNECTION_TAG";

// Lines of a driver's description; text past the last wanted line is dropped.
std::vector<std::string> SplitDescription(const std::string& text, size_t lines)
{
    std::vector<std::string> out(lines);
    size_t start = 0;
    for (size_t i = 0; i < lines; ++i) {
        size_t end = text.find('\n', start);
        out[i] = text.substr(start, end == std::string::npos ? std::string::npos : end - start);
        if (end == std::string::npos)
            break;
        start = end + 1;
    }
    return out;
}

bool IsNoPlatform(const std::string& name)
{
    return name.empty() || strcasecmp(name.c_str(), kNone) == 0;
}

// The session-data clients as they stand now.
std::vector<IUnknown*> SessionClients(IQServiceRegistry* registry)
{
    int32_t count = 0;
    IUnknown** array = nullptr;
    if (registry == nullptr || Failed(registry->GetProviders(Ids::IQWorkSpaceClient2, count, array)) ||
        !array)
        return {};
    return std::vector<IUnknown*>(array, array + count);
}

} // namespace

int32_t CDebuggerState::DriverMode()
{
    auto* extras = static_cast<IQHostExtras*>(HostExtras);
    return extras != nullptr && extras->GetDriverCreationMode() == S_OK ? 1 : 0;
}

std::string CDebuggerState::ReadPlatformName()
{
    std::string name;
    if (auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore))
        store->GetPlatform(WorkspaceName, ProjectName, SessionName, name);
    return name;
}

bool CDebuggerState::CanConnect() const
{
    return !Building && !IsNoPlatform(PlatformName) && !IsConnected();
}

bool CDebuggerState::CanDisconnect() const
{
    if (Building || !IsConnected() || AlwaysConnected)
        return false;
    if (auto* control = static_cast<IQTargetControl*>(TargetControl))
        return control->CanDisconnect() == S_OK;
    return !Runner->IsRunning();
}

HRESULT CDebuggerState::Connect()
{
    auto before = SessionClients(Registry);
    std::string platform = ReadPlatformName();
    if (!ConnectTo(platform, false, false))
        return E_FAIL;
    Broadcast(Event{Ids::EVENT_CONNECTED, 0});
    // Clients that came with the drivers load their session data now.
    for (IUnknown* client : SessionClients(Registry))
        if (std::find(before.begin(), before.end(), client) == before.end())
            static_cast<IQWorkSpaceClient2*>(client)->LoadSessionState(WorkspaceName, ProjectName,
                                                                       ConfigurationName, SessionName);
    Breaks->OnTargetAttached();
    RunConnectionBatch();
    return S_OK;
}

HRESULT CDebuggerState::Disconnect()
{
    DisconnectTarget(false, false);
    return S_OK;
}

void CDebuggerState::BuildCommands()
{
    Commands.push_back(std::make_unique<CCmdRadix>(Registry, *this));
    Commands.push_back(std::make_unique<CCmdDisconnect>(Registry, *this));
    // Views read memory again when a command has changed it.
    auto memoryChanged = [this] { Broadcast(Event{Ids::EVENT_MEMORY_CHANGED, 0}); };
    Commands.push_back(std::make_unique<CCmdMemoryCompare>(Registry, memoryChanged));
    Commands.push_back(std::make_unique<CCmdMemoryDisplay>(Registry, memoryChanged));
    Commands.push_back(std::make_unique<CCmdMemoryEdit>(Registry, memoryChanged));
    Commands.push_back(std::make_unique<CCmdMemoryFill>(Registry, memoryChanged));
    Commands.push_back(std::make_unique<CCmdMemoryFind>(Registry, memoryChanged));
    Commands.push_back(std::make_unique<CCmdMemoryMove>(Registry, memoryChanged));
    Commands.push_back(std::make_unique<CCmdMemoryTest>(Registry, memoryChanged));
}

bool CDebuggerState::ConnectTo(const std::string& platform, bool runBatch, bool commandsExist)
{
    RetiredCommands.clear();
    if (HasBatchFiles(TIMING_AT_CONNECTION) && DisableMemoryUntilBatch() && Memory)
        Memory->DisableMemory();
    AlwaysConnected = false;
    std::string error;
    bool connected = false;
    std::string cpuName;
    auto* factory = static_cast<IQDriverFactory*>(DriverFactory);
    if (PlatformList == nullptr || factory == nullptr ||
        Failed(PlatformList->GetCpuDriverName(platform, cpuName))) {
        error = "Target device driver missing, or connection cancelled: " + platform;
    } else {
        DisconnectTarget(false, commandsExist);
        const int32_t mode = DriverMode();
        IUnknown* cpu = nullptr;
        HRESULT hr = PlatformMode == PLATFORM_MODE_PD
                         ? (factory->CheckCpuDriverFor(cpuName, mode, 0, platform) == S_OK
                                ? factory->CreateCpuDriverFor(cpuName, Registry, 0, mode, 0, platform, &cpu)
                                : E_FAIL)
                         : (factory->CheckCpuDriver(cpuName, mode, 0) == S_OK
                                ? factory->CreateCpuDriver(cpuName, Registry, 0, mode, 0, &cpu)
                                : E_FAIL);
        if (Failed(hr) || cpu == nullptr) {
            error = "Cpu Driver Missing : " + cpuName;
        } else {
            IUnknown* target = nullptr;
            hr = factory->CheckTargetDriver(platform, mode, 0) == S_OK
                     ? factory->CreateTargetDriver(platform, Registry, 0, mode, 0, &target)
                     : E_FAIL;
            if (Failed(hr) || target == nullptr) {
                factory->ReleaseDriver(cpu, -1);
                error = "Target device driver missing, or connection cancelled: " + platform;
            } else {
                CpuDriver = cpu;
                Target = target;
                auto* details = QueryAs<IQCpuDetails>(CpuDriver, Ids::CpuDetails);
                CpuDetails = details;
                CpuOptions = QueryAs<IUnknown>(CpuDetails, Ids::CpuOptions);
                auto* core = QueryAs<IQTargetCore>(Target, Ids::TargetCore);
                TargetControl = QueryAs<IUnknown>(Target, Ids::TargetControl);
                TargetKind = QueryAs<IUnknown>(Target, Ids::TargetKind);
                uint32_t first = 0, second = 0;
                std::string text;
                if (details != nullptr) {
                    details->GetIdentity(first, second);
                    details->GetDescription(text);
                }
                auto cpuLines = SplitDescription(text, 2);
                CpuText1 = cpuLines[0];
                CpuText2 = cpuLines[1];
                text.clear();
                if (core != nullptr) {
                    core->SetCpuIdentity(first, second);
                    core->GetDescription(text);
                }
                auto targetLines = SplitDescription(text, 3);
                TargetText1 = targetLines[0];
                TargetText2 = targetLines[1];
                TargetText3 = targetLines[2];
                uint32_t always = 0;
                AlwaysConnected =
                    Succeeded(PlatformList->GetPlatformProperty(platform, 1, always)) && always != 0;
                // Holding the core is what being connected means.
                TargetCore = core;
                connected = core != nullptr;
                OpenDefaultReader();
            }
        }
    }
    PlatformName = platform;
    if (!error.empty()) {
        if (auto* box = GetServiceAs<IQMessageBox>(Registry, Ids::MessageBoxService))
            box->ShowMessage(error, MessageIcon::Stop);
    }
    Broadcast(Event{Ids::EVENT_PLATFORM_CHANGED, 0});
    if (connected) {
        if (runBatch)
            RunConnectionBatch();
        ShowDebugOutput();
        if (!commandsExist)
            BuildCommands();
        Broadcast(Event{Ids::EVENT_PLATFORM_CHANGED, 0});
        WriteDebugLine(StringTable::Load(5002));
    }
    // Whether or not the drivers came up: a session tried once has had its first connection.
    ApplyFirstConnectionDefaults();
    // Closed for a connection that failed: no batch will run to open it.
    // A connection that succeeded opens it through its batch.
    if (!connected && Memory && Memory->IsMemoryDisabled())
        OpenMemoryAfterConnection();
    return connected;
}

void CDebuggerState::ApplyFirstConnectionDefaults()
{
    auto* properties = GetServiceAs<IQTargetRegistry>(Registry, Ids::IQTargetRegistry);
    if (properties == nullptr)
        return;
    std::string tag;
    properties->GetProperty(kFirstConnectionTag, WorkspaceName, ProjectName, SessionName, tag);
    if (!tag.empty() && tag != "YES")
        return;
    properties->SetProperty(kFirstConnectionTag, "NO", WorkspaceName, ProjectName, SessionName);
    HRESULT fallback = 1;
    if (auto* options = static_cast<IQCpuOptions*>(CpuOptions))
        fallback = options->GetLimitDisassemblyDefault();
    if (auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore))
        store->SetLimitDisassemblyAccess(WorkspaceName, ProjectName, SessionName, fallback == 0 ? 1 : 0);
}

void CDebuggerState::DisconnectTarget(bool clearNames, bool keepCommands)
{
    auto* factory = static_cast<IQDriverFactory*>(DriverFactory);
    Breaks->OnTargetDetached();
    ReleaseReader();
    if (TargetControl != nullptr || TargetCore != nullptr) {
        if (auto* control = static_cast<IQTargetControl*>(TargetControl))
            control->Goodbye();
        else
            static_cast<IQTargetCore*>(TargetCore)->Goodbye();
        Broadcast(Event{Ids::EVENT_DISCONNECTED, 0});
        int32_t count = 0;
        IUnknown** listeners = nullptr;
        if (Registry && Succeeded(Registry->GetProviders(Ids::ConnectionListener, count, listeners)) &&
            listeners) {
            std::vector<IUnknown*> copy(listeners, listeners + count);
            for (IUnknown* listener : copy)
                static_cast<IQConnectionListener*>(listener)->OnTargetDisconnected(TargetText1);
        }
        if (factory != nullptr)
            factory->ReleaseDriver(Target, -1);
        Target = TargetCore = TargetControl = TargetKind = nullptr;
        WriteDebugLine(StringTable::Load(5003));
    }
    if (CpuDetails != nullptr) {
        if (factory != nullptr)
            factory->ReleaseDriver(CpuDriver, -1);
        CpuDriver = CpuDetails = CpuOptions = nullptr;
    }
    AlwaysConnected = false;
    if (clearNames) {
        PlatformName.clear();
        ReaderName.clear();
    }
    CpuText1.clear();
    CpuText2.clear();
    TargetText1.clear();
    TargetText2.clear();
    TargetText3.clear();
    if (!keepCommands) {
        for (auto& command : Commands) {
            command->Retire();
            RetiredCommands.push_back(std::move(command));
        }
        Commands.clear();
    }
    Broadcast(Event{Ids::EVENT_PLATFORM_CHANGED, 0});
}

void CDebuggerState::InitialiseTarget()
{
    RecordCommand("initialize");
    if (!AskUser(StringTable::Load(57660), PromptInit))
        return;
    if (Labels && PlatformMode == PLATFORM_MODE_VEL)
        Labels->ClearLabelsQuietly();
    Broadcast(Event{Ids::EVENT_INITIALISING, 0});
    const bool commandsExist = PlatformAttached;
    const std::string platform = PlatformName;
    DisconnectTarget(false, true);
    SkippedSourceFiles.clear();
    bool connected = ConnectTo(platform, false, commandsExist);
    if (connected) {
        Broadcast(Event{Ids::EVENT_CONNECTED, 0});
        Breaks->OnTargetAttached();
        RunConnectionBatch();
    }
}

HRESULT CDebuggerState::ConnectIfNeeded()
{
    if (!IsConnected())
        InitialiseTarget();
    return IsConnected() ? S_OK : E_FAIL;
}

void CDebuggerState::OpenDefaultReader()
{
    std::string name;
    if (auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore))
        store->GetDefaultReader(WorkspaceName, ProjectName, SessionName, name);
    if (IsNoPlatform(name))
        return;
    if (Reader != nullptr && strcasecmp(name.c_str(), ReaderName.c_str()) == 0)
        return;
    if (Reader != nullptr)
        ReleaseReader();
    auto* factory = static_cast<IQDriverFactory*>(DriverFactory);
    if (factory == nullptr)
        return;
    const int32_t mode = DriverMode();
    IUnknown* reader = nullptr;
    HRESULT hr = PlatformMode == PLATFORM_MODE_PD
                     ? (factory->CheckReaderFor(name, mode, 0, PlatformName) == S_OK
                            ? factory->CreateReaderFor(name, Registry, 0, -1, mode, 0, PlatformName, &reader)
                            : E_FAIL)
                     : (factory->CheckReader(name, mode, 0) == S_OK
                            ? factory->CreateReader(name, Registry, 0, -1, mode, 0, &reader)
                            : E_FAIL);
    // A reader that cannot be made is no error: the session goes on without one.
    if (Succeeded(hr) && reader != nullptr) {
        Reader = reader;
        ReaderName = name;
    }
}

void CDebuggerState::ReleaseReader()
{
    if (Reader == nullptr)
        return;
    if (auto* factory = static_cast<IQDriverFactory*>(DriverFactory))
        factory->ReleaseDriver(Reader, -1);
    Reader = nullptr;
}

bool CDebuggerState::SetDefaultReader(const std::string& name)
{
    if (PlatformList == nullptr)
        return false;
    if (strcasecmp(name.c_str(), ReaderName.c_str()) == 0)
        return true;
    std::string spelled = name;
    int32_t index = -1;
    if (Succeeded(PlatformList->FindReader(name, index)))
        PlatformList->GetReaderName(index, spelled);
    if (spelled.empty() || WorkspaceName.empty() || ProjectName.empty() || ConfigurationName.empty() ||
        SessionName.empty())
        return false;
    if (auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore))
        store->SetDefaultReader(WorkspaceName, ProjectName, SessionName, spelled);
    ReleaseReader();
    if (IsConnected())
        OpenDefaultReader();
    return true;
}

std::vector<std::string> CDebuggerState::ListReaders(const std::string& platform)
{
    std::vector<std::string> list;
    if (PlatformList == nullptr)
        return list;
    std::string name;
    for (int32_t i = 0; Succeeded(PlatformList->GetReaderName(i, name)); ++i) {
        if (std::find(list.begin(), list.end(), name) != list.end())
            continue;
        std::string owner;
        bool ownsOne = PlatformList->GetReaderPlatform(i, owner) == S_OK;
        if (!IsNoPlatform(platform) && ownsOne) {
            if (PlatformList->IsFunctionPlatform(platform) == S_OK && owner == platform)
                list.push_back(name);
        } else if (PlatformList->IsFunctionPlatform(platform) != S_OK) {
            list.push_back(name);
        }
    }
    return list;
}

HRESULT CDebuggerState::OpenSession(bool force, bool runBatch, bool plant)
{
    RemoveAllCommandFiles();
    LoadCommandFiles();
    auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore);
    std::string platform;
    if (store != nullptr &&
        Succeeded(store->GetPlatform(WorkspaceName, ProjectName, SessionName, platform))) {
        SelectPlatformMode(IsNoPlatform(platform) ? std::string() : platform);
        if (!force && platform == PlatformName && IsConnected()) {
            OpenDefaultReader();
        } else {
            Broadcast(Event{Ids::EVENT_SESSION_CHANGING, 0});
            DisconnectTarget(false, false);
            if (IsNoPlatform(platform)) {
                PlatformName = platform;
            } else {
                uint32_t always = 0;
                if (PlatformList != nullptr)
                    PlatformList->GetPlatformProperty(platform, 1, always);
                VariantBool noAuto = VARIANT_FALSE;
                store->GetNoAutoConnect(WorkspaceName, ProjectName, SessionName, noAuto);
                if (noAuto == VARIANT_TRUE && always == 0)
                    PlatformName = platform;
                else
                    ConnectTo(platform, runBatch, false);
            }
        }
    }
    if (IsConnected()) {
        Broadcast(Event{Ids::EVENT_CONNECTED, 0});
        if (plant)
            Breaks->OnTargetAttached();
    }
    return S_OK;
}

void CDebuggerState::FinishOpenSession()
{
    PostToSelf(0);
    if (IsConnected())
        Breaks->OnTargetAttached();
}

HRESULT CDebuggerState::CloseSession()
{
    RemoveAllCommandFiles();
    DisconnectTarget(true, false);
    ReleaseReader();
    return S_OK;
}
