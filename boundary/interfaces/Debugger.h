#pragma once
#include <cstdint>
#include <string>

#include "boundary/Flags.h"
#include "boundary/Variant.h"
#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/LabelManager.h"
#include "boundary/interfaces/MemoryManager.h"

// The debugger's own interfaces, as other components of the workbench see them.

// Sessions that run in step tell each other through this.
struct IQDebuggerSync : IUnknown {
    virtual HRESULT SyncGo() = 0;                                                            // 3
    virtual HRESULT SyncResetGo() = 0;                                                       // 4
    virtual HRESULT SyncStepIn() = 0;                                                        // 5
    virtual HRESULT SyncStepOver() = 0;                                                      // 6
    virtual HRESULT SyncStepOut() = 0;                                                       // 7
    virtual HRESULT SyncStep(int32_t count, int32_t rate, int32_t over, int32_t source) = 0; // 8
    virtual HRESULT SyncStopped() = 0;                                                       // 9
    virtual HRESULT SyncReset() = 0;                                                         // 10
    virtual HRESULT SyncReserved() = 0;                                                      // 11
};
struct IQSourceManager : IUnknown {
};
// How an outside application drives a session. Kinds: 1 assembly, 2 source.
struct IQDebuggerApplicationServer : IUnknown {
    virtual HRESULT SetRate(int32_t rate) = 0;                 // 3
    virtual HRESULT StepIn(int32_t kind, int32_t count) = 0;   // 4
    virtual HRESULT StepOut(int32_t kind) = 0;                 // 5
    virtual HRESULT StepOver(int32_t kind, int32_t count) = 0; // 6
    virtual HRESULT DownloadFile(const std::string& name) = 0; // 7
    virtual HRESULT UnloadFile(const std::string& name) = 0;   // 8
    virtual HRESULT Go() = 0;                                  // 9
};

struct IQDisassemblyDataManagerServer : IUnknown {
    virtual HRESULT CreateServer(IUnknown* client, IUnknown** server) = 0; // 3
    virtual HRESULT ReleaseServer(IUnknown* client) = 0;                   // 4
    virtual HRESULT GetSessionName(std::string& name) = 0;                 // 5
    virtual HRESULT IsTargetAbsentQuery() = 0;                             // 6
};

// The workbench calls every session-data client with the session key; slot
// 44 loads what the client keeps of that session.
struct IQWorkSpaceClient2 : IUnknown {
    virtual HRESULT LoadSessionState(const std::string& ws, const std::string& project,
                                     const std::string& cfg,
                                     const std::string& session) = 0; // 44
};

// The workbench's notices of workspaces and sessions coming and going.
struct IQWorkSpaceExtendedClient : IUnknown {
    using Name = const std::string&;
    virtual HRESULT WorkspaceClosing(Name ws) = 0;                                     // 3
    virtual HRESULT WorkspaceClosed(Name ws) = 0;                                      // 4
    virtual HRESULT SessionLeaving(Name ws, Name project, Name cfg, Name session) = 0; // 15
    virtual HRESULT SessionLeft(Name ws, Name project, Name cfg, Name session) = 0;    // 16
    virtual HRESULT SessionOpening(Name ws, Name project, Name cfg, Name session) = 0; // 17
    virtual HRESULT SessionOpened(Name ws, Name project, Name cfg, Name session) = 0;  // 18
};

// Primary faces of the managers the state owns.
struct IQPCBreakManager : IUnknown {
};
struct IQRunner : IUnknown {
};

struct IQDebuggerState : IUnknown {
    virtual HRESULT GetCpuText1(std::string& text) = 0;                                                 // 3
    virtual HRESULT GetCpuText2(std::string& text) = 0;                                                 // 4
    virtual HRESULT GetTargetText1(std::string& text) = 0;                                              // 5
    virtual HRESULT GetTargetText2(std::string& text) = 0;                                              // 6
    virtual HRESULT GetTargetText3(std::string& text) = 0;                                              // 7
    virtual int32_t GetProgramCountA() = 0;                                                             // 8
    virtual HRESULT GetProgram(int32_t index, IUnknown** program) = 0;                                  // 9
    virtual HRESULT FindProgramByFile(const std::string& name, IUnknown** loader) = 0;                  // 10
    virtual HRESULT IsConnectedA() = 0;                                                                 // 11
    virtual HRESULT SaveMemoryDialog(VariantBool useRange, TargetAddress start, TargetAddress end) = 0; // 12
    virtual HRESULT IsConnectedB() = 0;                                                                 // 13
    virtual HRESULT LoadMemoryDialog(VariantBool useAddress, TargetAddress address) = 0;                // 14
    virtual HRESULT CanVerifyMemory() = 0;                                                              // 15
    virtual HRESULT VerifyMemoryDialog(VariantBool useAddress, TargetAddress address) = 0;              // 16
};

// The second version puts two operations in front of the last seven of the first,
// so it repeats the whole table rather than deriving from it.
struct IQDebuggerState2 : IUnknown {
    virtual HRESULT GetCpuText1(std::string& text) = 0;                                                 // 3
    virtual HRESULT GetCpuText2(std::string& text) = 0;                                                 // 4
    virtual HRESULT GetTargetText1(std::string& text) = 0;                                              // 5
    virtual HRESULT GetTargetText2(std::string& text) = 0;                                              // 6
    virtual HRESULT GetTargetText3(std::string& text) = 0;                                              // 7
    virtual int32_t GetProgramCountA() = 0;                                                             // 8
    virtual HRESULT GetProgram(int32_t index, IUnknown** program) = 0;                                  // 9
    virtual HRESULT DownloadProgramAt(int32_t index) = 0;                                               // 10
    virtual HRESULT UnloadProgramAt(int32_t index) = 0;                                                 // 11
    virtual HRESULT FindProgramByFile(const std::string& name, IUnknown** loader) = 0;                  // 12
    virtual HRESULT IsConnectedA() = 0;                                                                 // 13
    virtual HRESULT SaveMemoryDialog(VariantBool useRange, TargetAddress start, TargetAddress end) = 0; // 14
    virtual HRESULT IsConnectedB() = 0;                                                                 // 15
    virtual HRESULT LoadMemoryDialog(VariantBool useAddress, TargetAddress address) = 0;                // 16
    virtual HRESULT CanVerifyMemory() = 0;                                                              // 17
    virtual HRESULT VerifyMemoryDialog(VariantBool useAddress, TargetAddress address) = 0;              // 18
    virtual HRESULT ShowSourceAt(TargetAddress address) = 0;                                            // 19
};

struct IQDebuggerState3 : IQDebuggerState2 {
    virtual HRESULT Connect() = 0;                                                     // 20
    virtual HRESULT Disconnect() = 0;                                                  // 21
    virtual HRESULT GetBatchState(int32_t& value) = 0;                                 // 22
    virtual HRESULT GetProgramByName(const std::string& name, IUnknown** program) = 0; // 23
    virtual HRESULT DownloadProgramByName(const std::string& name) = 0;                // 24
    virtual HRESULT UnloadProgramByName(const std::string& name) = 0;                  // 25
};

struct IQDebuggerState4 : IQDebuggerState3 {
    virtual HRESULT SetSyncPeers(IQDebuggerSync** peers, int32_t count) = 0; // 26
    virtual HRESULT SetActiveSession(int32_t flag) = 0;                      // 27
    virtual HRESULT SetSessionsInStep(int32_t flag) = 0;                     // 28
    virtual HRESULT ClearDebugOutput() = 0;                                  // 29
    virtual HRESULT WriteDebugLine(const std::string& text) = 0;             // 30
    virtual HRESULT ShowDebugOutput() = 0;                                   // 31
    // The one operation that other threads call.
    virtual HRESULT SetStopAddress(uint32_t value) = 0; // 32
};

struct IQDebuggerState5 : IQDebuggerState4 {
    virtual HRESULT ShowCurrentPosition() = 0;                                                   // 33
    virtual HRESULT ReadSymbolValue(const std::string& name, uint32_t& low, uint32_t& high) = 0; // 34
    virtual HRESULT IsDisconnected() = 0;                                                        // 35
    virtual HRESULT GetProgramCount(int32_t& count) = 0;                                         // 36
    virtual HRESULT GetProgramDetails(int32_t index, std::string& file, uint32_t& offset, std::string& format,
                                      VariantBool& debugDataOnly, VariantBool& verify,
                                      AccessSize& size) = 0;                         // 37
    virtual HRESULT DownloadProgramEx(int32_t index, VariantBool debugDataOnly) = 0; // 38
};

struct IQDebuggerState6 : IQDebuggerState5 {
    virtual HRESULT ForwardToService(uint32_t& low, uint32_t& limit) = 0; // 39
    virtual HRESULT AddAndDownloadProgram(const std::string& file, const std::string& format, uint32_t offset,
                                          AccessSize size, VariantBool verify, VariantBool keep,
                                          std::string& loadedRanges) = 0; // 40
};

struct IQDebuggerState7 : IQDebuggerState6 {
    virtual HRESULT IsTargetAbsent() = 0;                               // 41
    virtual HRESULT GetTargetNames(std::string& a, std::string& b) = 0; // 42
};

struct IQDebuggerState8 : IQDebuggerState7 {
    virtual HRESULT AddProgram(const std::string& file, const std::string& format, uint32_t offset,
                               AccessSize size, int32_t debugDataOnly, int32_t verify,
                               int32_t autoDownload) = 0; // 43
    virtual HRESULT GetTargetKind() = 0;                  // 44
    virtual HRESULT GetRunnerKind() = 0;                  // 45
    virtual HRESULT RequestTargetToolbars() = 0;          // 46
    virtual HRESULT CancelTargetToolbars() = 0;           // 47
};

struct IQDebuggerState9 : IQDebuggerState8 {
    virtual HRESULT GetFileList(Variant& list) = 0;               // 48
    virtual HRESULT AddDownloadFile(const std::string& file) = 0; // 49
    virtual HRESULT AddDownloadFiles(const Variant& files) = 0;   // 50
};
