// Connecting a session to its platform, and letting it go again.
#include <strings.h>

#include <algorithm>

#include "boundary/Ids.h"
#include "boundary/ScopeGuard.h"
#include "boundary/interfaces/Platform.h"
#include "boundary/interfaces/Store.h"
#include "component/breaks/CPCBreakManager.h"
#include "component/command/CCmd.h"
#include "component/command/CCmdCache.h"
#include "component/command/CCmdConnect.h"
#include "component/command/CCmdDefaultObjectReader.h"
#include "component/command/CCmdInitialise.h"
#include "component/command/CCmdRadix.h"
#include "component/command/file/CCmdFileLoad.h"
#include "component/command/file/CCmdFileLoadAll.h"
#include "component/command/file/CCmdFileSave.h"
#include "component/command/file/CCmdFileUnload.h"
#include "component/command/file/CCmdFileUnloadAll.h"
#include "component/command/file/CCmdFileVerify.h"
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

constexpr const char* kFirstConnectionTag = "FIRST_CONNECTION_TAG";

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

std::string CDebuggerState::ReadPlatformName()
{
    std::string name;
    if (auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore))
        store->GetPlatform(WorkspaceName, ProjectName, SessionName, name);
    return name;
}

bool CDebuggerState::CanConnect() const
{
    return !Building && !TargetConnection::NamesNothing(GetPlatformName()) && !IsConnected();
}

bool CDebuggerState::CanDisconnect() const
{
    if (Building || !IsConnected() || IsAlwaysConnected())
        return false;
    return Connection.CanDisconnect(!Runner->IsRunning());
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
            if (auto* workspaceClient = QueryAs<IQWorkSpaceClient2>(client, Ids::IQWorkSpaceClient2))
                workspaceClient->LoadSessionState(WorkspaceName, ProjectName, ConfigurationName, SessionName);
    Breaks->OnTargetAttached();
    RunConnectionBatch();
    RunAutomaticDownloads();
    return S_OK;
}

HRESULT CDebuggerState::Disconnect()
{
    DisconnectTarget(false, false);
    return S_OK;
}

void CDebuggerState::BuildCommands()
{
    Commands.push_back(std::make_unique<CCmdDefaultObjectReader>(Registry, *this));
    Commands.push_back(std::make_unique<CCmdFileLoad>(Registry, *this));
    Commands.push_back(std::make_unique<CCmdFileUnload>(Registry, *this));
    Commands.push_back(std::make_unique<CCmdFileLoadAll>(Registry, *this));
    Commands.push_back(std::make_unique<CCmdFileUnloadAll>(Registry, *this));
    Commands.push_back(std::make_unique<CCmdFileSave>(Registry, *this));
    Commands.push_back(std::make_unique<CCmdFileVerify>(Registry, *this));
    Commands.push_back(std::make_unique<CCmdCache>(Registry, *this));
    Commands.push_back(std::make_unique<CCmdRadix>(Registry, *this));
    Commands.push_back(std::make_unique<CCmdInitialise>(Registry, *this));
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
    // Memory closed for the connection batch opens through that batch; when
    // the connection fails no batch will run, so it opens on the way out.
    ScopeGuard openMemory([this] {
        if (Memory && Memory->IsMemoryDisabled())
            OpenMemoryAfterConnection();
    });
    if (HasBatchFiles(TIMING_AT_CONNECTION) && DisableMemoryUntilBatch() && Memory)
        Memory->DisableMemory();
    std::string error;
    const bool connected = MakeDrivers(platform, commandsExist, error);
    Connection.SetPlatformName(platform);
    if (!error.empty()) {
        if (auto* box = GetServiceAs<IQMessageBox>(Registry, Ids::MessageBoxService))
            box->ShowMessage(error, MessageIcon::Stop);
    }
    Broadcast(Event{Ids::EVENT_PLATFORM_CHANGED, 0});
    if (connected) {
        AnnounceConnection(runBatch, commandsExist);
        openMemory.Release();
    }
    // Whether or not the drivers came up: a session tried once has had its first connection.
    ApplyFirstConnectionDefaults();
    return connected;
}

bool CDebuggerState::MakeDrivers(const std::string& platform, bool commandsExist, std::string& error)
{
    std::string cpuName;
    if (!Connection.FindCpuDriver(platform, cpuName)) {
        error = "Target device driver missing, or connection cancelled: " + platform;
        return false;
    }
    DisconnectTarget(false, commandsExist);
    if (!Connection.CreateDrivers(platform, cpuName, IsFunctionFamily(), error))
        return false;
    OpenDefaultReader();
    return IsConnected();
}

void CDebuggerState::AnnounceConnection(bool runBatch, bool commandsExist)
{
    // The function-name family keeps what its own platform said.
    if (PlatformMode == PLATFORM_MODE_VEL) {
        auto* symbols = GetServiceAs<IQPlatformSymbols>(Registry, Ids::PlatformSymbolsQuery);
        PlatformSymbolic = symbols != nullptr && symbols->UsesPlatformSymbols() == S_OK;
    }
    if (runBatch)
        RunConnectionBatch();
    ShowDebugOutput();
    if (!commandsExist)
        BuildCommands();
    Broadcast(Event{Ids::EVENT_PLATFORM_CHANGED, 0});
    WriteDebugLine(StringTable::Load(5002));
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
    const HRESULT fallback = Connection.LimitDisassemblyDefault();
    if (auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore))
        store->SetLimitDisassemblyAccess(WorkspaceName, ProjectName, SessionName, fallback == 0 ? 1 : 0);
}

void CDebuggerState::TellConnectionListeners(bool connected)
{
    int32_t count = 0;
    IUnknown** listeners = nullptr;
    if (Registry == nullptr || Failed(Registry->GetProviders(Ids::ConnectionListener, count, listeners)) ||
        listeners == nullptr)
        return;
    // Copied first: a listener may register or unregister while told.
    const std::vector<IUnknown*> copy(listeners, listeners + count);
    for (IUnknown* provider : copy) {
        auto* listener = QueryAs<IQConnectionListener>(provider, Ids::ConnectionListener);
        if (listener == nullptr)
            continue;
        if (connected)
            listener->OnTargetConnected(Connection.TargetText(0));
        else
            listener->OnTargetDisconnected(Connection.TargetText(0));
    }
}

void CDebuggerState::DisconnectTarget(bool clearNames, bool keepCommands)
{
    Breaks->OnTargetDetached();
    Connection.ReleaseReader();
    if (Connection.SayGoodbye()) {
        Broadcast(Event{Ids::EVENT_DISCONNECTED, 0});
        TellConnectionListeners(false);
        Connection.ReleaseTarget();
        WriteDebugLine(StringTable::Load(5003));
    }
    Connection.ReleaseCpu();
    Connection.ClearDescriptions();
    if (clearNames)
        Connection.ForgetNames();
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
    const std::string platform = GetPlatformName();
    DisconnectTarget(false, true);
    SkippedSourceFiles.clear();
    if (ConnectTo(platform, false, commandsExist)) {
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
    // A reader that cannot be made is no error: the session goes on without one.
    if (!TargetConnection::NamesNothing(name))
        Connection.OpenReader(name, IsFunctionFamily());
}

void CDebuggerState::ReleaseReader()
{
    Connection.ReleaseReader();
}

bool CDebuggerState::SetDefaultReader(const std::string& name)
{
    if (!Connection.HasCatalogue())
        return false;
    if (strcasecmp(name.c_str(), GetReaderName().c_str()) == 0)
        return true;
    const std::string spelled = Connection.SpellReader(name);
    if (spelled.empty() || WorkspaceName.empty() || ProjectName.empty() || ConfigurationName.empty() ||
        SessionName.empty())
        return false;
    if (auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore))
        store->SetDefaultReader(WorkspaceName, ProjectName, SessionName, spelled);
    Connection.ReleaseReader();
    if (IsConnected())
        OpenDefaultReader();
    return true;
}

std::vector<std::string> CDebuggerState::ListReaders(const std::string& platform)
{
    return Connection.ListReaders(platform);
}

HRESULT CDebuggerState::OpenSession(bool force, bool runBatch, bool plant)
{
    RemoveAllPrograms();
    RemoveAllCommandFiles();
    LoadCommandFiles();
    auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore);
    std::string platform;
    if (store != nullptr &&
        Succeeded(store->GetPlatform(WorkspaceName, ProjectName, SessionName, platform))) {
        const bool none = TargetConnection::NamesNothing(platform);
        SelectPlatformMode(none ? std::string() : platform);
        if (!force && platform == GetPlatformName() && IsConnected()) {
            OpenDefaultReader();
        } else {
            Broadcast(Event{Ids::EVENT_SESSION_CHANGING, 0});
            DisconnectTarget(false, false);
            VariantBool noAuto = VARIANT_FALSE;
            if (!none)
                store->GetNoAutoConnect(WorkspaceName, ProjectName, SessionName, noAuto);
            if (none || (noAuto == VARIANT_TRUE && !Connection.IsAlwaysConnectedPlatform(platform)))
                Connection.SetPlatformName(platform);
            else
                ConnectTo(platform, runBatch, false);
        }
    }
    BuildPrograms();
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
    RemoveAllPrograms();
    RemoveAllCommandFiles();
    DisconnectTarget(true, false);
    ReleaseReader();
    return S_OK;
}
