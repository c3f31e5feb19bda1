#include "component/program/CDownloadModuleFileManager.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "boundary/Ids.h"
#include "component/frame/StringTable.h"
#include "component/program/FileManagerList.h"
#include "component/util/PathUtil.h"

using FileManagerSearch::Same;

namespace
{

constexpr const char* BrowseText = "Do not show Debug only workspace browse dialog on download";
constexpr const char* CancelText = "Show message when cancelling directory browse dialog";
constexpr const char* SearchText = "Show Dialog to search on OK for directory browse dialog";
constexpr const char* NotLocatedNote = "Please note, one or more files were not located.";

using NameSet = std::set<std::string, FileManagerSearch::NoCaseLess>;

std::vector<std::string> Unique(const std::vector<std::string>& names)
{
    NameSet seen;
    std::vector<std::string> out;
    for (const auto& name : names)
        if (seen.insert(name).second)
            out.push_back(name);
    return out;
}

// Every naming of the names still pending, repeats included.
std::vector<std::string> Namings(const std::vector<std::string>& named,
                                 const std::vector<std::string>& pending)
{
    NameSet open(pending.begin(), pending.end());
    std::vector<std::string> out;
    for (const auto& name : named)
        if (open.count(name) != 0)
            out.push_back(name);
    return out;
}

} // namespace

struct CDownloadModuleFileManager::Scan {
    std::string project;
    std::string modulePath;
    int32_t moduleIndex;
    std::string directory;
    CFileTime time;
};

CDownloadModuleFileManager::CDownloadModuleFileManager(FileManagerOwner& owner, IQServiceRegistry* registry)
    : owner_(owner), registry_(registry), prompts_(registry)
{
    browsePrompt_ = prompts_.Add(BrowseText, false);
    cancelPrompt_ = prompts_.Add(CancelText, true);
    searchPrompt_ = prompts_.Add(SearchText, true);
}

CDownloadModuleFileManager::~CDownloadModuleFileManager()
{
    prompts_.Delete(browsePrompt_);
    prompts_.Delete(cancelPrompt_);
    prompts_.Delete(searchPrompt_);
}

bool CDownloadModuleFileManager::IsDebugOnlyProject(const std::string& project) const
{
    return std::any_of(debugOnly_.begin(), debugOnly_.end(),
                       [&](const std::string& p) { return Same(p, project); });
}

const CDownloadModuleData* CDownloadModuleFileManager::Data(const std::string& project) const
{
    auto found = data_.find(project);
    return found == data_.end() ? nullptr : &found->second;
}

void CDownloadModuleFileManager::ClearAll()
{
    debugOnly_.clear();
    data_.clear();
}

HRESULT CDownloadModuleFileManager::OnModuleDownloaded(const std::string& project,
                                                       const std::string& modulePath, int32_t moduleIndex,
                                                       bool forced)
{
    if (!IsDebugOnlyProject(project))
        return S_FALSE;
    Scan scan{project, modulePath, moduleIndex, PathUtil::DirectoryOf(modulePath), TimeOf(modulePath)};
    auto found = data_.find(project);
    if (found == data_.end()) {
        std::error_code ec;
        if (std::filesystem::exists(FileManagerList::PathFor(modulePath), ec))
            ReadList(scan);
        else
            FirstScan(scan);
        return S_OK;
    }
    CDownloadModuleData& data = found->second;
    // A module whose time can't be had counts as changed.
    if (!scan.time.IsKnown() || scan.time != data.ModuleTime) {
        Rescan(scan, data, forced);
    } else if (!data.IsActive(modulePath)) {
        EnterModuleFiles(project, data, modulePath, data.Located());
    }
    return S_OK;
}

HRESULT CDownloadModuleFileManager::ForgetModule(const std::string& project, const std::string& modulePath)
{
    auto found = data_.find(project);
    if (!IsDebugOnlyProject(project) || found == data_.end())
        return S_FALSE;
    RemoveModuleFiles(project, found->second, modulePath);
    found->second.SetActive(modulePath, false);
    return S_OK;
}

void CDownloadModuleFileManager::FirstScan(const Scan& scan)
{
    CDownloadModuleData fresh;
    auto located = Locate(fresh, scan, {{scan.directory, 1}});
    NoteMissing(located.missing);
    CDownloadModuleData& data = data_[scan.project] = std::move(fresh);
    Store(scan, data);
    EnterModuleFiles(scan.project, data, scan.modulePath, located.found);
}

void CDownloadModuleFileManager::ReadList(const Scan& scan)
{
    CDownloadModuleData listed;
    std::string listedDirectory;
    if (!FileManagerList::Read(Files(), FileManagerList::PathFor(scan.modulePath), listed, listedDirectory)) {
        FirstScan(scan);
        return;
    }
    bool sameTime = scan.time.IsKnown() && scan.time == listed.ModuleTime;
    if (sameTime && !Same(PathUtil::Normalise(listedDirectory), PathUtil::Normalise(scan.directory))) {
        if (owner_.AskYesNo(
                FormatText("Module %s has been moved.\nWould you like the module file paths to be "
                           "modified to the new location?",
                           scan.modulePath.c_str()))) {
            for (const auto& path : listed.Located()) {
                if (auto moved = FileManagerSearch::Rebase(path, listedDirectory, scan.directory)) {
                    listed.FileStates.erase(path);
                    listed.FileStates[*moved] = 1;
                }
            }
            Store(scan, listed);
        }
    } else if (!sameTime) {
        if (listed.SearchDirectories.empty()) {
            FirstScan(scan);
            return;
        }
        listed.FileStates.clear();
        listed.DuplicateCounts.clear();
        NoteMissing(Locate(listed, scan, listed.SearchDirectories).missing);
        Store(scan, listed);
    }
    CDownloadModuleData& data = data_[scan.project] = std::move(listed);
    EnterModuleFiles(scan.project, data, scan.modulePath, data.Located());
}

void CDownloadModuleFileManager::Rescan(const Scan& scan, CDownloadModuleData& data, bool forced)
{
    // The module's earlier files are searched again, so they mustn't count as taken.
    for (const auto& [id, path] : data.ModuleFiles[scan.modulePath])
        data.Unlocate(path);
    Located located;
    if (forced) {
        located = Locate(data, scan, data.SearchDirectories);
        NoteMissing(located.missing);
    } else {
        located = Locate(data, scan, {{scan.directory, 1}});
    }
    Store(scan, data);
    EnterModuleFiles(scan.project, data, scan.modulePath, located.found);
}

CDownloadModuleFileManager::Located CDownloadModuleFileManager::Locate(CDownloadModuleData& data,
                                                                       const Scan& scan, Directories where)
{
    auto named = owner_.ModuleSourceFiles(scan.moduleIndex);
    auto pending = Unique(named);
    Located located;
    for (const auto& [directory, subdirectories] : where) {
        auto found = data.Search(pending, directory, subdirectories == 1);
        located.found.insert(located.found.end(), found.begin(), found.end());
    }
    data.MarkNotLocated(Namings(named, pending));
    located.missing = !pending.empty();
    return located;
}

void CDownloadModuleFileManager::NoteMissing(bool missing) const
{
    // Where the search dialog would come up; this console has none.
    if (missing && !prompts_.IsEnabled(browsePrompt_))
        owner_.ShowMessage(NotLocatedNote);
}

void CDownloadModuleFileManager::Store(const Scan& scan, CDownloadModuleData& data)
{
    data.ModuleTime = scan.time;
    data.ListFileName = FileManagerList::PathFor(scan.modulePath);
    FileManagerList::Write(Files(), data);
}

void CDownloadModuleFileManager::EnterModuleFiles(const std::string& project, CDownloadModuleData& data,
                                                  const std::string& modulePath,
                                                  const std::vector<std::string>& paths)
{
    RemoveModuleFiles(project, data, modulePath);
    auto& ids = data.ModuleFiles[modulePath];
    IQProjectFileService* files = Files();
    for (const auto& path : paths) {
        // Without the project service a path is its own identifier.
        std::string id = path;
        if (files == nullptr || Succeeded(files->AddProjectFile(project, path, id)))
            ids[id] = path;
    }
    data.SetActive(modulePath, true);
}

void CDownloadModuleFileManager::RemoveModuleFiles(const std::string& project, CDownloadModuleData& data,
                                                   const std::string& modulePath)
{
    auto module = data.ModuleFiles.find(modulePath);
    if (module == data.ModuleFiles.end())
        return;
    if (IQProjectFileService* files = Files())
        for (const auto& [id, path] : module->second)
            files->RemoveProjectFile(project, id);
    module->second.clear();
}

CDownloadModuleFileManager::DataMap::iterator
CDownloadModuleFileManager::HolderOf(const std::string& modulePath)
{
    return std::find_if(data_.begin(), data_.end(), [&](const auto& entry) {
        return IsDebugOnlyProject(entry.first) && entry.second.ModuleFiles.count(modulePath) != 0;
    });
}

std::optional<std::string> CDownloadModuleFileManager::FindSourceFile(const std::string& name,
                                                                      const std::string& modulePath,
                                                                      bool& ambiguous) const
{
    ambiguous = false;
    for (const auto& [project, data] : data_) {
        auto module = data.ModuleFiles.find(modulePath);
        if (!IsDebugOnlyProject(project) || module == data.ModuleFiles.end())
            continue;
        // In the order of the located files, so that "the first" of two matches is always the same.
        std::vector<std::string> located;
        for (const auto& path : data.Located())
            if (std::any_of(module->second.begin(), module->second.end(),
                            [&](const auto& file) { return Same(file.second, path); }))
                located.push_back(path);
        return FileManagerSearch::Match(name, located, ambiguous);
    }
    return std::nullopt;
}

CFileTime CDownloadModuleFileManager::TimeOf(const std::string& path) const
{
    return CFileTime::OfFile(path, [this](const std::string& text) { owner_.DebugText(text); });
}

IQProjectFileService* CDownloadModuleFileManager::Files() const
{
    return GetServiceAs<IQProjectFileService>(registry_, Ids::ProjectFileService);
}
