// The session's programs: made from the download modules the settings list,
// kept in their order, and reloaded when their file changes on disk.
#include <strings.h>

#include "boundary/ComUtils.h"
#include "boundary/Ids.h"
#include "boundary/interfaces/ObjectReader.h"
#include "boundary/interfaces/Store.h"
#include "component/breaks/CPCBreakManager.h"
#include "component/frame/CDebuggerState.h"
#include "component/frame/CUserPrompts.h"
#include "component/frame/StringTable.h"
#include "component/program/CDownloadModuleFileManager.h"
#include "component/program/DownloadModuleList.h"
#include "component/run/CRunner.h"
#include "component/session/PlaceholderExpander.h"
#include "component/symbols/CLabelManager.h"
#include "component/util/MessageFormat.h"

std::vector<CDownloadModule> CDebuggerState::ReadModules()
{
    std::vector<CDownloadModule> modules;
    Variant stored;
    auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore);
    if (store != nullptr && Succeeded(store->GetModules(WorkspaceName, ProjectName, SessionName, stored)))
        ReadModuleList(stored, modules);
    return modules;
}

void CDebuggerState::AppendProgram(const CDownloadModule& module)
{
    Programs.Insert(CQProgram(module, SessionContext(), ProgramHostFace, Registry), -1, Registry);
}

void CDebuggerState::BuildPrograms()
{
    Modules = ReadModules();
    for (const CDownloadModule& module : Modules)
        AppendProgram(module);
}

void CDebuggerState::TellModuleListeners(bool loaded, IUnknown* handle)
{
    if (Registry == nullptr || handle == nullptr)
        return;
    int32_t count = 0;
    IUnknown** listeners = nullptr;
    if (Failed(Registry->GetProviders(Ids::ModuleListener, count, listeners)))
        return;
    for (int32_t i = 0; i < count; ++i)
        if (auto* listener = QueryAs<IQModuleListener>(listeners[i], Ids::ModuleListener))
            loaded ? listener->OnModuleLoaded(handle) : listener->OnModuleUnloaded(handle);
}

void CDebuggerState::RemoveProgram(int32_t index)
{
    std::unique_ptr<CQProgram> program = Programs.Take(index);
    if (!program)
        return;
    TellModuleListeners(false, program->ModuleHandle());
    if (Labels && program->ModuleId() != 0)
        Labels->RemoveModuleLabels(program->ModuleId());
    program->Close(Registry);
}

void CDebuggerState::RemoveAllPrograms()
{
    for (int32_t i = Programs.Count() - 1; i >= 0; --i)
        RemoveProgram(i);
    Modules.clear();
}

std::string CDebuggerState::ExpandForSession(const std::string& text) const
{
    return PlaceholderExpander(Registry).ExpandFor(text, WorkspaceName, ProjectName, ConfigurationName);
}

std::optional<int32_t> CDebuggerState::FindProgramIndexByKey(const std::string& key) const
{
    return Programs.FindByKey(key, [this](const std::string& text) { return ExpandForSession(text); });
}

bool CDebuggerState::ApplyModuleList()
{
    std::vector<CDownloadModule> wanted = ReadModules();
    if (wanted == Modules)
        return false;
    ModuleKeyMap before, after;
    const bool duplicates = MakeModuleKeyMap(Modules, before) | MakeModuleKeyMap(wanted, after);
    if (duplicates)
        if (auto* box = GetServiceAs<IQMessageBox>(Registry, Ids::MessageBoxService))
            box->ShowMessage(kDuplicateModulesText, MessageIcon::Warning);
    const auto raw = [](const std::string& text) { return text; };
    bool changed = false;
    for (const auto& [key, module] : before)
        if (after.count(key) == 0)
            if (auto index = Programs.FindByKey(key, raw)) {
                RemoveProgram(*index);
                changed = true;
            }
    // The wanted list without its repeats, in its own order.
    std::vector<CDownloadModule> kept;
    ModuleKeyMap seen;
    for (const CDownloadModule& module : wanted) {
        if (!seen.emplace(module.Key(), module).second)
            continue;
        kept.push_back(module);
        if (before.count(module.Key()) == 0) {
            AppendProgram(module);
            changed = true;
        }
    }
    for (const CDownloadModule& module : kept) {
        auto index = Programs.FindByKey(module.Key(), raw);
        if (!index)
            continue;
        CQProgram& program = *Programs.At(*index);
        program.SetVerify(module.Verify ? VARIANT_TRUE : VARIANT_FALSE);
        program.SetLoadMode(module.DebugOnly ? 1 : 3);
        program.SetAutoDownload(module.AutoDownload);
        std::string name;
        program.GetRawFileName(name);
        if (name != module.FileName) {
            program.SetRawFileName(module.FileName);
            changed = true;
        }
    }
    changed = Programs.ArrangeAs(kept) || changed;
    Modules = std::move(wanted);
    if (changed)
        Broadcast(Event{Ids::EVENT_PROGRAMS_CHANGED, 0});
    return changed;
}

void CDebuggerState::NoteRebuiltFiles()
{
    VariantBool downloadAfterBuild = VARIANT_FALSE;
    if (auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore))
        store->GetDownloadAfterBuild(WorkspaceName, ProjectName, SessionName, downloadAfterBuild);
    if (downloadAfterBuild != VARIANT_TRUE) {
        for (int32_t i = 0; i < Programs.Count(); ++i) {
            CQProgram& program = *Programs.At(i);
            program.CheckFile();
            std::string path;
            if (Succeeded(program.GetFilePath(path)))
                FileTimes[path].ReadFrom(path, DebugLines());
        }
        return;
    }
    bool outOfDate = false;
    for (int32_t i = 0; i < Programs.Count(); ++i) {
        CQProgram& program = *Programs.At(i);
        if (program.IsLoaded() != S_OK)
            continue;
        outOfDate = program.IsOutOfDate() || outOfDate;
        std::string path;
        if (Succeeded(program.GetFilePath(path)))
            FileTimes[path].ReadFrom(path, DebugLines());
    }
    if (!outOfDate)
        return;
    // Every program is offered, not only the rebuilt ones: a build may have
    // moved what the others depend on. The console's question is yes or no.
    std::vector<int32_t> taken;
    for (int32_t i = 0; i < Programs.Count(); ++i) {
        std::string path;
        Programs.At(i)->GetFilePath(path);
        const std::string question =
            MessageFormat::Format(StringTable::Load(57662).c_str(), path.substr(0, 100).c_str());
        if (AskUser(question, PromptDownloadAfterBuild))
            taken.push_back(i);
    }
    if (taken.empty())
        return;
    StartBatchFiles(TIMING_BEFORE_DOWNLOAD);
    CQProgram* last = nullptr;
    for (int32_t index : taken)
        if (LoadProgram(*Programs.At(index), false, false, false) == TASK_DONE)
            last = Programs.At(index);
    Broadcast(Event{Ids::EVENT_PROGRAMS_CHANGED, 0});
    Breaks->OnSymbolsChanged();
    StartBatchFiles(TIMING_AFTER_DOWNLOAD);
    if (ResetAfterDownload())
        Runner->Reset();
    ShowEntry(last);
}

// A watched file changed on disk: offer to reload the programs made from it,
// unless a download is running, which notes the new time itself.
HRESULT CDebuggerState::OnFileChanged(const std::string& path)
{
    CFileTime now;
    now.ReadFrom(path, DebugLines());
    const bool loading = Registry != nullptr && Registry->IsBusy(Ids::BusyLoad) != 0;
    if (!loading) {
        auto known = FileTimes.find(path);
        const CFileTime before = known != FileTimes.end() ? known->second : CFileTime{};
        if (before != now &&
            AskUser(MessageFormat::Format(StringTable::Load(57782).c_str(), path.c_str()), PromptReload)) {
            for (int32_t i = 0; i < Programs.Count(); ++i) {
                std::string file;
                Programs.At(i)->GetFilePath(file);
                if (strcasecmp(file.c_str(), path.c_str()) == 0)
                    ReloadQueue.push_back(i);
            }
            if (!ReloadQueue.empty())
                PostToSelf(0x447);
        }
    }
    FileTimes[path] = now;
    return S_OK;
}

std::vector<std::string> CDebuggerState::FileManagerHost::ModuleSourceFiles(int32_t index)
{
    std::vector<std::string> files;
    if (CQProgram* program = state.Programs.At(index))
        program->GetSourceFiles(files);
    return files;
}

std::string CDebuggerState::FileManagerHost::ExpandedModulePath(int32_t index)
{
    std::string path;
    if (CQProgram* program = state.Programs.At(index))
        program->GetFilePath(path);
    return path;
}

void CDebuggerState::FileManagerHost::ShowMessage(const std::string& text)
{
    if (auto* box = GetServiceAs<IQMessageBox>(state.Registry, Ids::MessageBoxService))
        box->ShowMessage(text, MessageIcon::Information);
}

bool CDebuggerState::FileManagerHost::AskYesNo(const std::string& question)
{
    VariantBool answer = VARIANT_FALSE;
    auto* box = GetServiceAs<IQMessageBox>(state.Registry, Ids::MessageBoxService);
    return box != nullptr && Succeeded(box->AskYesNo(question, VARIANT_TRUE, answer)) &&
           answer == VARIANT_TRUE;
}

// The located files of the session's project, for the workbench's tree.
HRESULT CDebuggerState::GetFileList(Variant& list)
{
    list = Variant();
    const CDownloadModuleData* data = FileManager ? FileManager->Data(ProjectName) : nullptr;
    if (data == nullptr)
        return E_FAIL;
    std::vector<std::string> located;
    for (const auto& [path, state] : data->FileStates)
        if (state == 1)
            located.push_back(path);
    list = CComUtils::StringListToVariant(located);
    return S_OK;
}

HRESULT CDebuggerState::AddDownloadFile(const std::string& file)
{
    std::string moved;
    return FileManager ? FileManager->AddDownloadFile(ProjectName, file, moved) : E_FAIL;
}

HRESULT CDebuggerState::AddDownloadFiles(const Variant& files)
{
    std::vector<std::string> moved;
    if (FileManager == nullptr)
        return E_FAIL;
    return FileManager->AddDownloadFiles(ProjectName, CComUtils::VariantToStringList(files), moved);
}
