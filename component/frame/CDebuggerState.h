#pragma once
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/Debugger.h"
#include "boundary/interfaces/Platform.h"
#include "boundary/interfaces/Workbench.h"
#include "component/frame/CCommandFile.h"
#include "component/frame/DebugCommandTable.h"
#include "component/frame/ProgramList.h"
#include "component/frame/RecentLists.h"
#include "component/frame/SyncGroup.h"
#include "component/frame/TargetConnection.h"
#include "component/frame/ViewServers.h"
#include "component/program/CFileTime.h"
#include "component/program/FileManagerOwner.h"

class CPCBreakManager;
class CRunner;
class CLabelManager;
class CMemoryManager;
class CPDEvaluator;
class CStatusMemoryPane;
class CUserPrompts;
class CDyxSessionDataCommandSink;
class CDownloadModuleFileManager;
class CCmd;

enum PlatformModeValue : int32_t { PLATFORM_MODE_VEL = 0, PLATFORM_MODE_PD = 1 };

// The central object of one debugger session, and what other components see
// of the debugger: it answers the interfaces and owns everything that runs.
// Its concerns live in helpers: the hold on the platform and the way stop
// reports come in (TargetConnection), the views' servers and the forwarding of
// events to them (ViewServers), and the sessions that run in step (SyncGroup).
class CDebuggerState : public IQDebuggerState,
                       public IQDebuggerState9,
                       public IQDebuggerSync,
                       public IQSourceManager,
                       public IQRegistryClient,
                       public IQComponent,
                       public IQErrorReporter,
                       public IQDebuggerApplicationServer,
                       public IQDisassemblyDataManagerServer,
                       public IQPostMessageClient,
                       public IQFileMonitorClient
{
public:
    CDebuggerState();
    virtual ~CDebuggerState();
    CDebuggerState(const CDebuggerState&) = delete;
    CDebuggerState& operator=(const CDebuggerState&) = delete;

    // IUnknown, for every face.
    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    // IQDebuggerState and its versions.
    HRESULT GetCpuText1(std::string& text) override;
    HRESULT GetCpuText2(std::string& text) override;
    HRESULT GetTargetText1(std::string& text) override;
    HRESULT GetTargetText2(std::string& text) override;
    HRESULT GetTargetText3(std::string& text) override;
    int32_t GetProgramCountA() override;
    HRESULT GetProgram(int32_t index, IUnknown** program) override;
    HRESULT FindProgramByFile(const std::string& name, IUnknown** loader) override;
    HRESULT IsConnectedA() override;
    HRESULT SaveMemoryDialog(VariantBool useRange, TargetAddress start, TargetAddress end) override;
    HRESULT IsConnectedB() override;
    HRESULT LoadMemoryDialog(VariantBool useAddress, TargetAddress address) override;
    HRESULT CanVerifyMemory() override;
    HRESULT VerifyMemoryDialog(VariantBool useAddress, TargetAddress address) override;
    HRESULT DownloadProgramAt(int32_t index) override;
    HRESULT UnloadProgramAt(int32_t index) override;
    HRESULT ShowSourceAt(TargetAddress address) override;
    HRESULT Connect() override;
    HRESULT Disconnect() override;
    HRESULT GetBatchState(int32_t& value) override;
    HRESULT GetProgramByName(const std::string& name, IUnknown** program) override;
    HRESULT DownloadProgramByName(const std::string& name) override;
    HRESULT UnloadProgramByName(const std::string& name) override;
    HRESULT SetSyncPeers(IQDebuggerSync** peers, int32_t count) override;
    HRESULT SetActiveSession(int32_t flag) override;
    HRESULT SetSessionsInStep(int32_t flag) override;
    HRESULT ClearDebugOutput() override;
    HRESULT WriteDebugLine(const std::string& text) override;
    HRESULT ShowDebugOutput() override;
    HRESULT SetStopAddress(uint32_t value) override;
    HRESULT ShowCurrentPosition() override;
    HRESULT ReadSymbolValue(const std::string& name, uint32_t& low, uint32_t& high) override;
    HRESULT IsDisconnected() override;
    HRESULT GetProgramCount(int32_t& count) override;
    HRESULT GetProgramDetails(int32_t index, std::string& file, uint32_t& offset, std::string& format,
                              VariantBool& debugDataOnly, VariantBool& verify, AccessSize& size) override;
    HRESULT DownloadProgramEx(int32_t index, VariantBool debugDataOnly) override;
    HRESULT ForwardToService(uint32_t& low, uint32_t& limit) override;
    HRESULT AddAndDownloadProgram(const std::string& file, const std::string& format, uint32_t offset,
                                  AccessSize size, VariantBool verify, VariantBool keep,
                                  std::string& loadedRanges) override;
    HRESULT IsTargetAbsent() override;
    HRESULT GetTargetNames(std::string& a, std::string& b) override;
    HRESULT AddProgram(const std::string& file, const std::string& format, uint32_t offset, AccessSize size,
                       int32_t debugDataOnly, int32_t verify, int32_t autoDownload) override;
    HRESULT GetTargetKind() override;
    HRESULT GetRunnerKind() override;
    HRESULT RequestTargetToolbars() override;
    HRESULT CancelTargetToolbars() override;
    HRESULT GetFileList(Variant& list) override;
    HRESULT AddDownloadFile(const std::string& file) override;
    HRESULT AddDownloadFiles(const Variant& files) override;

    // IQDebuggerSync: what a peer running in step asks of this session.
    HRESULT SyncGo() override;
    HRESULT SyncResetGo() override;
    HRESULT SyncStepIn() override;
    HRESULT SyncStepOver() override;
    HRESULT SyncStepOut() override;
    HRESULT SyncStep(int32_t count, int32_t rate, int32_t over, int32_t source) override;
    HRESULT SyncStopped() override;
    HRESULT SyncReset() override;
    HRESULT SyncReserved() override { return S_OK; }

    // IQRegistryClient
    HRESULT OnRegistry(IUnknown* argument) override;
    // IQDebuggerApplicationServer
    HRESULT SetRate(int32_t rate) override;
    HRESULT StepIn(int32_t kind, int32_t count) override;
    HRESULT StepOut(int32_t kind) override;
    HRESULT StepOver(int32_t kind, int32_t count) override;
    HRESULT DownloadFile(const std::string& name) override;
    HRESULT UnloadFile(const std::string& name) override;
    HRESULT Go() override;
    // IQComponent
    HRESULT OnEvent(const Event& event) override;
    HRESULT Initialise(IQServiceRegistry* registry, int32_t flag) override;
    HRESULT Reserved5() override { return S_OK; }
    HRESULT Reserved6() override { return S_OK; }
    HRESULT Terminate(int32_t flag) override;
    // IQErrorReporter
    HRESULT GetErrorText(HRESULT code, std::string& text) override;
    // IQDisassemblyDataManagerServer
    HRESULT CreateServer(IUnknown* client, IUnknown** server) override;
    HRESULT ReleaseServer(IUnknown* client) override;
    HRESULT GetSessionName(std::string& name) override;
    HRESULT IsTargetAbsentQuery() override { return IsTargetAbsent(); }
    // IQPostMessageClient
    HRESULT OnPostedMessage(uint32_t value) override;
    // IQFileMonitorClient
    HRESULT OnFileChanged(const std::string& path) override;

    // What the rest of the component calls directly.
    bool IsConnected() const { return Connection.IsConnected(); }
    int32_t GetPlatformMode() const { return PlatformMode; }
    bool UsesPlatformSymbols() const { return PlatformMode == PLATFORM_MODE_PD || PlatformSymbolic; }
    IQMemoryManager* GetMemoryInterface();
    IQPCBreakManager* GetBreakInterface();
    IQLabelManager2* GetLabelInterface();
    IQRunner* GetRunnerInterface();
    CRunner* GetRunner() { return Runner.get(); }
    CPCBreakManager* GetBreaks() { return Breaks.get(); }
    CLabelManager* GetLabels() { return Labels.get(); }
    RecentLists& GetRecentLists() { return Recent; }
    // The debug menu's commands, with their rules, for the workbench's menus and toolbars.
    DebugCommandTable& GetDebugCommands() { return DebugCommands; }
    CMemoryManager* GetMemory() { return Memory.get(); }
    CPDEvaluator* GetEvaluator() { return Evaluator.get(); }
    CUserPrompts* GetPrompts() { return Prompts.get(); }
    IQServiceRegistry* GetRegistry() const { return Registry; }

    const std::string& GetWorkspaceName() const { return WorkspaceName; }
    const std::string& GetProjectName() const { return ProjectName; }
    const std::string& GetConfigurationName() const { return ConfigurationName; }
    const std::string& GetSessionName() const { return SessionName; }
    void SetSessionKey(const std::string& workspace, const std::string& project,
                       const std::string& configuration, const std::string& session);

    // Picks the family of managers for a platform name; rebuilds them when the
    // family is the one driven by function name, every time.
    void SelectPlatformMode(const std::string& platform);
    // Sets the workbench's radix, writing the "radix" command to the log first.
    void SetRadix(int32_t value);
    // Writes a command to the workbench's command log when the log is on.
    void RecordCommand(const std::string& command);

    // Registers the questions and error texts; the session controller calls
    // these once its texts are in place.
    void RegisterPrompts();
    void RegisterErrorTexts();
    bool AskUser(const std::string& text, const Guid& key);

    void SetCommandSink(CDyxSessionDataCommandSink* sink) { CommandSink = sink; }
    bool TargetToolbarsArePending() const { return TargetToolbarsPending; }

    // Events: the views' servers get an event in two passes.
    void ForwardEvent(const Event& event) { Views.Forward(event); }
    void Broadcast(const Event& event);
    void PostToSelf(uint32_t value);

    // Telling the peers that run in step.
    void NotifySyncGo();
    void NotifySyncResetGo();
    void NotifySyncReset();
    void NotifySyncStepIn();
    void NotifySyncStepOver();
    void NotifySyncStepOut();
    void NotifySyncStep(int32_t count, int32_t rate, int32_t over, int32_t source);
    void NotifySyncStopped();

    // What the runner tells the state about the end of runs and steps.
    void OnRunStarts();
    void OnRunEnded();
    void OnStepDone();
    void OnSteppingBegins(int32_t kind, int32_t rate);
    void OnSteppingEnded(bool cancelled);
    bool IsPositionShown();

    // A command that waits for the target: finished at the next stop.
    void SetWaitingCommand(std::function<void()> finish) { WaitingCommand = std::move(finish); }

    // Connection to the platform.
    // Connects the session, named by its strings, to the platform.
    bool ConnectTo(const std::string& platform, bool runBatch, bool commandsExist);
    void DisconnectTarget(bool clearNames, bool keepCommands);
    void InitialiseTarget();
    HRESULT ConnectIfNeeded();
    void OpenDefaultReader();
    void ReleaseReader();
    bool SetDefaultReader(const std::string& name);
    std::vector<std::string> ListReaders(const std::string& platform);
    bool CanConnect() const;
    bool CanDisconnect() const;
    const std::string& GetPlatformName() const { return Connection.PlatformName(); }
    const std::string& GetReaderName() const { return Connection.ReaderName(); }
    bool IsAlwaysConnected() const { return Connection.IsAlwaysConnected(); }
    size_t CommandCount() const { return Commands.size(); }

    // The programs of the session, one for each download module.
    const ProgramList& GetPrograms() const { return Programs; }
    // The session control's manager of the files of debug-only projects; null without one.
    void SetFileManager(CDownloadModuleFileManager* manager) { FileManager = manager; }
    FileManagerOwner& FileManagerFace() { return FileManagerHostFace; }
    // Indexes of the programs a posted message will reload.
    const std::vector<int32_t>& GetReloadQueue() const { return ReloadQueue; }
    // The module list as the settings store holds it; empty when it cannot be read.
    std::vector<CDownloadModule> ReadModules();
    // Builds a program for each module the store lists, after those there are.
    void BuildPrograms();
    // Takes the program out of the list, with its labels; the target keeps what it loaded.
    void RemoveProgram(int32_t index);
    void RemoveAllPrograms();
    // Brings the programs into line with the store's module list after the
    // settings changed; true, and the programs-changed event, when anything did.
    bool ApplyModuleList();
    // After a build: each program's file is checked and its time noted; with
    // the session's "download after build" on, the rebuilt programs are offered.
    void NoteRebuiltFiles();
    std::optional<int32_t> FindProgramIndexByKey(const std::string& key) const;
    // What the file commands change of the list. A program of this session for
    // the module, not yet open.
    CQProgram MakeProgram(const CDownloadModule& module);
    // Enters a copy at the index (at the end when out of range) and opens it; its index.
    int32_t InsertProgram(int32_t index, const CQProgram& program);
    // Takes out the program of this module key; false when there is none.
    bool RemoveProgramByName(const std::string& key);
    // Stores the module list and takes it as the one the programs now stand for.
    void WriteModules(const std::vector<CDownloadModule>& modules);
    // A program's file name with its placeholders filled in, for this session.
    std::string ExpandForSession(const std::string& text) const;

    // Loading, saving and verifying (each gives the task's status: 1
    // cancelled, 2 done, 3 failed). `quiet`: the caller tells the outcome;
    // a failed save or verify still shows its reason.
    int32_t LoadProgram(CQProgram& program, bool debugDataOnly, bool log, bool quiet);
    // Index -1: every program. The result is negative when a program failed.
    HRESULT DownloadPrograms(int32_t index, bool reload, bool debugDataOnly, bool skipBuildCheck,
                             bool exclusive, bool log);
    int32_t DownloadProgram(int32_t index, bool quiet);
    HRESULT UnloadPrograms(int32_t index);
    int32_t SaveMemory(TargetAddress start, TargetAddress end, const std::string& path,
                       const std::string& format, int32_t accessSize);
    int32_t VerifyMemory(const std::string& format, const std::string& path, uint32_t offset,
                         int32_t accessSize, bool quiet);
    // Shows the program's entry in its source; silent when there is none.
    void ShowEntry(CQProgram* program);

    // Downloads the programs marked for it, each on its own.
    void RunAutomaticDownloads();

    // Session changes.
    HRESULT OpenSession(bool force, bool runBatch, bool plant);
    // After the settings changed: platform, batch files and programs brought in line.
    HRESULT ApplySessionSettings();
    void FinishOpenSession();
    HRESULT CloseSession();

    // Batch files of the session, kept per timing.
    const std::vector<CCommandFile>& GetCommandFiles() const { return CommandFiles; }
    void SetCommandFiles(std::vector<CCommandFile> files) { CommandFiles = std::move(files); }
    // Reads the session's list from the settings store; an unreadable one is empty.
    void LoadCommandFiles();
    void RemoveAllCommandFiles() { CommandFiles.clear(); }
    bool HasBatchFiles(int32_t timing) const;
    // Hands every file of the timing to the command line, unless a batch runs.
    void StartBatchFiles(int32_t timing);
    // The timing-0 batch after a connection, and memory access given back.
    void RunConnectionBatch();
    // The session option that keeps memory closed until the connection batch ran.
    bool DisableMemoryUntilBatch();
    // Gives memory access back once the connection batch is over, and has the
    // views read again if one was refused meanwhile.
    void OpenMemoryAfterConnection();

    int32_t GetBatchRunning() const { return BatchRunning; }
    uint32_t GetStopAddress() const { return StopAddress; }
    bool IsSyncDriven() const { return SyncDriven; }
    bool IsBuilding() const { return Building; }
    bool IsPlatformAttached() const { return PlatformAttached; }
    bool IsStepping() const { return Stepping; }
    bool IsSteppingBatch() const { return SteppingBatch; }
    bool LastShown(uint32_t& address) const
    {
        address = LastShownAddress;
        return LastShownValid;
    }

protected:
    std::vector<CCommandFile> CommandFiles;
    // Commands made at the first connection, deleted when it ends for good.
    std::vector<std::unique_ptr<CCmd>> Commands;
    // Commands that left the command window while one of them may still be
    // running (a "disconnect" ends its own command); deleted at the next connection.
    std::vector<std::unique_ptr<CCmd>> RetiredCommands;
    // Session strings.
    std::string WorkspaceName, ProjectName, ConfigurationName, SessionName;

    IQServiceRegistry* Registry = nullptr;
    std::unique_ptr<CUserPrompts> Prompts;
    std::unique_ptr<CLabelManager> Labels;
    std::unique_ptr<CPDEvaluator> Evaluator;
    int32_t BatchRunning = 0;
    // Memory is kept closed until the running connection batch finishes.
    bool OpenMemoryAfterBatch = false;
    int32_t BatchTiming = 0;
    bool Building = false;
    bool SyncDriven = false;
    Guid PromptBuild{}, PromptGoEmpty{}, PromptBatchMissing{};
    IQErrorTable* ErrorTable = nullptr;
    IUnknown* EditorService = nullptr;
    IUnknown* SourceViewer = nullptr;
    IUnknown* DisassemblyViewer = nullptr;
    TargetConnection Connection;
    int32_t LastProgramHit = 0;
    std::vector<std::string> SkippedSourceFiles;
    SyncGroup Sync{this};
    CDyxSessionDataCommandSink* CommandSink = nullptr;
    IQServiceRegistry* Host = nullptr;
    bool PlatformAttached = false;
    std::unique_ptr<CMemoryManager> Memory;
    std::unique_ptr<CPCBreakManager> Breaks;
    std::unique_ptr<CRunner> Runner;
    std::unique_ptr<CStatusMemoryPane> StatusPane;
    Guid PromptLoad{}, PromptUnload{}, PromptSave{}, PromptInit{}, PromptDownloadAfterBuild{}, PromptReload{};
    std::string LastSaveStart, LastSaveEnd, LastDownloadKey;
    uint32_t LastShownAddress = 0;
    bool LastShownValid = false;
    ViewServers Views;
    std::vector<int32_t> ReloadQueue;
    std::vector<std::string> RecentVerifyFiles;
    RecentLists Recent;
    DebugCommandTable DebugCommands{*this};
    ProgramList Programs;
    // The module list the programs were last made from.
    std::vector<CDownloadModule> Modules;
    // The last known time of each watched file, by expanded path.
    std::map<std::string, CFileTime> FileTimes;
    int32_t PlatformMode = PLATFORM_MODE_VEL;
    bool Stepping = false, SteppingBatch = false;
    uint32_t StopAddress = 0;
    bool PlatformSymbolic = false;
    bool TargetToolbarsPending = false;
    bool ShowSourceAtStop = true;
    uint32_t ForcedShowAddress = 0;
    std::string ForcedShowFile;
    int32_t ForcedShowLine = 0;
    bool ErrorTextsRegistered = false;
    std::function<void()> WaitingCommand;

    // Makes the commands that exist only while a platform is connected.
    void BuildCommands();

private:
    // What a program asks of its session.
    struct ProgramHost final : ProgramOwner {
        explicit ProgramHost(CDebuggerState& state) : state(state) {}
        bool UsesFunctionFamily() const override { return state.IsFunctionFamily(); }
        std::string TargetPlatformName() const override { return state.GetPlatformName(); }
        int32_t DriverMode() const override { return state.Connection.DriverMode(); }
        CDebuggerState& state;
    };
    ProgramHost ProgramHostFace{*this};
    // What the file manager asks of its session.
    struct FileManagerHost final : FileManagerOwner {
        explicit FileManagerHost(CDebuggerState& state) : state(state) {}
        std::vector<std::string> ModuleSourceFiles(int32_t index) override;
        std::string ExpandedModulePath(int32_t index) override;
        void ShowMessage(const std::string& text) override;
        bool AskYesNo(const std::string& question) override;
        void DebugText(const std::string& text) override { state.DebugLines()(text); }
        CDebuggerState& state;
    };
    FileManagerHost FileManagerHostFace{*this};
    CDownloadModuleFileManager* FileManager = nullptr;
    // Texts for the debug output that end in a line break of their own.
    CFileTime::DebugStream DebugLines()
    {
        return [this](const std::string& text) { WriteDebugLine(text.substr(0, text.find('\n'))); };
    }
    ProgramContext SessionContext() const { return {WorkspaceName, ProjectName, SessionName}; }
    void AppendProgram(const CDownloadModule& module);
    void TellModuleListeners(bool loaded, IUnknown* handle);
    // The reader's text for a code, or the error table's when the reader has none.
    std::string ErrorTextOf(const CQProgram& program, HRESULT code);
    void ShowText(const std::string& text, MessageIcon icon);
    bool ResetAfterDownload();
    // The work after a download that something was loaded by.
    void FinishDownload(CQProgram* last);
    std::string DefaultFormat();
    bool KnowsFormat(const std::string& format);
    // Whether a program made of these values can open its reader.
    bool CanOpen(const CDownloadModule& module);

    std::string ReadPlatformName();
    bool IsFunctionFamily() const { return PlatformMode == PLATFORM_MODE_PD; }
    // The steps of ConnectTo.
    bool MakeDrivers(const std::string& platform, bool commandsExist, std::string& error);
    void AnnounceConnection(bool runBatch, bool commandsExist);
    void ApplyFirstConnectionDefaults();
    void TellConnectionListeners(bool connected);
    void OnTargetStopped(const Event& event);
    void OnRegisterChanged(const Event& event);
    void ShowPositionAt(uint32_t address);
    template <class Call> void NotifyPeers(bool needActive, Call call)
    {
        // Without a workbench there are no peers to speak of.
        if (Registry != nullptr)
            Sync.Tell(needActive, call);
    }
    void RegisterOwnServices();
    void UnregisterOwnServices();
    void EmptySession();
    void DeletePrompts();
    void ClearServicePointers();
    std::vector<Guid> RegisteredRunnerIds;
};
