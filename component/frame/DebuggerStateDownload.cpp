// Loading programs into the target, taking them off again, and saving and
// verifying target memory against object files, each through the reader of
// the program's format and a task that shows its progress.
#include <strings.h>

#include "boundary/Ids.h"
#include "boundary/ScopeGuard.h"
#include "boundary/interfaces/Store.h"
#include "component/breaks/CPCBreakManager.h"
#include "component/frame/CDebuggerState.h"
#include "component/frame/CUserPrompts.h"
#include "component/frame/StringTable.h"
#include "component/memory/CMemoryManager.h"
#include "component/program/CDlgProgressDownload.h"
#include "component/program/CDlgProgressSave.h"
#include "component/program/CDlgProgressVerify.h"
#include "component/program/CDownloadModuleFileManager.h"
#include "component/run/CRunner.h"
#include "component/symbols/CLabelManager.h"
#include "component/util/MessageFormat.h"

namespace
{

// The platform's code for a task the user stopped.
constexpr HRESULT kTaskCancelled = MakeResult(0x80040209u);
const Guid kSecondStage = "{E112225C-41A5-42DE-A584-BA3627D87EA6}"_guid;

} // namespace

std::string CDebuggerState::ErrorTextOf(const CQProgram& program, HRESULT code)
{
    std::string text = program.MakeErrorText(code);
    if (text.empty())
        GetErrorText(code, text);
    return text;
}

void CDebuggerState::ShowText(const std::string& text, MessageIcon icon)
{
    if (auto* box = GetServiceAs<IQMessageBox>(Registry, Ids::MessageBoxService))
        box->ShowMessage(text, icon);
}

int32_t CDebuggerState::LoadProgram(CQProgram& program, bool debugDataOnly, bool log, bool quiet)
{
    std::string path;
    program.GetFilePath(path);
    const CDownloadModule module = program.Module();
    const uint32_t offset = module.Offset;
    if (log)
        RecordCommand(MessageFormat::Format("%s %s \"%s\" 0x%X p%s %s", "file_load", module.Format.c_str(),
                                            path.c_str(), offset, module.Verify ? " v" : "",
                                            CMemoryManager::SizeWord(module.AccessSize).c_str()));
    Labels->SetDeferred(true);
    // The labels sort in once the load is over, however it ends.
    ScopeGuard undefer([this] { Labels->SetDeferred(false); });
    program.Renew(*Labels);
    int32_t status = TASK_FAILED;
    auto* reader = QueryAs<IQModuleLoader>(program.ModuleHandle(), Ids::IQModuleLoader);
    if (reader == nullptr)
        return status;
    const int32_t mode = debugDataOnly ? 1 : program.LoadMode();
    auto* secondStage = IsConnected() ? Connection.TargetFace<IQDownloadSecondStage>(kSecondStage) : nullptr;
    CDlgProgressDownload task(Registry, *reader, mode, path, offset, secondStage);
    HRESULT hr = Memory ? Memory->SetDownloadMode(true) : E_FAIL;
    if (Succeeded(hr)) {
        const uint32_t moduleId = program.ModuleId();
        Labels->RemoveModuleLabels(moduleId);
        Labels->SetCurrentModule(moduleId);
        task.Run(PlatformMode == PLATFORM_MODE_VEL);
        Labels->SetCurrentModule(0);
        status = task.Status();
        program.SetLoaded(false);
        if (status == TASK_DONE) {
            program.SetLoaded(true);
            TellModuleListeners(true, program.ModuleHandle());
        } else {
            if (!quiet)
                ShowText(status == TASK_CANCELLED ? std::string("Download Aborted")
                         : task.Mismatch().reported
                             ? program.MakeVerifyErrorText(task.Result(), task.Mismatch().address,
                                                           task.Mismatch().inMemory, task.Mismatch().inFile)
                             : ErrorTextOf(program, task.Result()),
                         MessageIcon::Stop);
            TellModuleListeners(false, program.ModuleHandle());
            Labels->RemoveModuleLabels(moduleId);
        }
        if (program.IsLoaded() == S_OK) {
            FileTimes[path].ReadFrom(path, DebugLines());
            if (auto* monitor = GetServiceAs<IQFileMonitor>(Registry, Ids::FileMonitor))
                monitor->AddFile(path);
        }
        hr = Memory->SetDownloadMode(false);
    }
    if (Failed(hr)) {
        if (!quiet) {
            std::string text;
            if (Failed(GetErrorText(hr, text)) || text.empty())
                text = "ERROR: Could not set download mode in target";
            ShowText(text, MessageIcon::Stop);
        }
        status = TASK_FAILED;
    }
    return status;
}

bool CDebuggerState::ResetAfterDownload()
{
    std::string value;
    auto* properties = GetServiceAs<IQTargetRegistry>(Registry, Ids::IQTargetRegistry);
    return properties != nullptr &&
           Succeeded(properties->GetProperty("RESET_CPU_AFTER_DOWNLOAD_TAG", WorkspaceName, ProjectName,
                                             SessionName, value)) &&
           value == "VARIANT_TRUE_STORE_TAG";
}

void CDebuggerState::FinishDownload(CQProgram* last)
{
    // A target that takes the download over does this work at its next stop.
    if (!Connection.TakesOverDownload()) {
        Broadcast(Event{Ids::EVENT_PROGRAMS_CHANGED, 0});
        Breaks->OnSymbolsChanged();
        StartBatchFiles(TIMING_AFTER_DOWNLOAD);
    }
    if (ResetAfterDownload())
        Runner->Reset();
    ShowEntry(last);
}

HRESULT CDebuggerState::DownloadPrograms(int32_t index, bool reload, bool debugDataOnly, bool skipBuildCheck,
                                         bool exclusive, bool log)
{
    if (log && index == -1)
        RecordCommand("file_load_all");
    // Without a build service in the workbench no module can be out of date.
    (void)skipBuildCheck;
    if (exclusive && Registry != nullptr && Registry->IsBusy(Ids::BusyLoad) != 0)
        return E_FAIL;
    if (!IsConnected())
        return E_FAIL;
    const int32_t first = index < 0 ? 0 : index;
    const int32_t last = index < 0 ? Programs.Count() - 1 : std::min(index, Programs.Count() - 1);
    bool unloaded = false, loaded = false;
    HRESULT result = S_OK;
    CQProgram* lastProgram = nullptr;
    {
        if (exclusive)
            Registry->SetBusy(Ids::BusyLoad);
        // Cleared on every way out of the loads, before what follows them.
        ScopeGuard clearBusy([this, exclusive] {
            if (exclusive)
                Registry->ClearBusy(Ids::BusyLoad);
        });
        // Every handle is renewed before any module goes in.
        for (int32_t i = first; i <= last; ++i)
            if (Programs.At(i)->IsLoaded() == S_OK) {
                Programs.At(i)->Renew(*Labels);
                unloaded = true;
            }
        bool batchRun = false;
        for (int32_t i = first; i <= last && result >= 0; ++i) {
            CQProgram& program = *Programs.At(i);
            if (program.IsLoaded() == S_OK && !reload)
                continue;
            std::string path;
            program.GetFilePath(path);
            if (!AskUser(MessageFormat::Format(StringTable::Load(57657).c_str(), path.c_str()), PromptLoad))
                continue;
            if (!batchRun) {
                StartBatchFiles(TIMING_BEFORE_DOWNLOAD);
                batchRun = true;
            }
            const int32_t status = LoadProgram(program, debugDataOnly, log && index != -1, false);
            result = program.IsLoaded();
            if (status == TASK_DONE) {
                loaded = true;
                if (FileManager != nullptr && FileManager->IsDebugOnlyProject(ProjectName)) {
                    LastDownloadKey = program.Key() + SessionName;
                    FileManager->OnModuleDownloaded(ProjectName, path, i, false);
                }
            }
            lastProgram = &program;
        }
    }
    if (!loaded && unloaded)
        Broadcast(Event{Ids::EVENT_PROGRAMS_CHANGED, 0});
    if (loaded)
        FinishDownload(lastProgram);
    return result;
}

int32_t CDebuggerState::DownloadProgram(int32_t index, bool quiet)
{
    CQProgram* program = Programs.At(index);
    if (program == nullptr)
        return TASK_FAILED;
    const int32_t status = LoadProgram(*program, false, true, quiet);
    if (status == TASK_DONE) {
        Breaks->OnSymbolsChanged();
        if (ResetAfterDownload())
            Runner->Reset();
        ShowEntry(program);
    }
    return status;
}

HRESULT CDebuggerState::UnloadPrograms(int32_t index)
{
    if (index == -1)
        RecordCommand("file_unload_all");
    HRESULT result = E_FAIL;
    if (Registry == nullptr || Registry->IsBusy(Ids::BusyLoad) != 0)
        return result;
    Registry->SetBusy(Ids::BusyLoad);
    if (IsConnected()) {
        result = S_OK;
        const int32_t first = index < 0 ? 0 : index;
        const int32_t last = index < 0 ? Programs.Count() - 1 : std::min(index, Programs.Count() - 1);
        bool unloaded = false;
        for (int32_t i = first; i <= last; ++i) {
            CQProgram& program = *Programs.At(i);
            std::string path, format;
            uint32_t offset = 0;
            program.GetFilePath(path);
            program.GetFormat(format);
            program.GetOffset(offset);
            if (index != -1)
                RecordCommand(MessageFormat::Format("%s %s %s 0x%X", "file_unload", format.c_str(),
                                                    path.c_str(), offset));
            if (program.IsLoaded() != S_OK ||
                !AskUser(MessageFormat::Format(StringTable::Load(57658).c_str(), path.c_str()), PromptUnload))
                continue;
            program.Renew(*Labels);
            unloaded = true;
            TellModuleListeners(false, program.ModuleHandle());
            Labels->RemoveModuleLabels(program.ModuleId());
            if (strcasecmp((program.Key() + SessionName).c_str(), LastDownloadKey.c_str()) == 0)
                LastDownloadKey.clear();
            FileTimes.erase(path);
            if (auto* monitor = GetServiceAs<IQFileMonitor>(Registry, Ids::FileMonitor))
                monitor->RemoveFile(path);
        }
        if (unloaded)
            Broadcast(Event{Ids::EVENT_PROGRAMS_CHANGED, 0});
    }
    Registry->ClearBusy(Ids::BusyLoad);
    return result;
}

int32_t CDebuggerState::SaveMemory(TargetAddress start, TargetAddress end, const std::string& path,
                                   const std::string& format, int32_t accessSize)
{
    RecordCommand(MessageFormat::Format("%s %s \"%s\" 0x%X 0x%X %s", "file_save", format.c_str(),
                                        path.c_str(), start.Value(), end.Value(),
                                        CMemoryManager::SizeWord(accessSize).c_str()));
    CQProgram program = CQProgram::ForTransfer(path, start.Value(), format, accessSize, SessionContext(),
                                               ProgramHostFace, Registry);
    if (!program.Open(Registry))
        return TASK_FAILED;
    auto* reader = QueryAs<IQModuleLoader>(program.ModuleHandle(), Ids::IQModuleLoader);
    int32_t status = TASK_FAILED;
    if (reader != nullptr) {
        CDlgProgressSave task(Registry, *reader, path, start, end);
        task.Run(PlatformMode == PLATFORM_MODE_VEL);
        status = task.Status();
        if (status == TASK_DONE)
            Recent.MruProgramSave.Add(
                std::make_unique<CMRUProgramSave>(path, format, accessSize, start.Value(), end.Value()));
        else
            ShowText(ErrorTextOf(program, status == TASK_CANCELLED ? kTaskCancelled : task.Result()),
                     MessageIcon::Stop);
    }
    program.Close(Registry);
    return status;
}

int32_t CDebuggerState::VerifyMemory(const std::string& format, const std::string& path, uint32_t offset,
                                     int32_t accessSize, bool quiet)
{
    RecordCommand(MessageFormat::Format("%s %s \"%s\" 0x%X %s", "file_verify", format.c_str(), path.c_str(),
                                        offset, CMemoryManager::SizeWord(accessSize).c_str()));
    CQProgram program =
        CQProgram::ForTransfer(path, offset, format, accessSize, SessionContext(), ProgramHostFace, Registry);
    if (!program.Open(Registry))
        return TASK_FAILED;
    auto* reader = QueryAs<IQModuleLoader>(program.ModuleHandle(), Ids::IQModuleLoader);
    int32_t status = TASK_FAILED;
    if (reader != nullptr) {
        CDlgProgressVerify task(Registry, *reader, path, offset);
        task.Run(PlatformMode == PLATFORM_MODE_VEL);
        status = task.Status();
        std::string text;
        if (status == TASK_CANCELLED)
            text = ErrorTextOf(program, kTaskCancelled);
        else if (status == TASK_DONE) {
            Recent.MruProgramVerify.Add(
                std::make_unique<CMRUProgramVerify>(path, format, accessSize, offset));
            text = MessageFormat::Format("File verified ok '%s'", path.c_str());
        } else if (task.Mismatch().reported)
            text = program.MakeVerifyErrorText(task.Result(), task.Mismatch().address,
                                               task.Mismatch().inMemory, task.Mismatch().inFile);
        else
            text = ErrorTextOf(program, task.Result());
        // A caller that prints the outcome itself still wants to know why a verify failed.
        if (!quiet || status != TASK_DONE)
            ShowText(text, status == TASK_DONE ? MessageIcon::Information : MessageIcon::Stop);
    }
    program.Close(Registry);
    return status;
}

// Opening the entry's source comes with the source display; until then the
// load ends at the target.
void CDebuggerState::ShowEntry(CQProgram*) {}
