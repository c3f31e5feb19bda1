// What follows a change of the session's settings, and the requests by which
// another component or application has a file loaded or a target run.
#include <strings.h>

#include "boundary/Ids.h"
#include "boundary/interfaces/Store.h"
#include "component/breaks/CPCBreakManager.h"
#include "component/frame/CDebuggerState.h"
#include "component/program/DownloadModuleList.h"
#include "component/run/CRunner.h"
#include "component/util/PathUtil.h"

namespace
{

// Codes of the application server, answers to a caller that knows them.
constexpr HRESULT kBadKind = MakeResult(0x80040201u);
constexpr HRESULT kTargetRunning = MakeResult(0x80040202u);
constexpr HRESULT kNoSuchProgram = MakeResult(0x80040216u);
constexpr HRESULT kNotConnected = MakeResult(0x80040218u);
constexpr HRESULT kDownloadAborted = MakeResult(0x80040219u);
constexpr HRESULT kUnknownFormat = MakeResult(0x80043002u);
constexpr HRESULT kLoadStopped = MakeResult(0x80043090u);
constexpr HRESULT kBadAccessSize = MakeResult(0x80043091u);

bool SameText(const std::string& a, const std::string& b)
{
    return strcasecmp(a.c_str(), b.c_str()) == 0;
}

std::string FilePart(const std::string& path)
{
    const size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

} // namespace

void CDebuggerState::RunAutomaticDownloads()
{
    for (int32_t i = 0; i < Programs.Count(); ++i)
        if (Programs.At(i)->AutoDownload() != 0)
            DownloadPrograms(i, false, false, false, true, false);
}

HRESULT CDebuggerState::ApplySessionSettings()
{
    RemoveAllCommandFiles();
    LoadCommandFiles();
    auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore);
    std::string platform;
    bool connectedNow = false;
    if (store != nullptr &&
        Succeeded(store->GetPlatform(WorkspaceName, ProjectName, SessionName, platform))) {
        if (platform == GetPlatformName()) {
            if (IsConnected())
                OpenDefaultReader();
        } else {
            const bool none = TargetConnection::NamesNothing(platform);
            SelectPlatformMode(none ? std::string() : platform);
            Broadcast(Event{Ids::EVENT_SESSION_CHANGING, 0});
            DisconnectTarget(false, false);
            VariantBool noAuto = VARIANT_FALSE;
            if (!none)
                store->GetNoAutoConnect(WorkspaceName, ProjectName, SessionName, noAuto);
            if (!none && noAuto == VARIANT_TRUE && !Connection.IsAlwaysConnectedPlatform(platform)) {
                Connection.SetPlatformName(platform);
            } else if (!none) {
                connectedNow = ConnectTo(platform, false, false);
            } else {
                Connection.SetPlatformName(platform);
                Broadcast(Event{Ids::EVENT_PLATFORM_CHANGED, 0});
            }
            for (int32_t i = 0; i < Programs.Count(); ++i)
                Programs.At(i)->SetLoaded(false);
        }
    }
    ApplyModuleList();
    if (connectedNow) {
        Broadcast(Event{Ids::EVENT_CONNECTED, 0});
        Breaks->OnTargetAttached();
        RunAutomaticDownloads();
    }
    return S_OK;
}

std::string CDebuggerState::DefaultFormat()
{
    std::string format;
    if (auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore))
        store->GetDefaultReader(WorkspaceName, ProjectName, SessionName, format);
    return format;
}

bool CDebuggerState::KnowsFormat(const std::string& format)
{
    int32_t index = -1;
    auto* formats = GetServiceAs<IQPlatformList>(Registry, Ids::PlatformList);
    return formats != nullptr && Succeeded(formats->FindReader(format, index)) && index >= 0;
}

bool CDebuggerState::CanOpen(const CDownloadModule& module)
{
    CQProgram probe(module, SessionContext(), ProgramHostFace, Registry);
    const bool opened = probe.Open(Registry);
    probe.Close(Registry);
    return opened;
}

HRESULT CDebuggerState::AddAndDownloadProgram(const std::string& file, const std::string& givenFormat,
                                              uint32_t offset, AccessSize size, VariantBool verify,
                                              VariantBool keep, std::string& loadedRanges)
{
    loadedRanges.clear();
    if (size != 1 && size != 2 && size != 4 && size != 8)
        return kBadAccessSize;
    const std::string format = givenFormat.empty() ? DefaultFormat() : givenFormat;
    std::vector<CDownloadModule> modules;
    if (keep == VARIANT_TRUE) {
        RemoveAllPrograms();
        WriteModules({});
    } else {
        modules = ReadModules();
    }
    const CDownloadModule module(file, offset, format, 0, verify == VARIANT_TRUE ? 1 : 0, size, 0);
    if (!KnowsFormat(format))
        return kUnknownFormat;
    bool temporary = false;
    auto index = FindProgramIndexByKey(module.Key());
    if (!index) {
        if (!CanOpen(module))
            return kUnknownFormat;
        AppendProgram(module);
        modules.push_back(module);
        WriteModules(modules);
        index = Programs.Count() - 1;
        temporary = keep != VARIANT_TRUE;
    } else {
        CanOpen(module);
    }
    const int32_t status = DownloadProgram(*index, true);
    HRESULT result = status == TASK_CANCELLED ? kLoadStopped : status == TASK_DONE ? S_OK : E_FAIL;
    if (status == TASK_DONE) {
        auto* evaluator = GetServiceAs<IQEvaluator2>(Registry, Ids::IQEvaluator2);
        for (const CMemoryLoadData& area : Programs.At(*index)->Areas().Ranges()) {
            std::string start, end;
            if (evaluator != nullptr) {
                evaluator->FormatAddress(area.Start.Value(), VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE,
                                         start);
                evaluator->FormatAddress(area.End.Value(), VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE, end);
            }
            loadedRanges += (loadedRanges.empty() ? "" : "\n") + start + " - " + end;
        }
    }
    if (temporary) {
        RemoveProgram(*index);
        modules.pop_back();
        WriteModules(modules);
    }
    Broadcast(Event{Ids::EVENT_PROGRAMS_CHANGED, 1});
    return result;
}

HRESULT CDebuggerState::AddProgram(const std::string& file, const std::string& format, uint32_t offset,
                                   AccessSize size, int32_t debugDataOnly, int32_t verify,
                                   int32_t autoDownload)
{
    const CDownloadModule module(file, offset, format, debugDataOnly, verify, size, autoDownload);
    const std::string path = ExpandForSession(file);
    int32_t index = -1;
    for (int32_t i = 0; i < Programs.Count() && index < 0; ++i) {
        std::string otherPath;
        Programs.At(i)->GetFilePath(otherPath);
        CDownloadModule other = Programs.At(i)->Module();
        // The same but for how the file name is written.
        other.FileName = module.FileName;
        if (SameText(otherPath, path) && other == module)
            index = i;
    }
    const bool added = index < 0;
    if (added) {
        AppendProgram(module);
        index = Programs.Count() - 1;
    }
    if (Succeeded(DownloadPrograms(index, false, false, false, true, true)) &&
        Programs.At(index)->IsLoaded() == S_OK) {
        if (added) {
            std::vector<CDownloadModule> modules = ReadModules();
            const std::string key = ExpandForSession(module.Key());
            const bool listed = std::any_of(modules.begin(), modules.end(), [&](const CDownloadModule& m) {
                return SameText(ExpandForSession(m.Key()), key);
            });
            if (!listed) {
                modules.push_back(module);
                WriteModules(modules);
            }
        }
        return S_OK;
    }
    if (added)
        RemoveProgram(index);
    return S_FALSE;
}

HRESULT CDebuggerState::DownloadFile(const std::string& name)
{
    if (!IsConnected())
        return kNotConnected;
    const std::string format = DefaultFormat();
    RemoveAllPrograms();
    WriteModules({});
    HRESULT result = kNotConnected;
    const CDownloadModule module(name, 0, format, 0, 0, 1, 0);
    if (KnowsFormat(format) && CanOpen(module)) {
        AppendProgram(module);
        WriteModules({module});
        const int32_t status = DownloadProgram(0, true);
        result = status == TASK_CANCELLED ? kDownloadAborted : status == TASK_DONE ? S_OK : E_FAIL;
        Broadcast(Event{Ids::EVENT_PROGRAMS_CHANGED, 1});
    }
    Broadcast(Event{Ids::EVENT_MODULES_CHANGED, 0});
    if (result >= 0)
        Broadcast(Event{Ids::EVENT_PROGRAMS_CHANGED, 0});
    return result;
}

HRESULT CDebuggerState::UnloadFile(const std::string& name)
{
    if (!IsConnected())
        return kNotConnected;
    const std::string format = DefaultFormat();
    const std::string wanted = ExpandForSession(name);
    for (int32_t i = 0; i < Programs.Count(); ++i) {
        CQProgram& program = *Programs.At(i);
        std::string path, raw, programFormat;
        program.GetFilePath(path);
        program.GetRawFileName(raw);
        program.GetFormat(programFormat);
        if (SameText(programFormat, format) &&
            (SameText(wanted, path) || SameText(wanted, FilePart(raw)) || SameText(wanted, FilePart(path)))) {
            UnloadProgramAt(i);
            return S_OK;
        }
    }
    return kNoSuchProgram;
}

HRESULT CDebuggerState::SetRate(int32_t rate)
{
    (void)rate;
    return Runner ? S_OK : E_FAIL;
}

HRESULT CDebuggerState::StepIn(int32_t kind, int32_t count)
{
    if (kind != 1 && kind != 2)
        return kBadKind;
    if (Runner->IsRunning())
        return kTargetRunning;
    return Runner->Step(count, 0, false, false, kind == 2);
}

HRESULT CDebuggerState::StepOut(int32_t kind)
{
    if (kind != 1 && kind != 2)
        return kBadKind;
    if (Runner->IsRunning())
        return kTargetRunning;
    return Runner->Step(1, 0, false, true, kind == 2);
}

HRESULT CDebuggerState::StepOver(int32_t kind, int32_t count)
{
    if (kind != 1 && kind != 2)
        return kBadKind;
    if (Runner->IsRunning())
        return kTargetRunning;
    return Runner->Step(count, 0, true, false, kind == 2);
}

HRESULT CDebuggerState::Go()
{
    return Runner->Go();
}
