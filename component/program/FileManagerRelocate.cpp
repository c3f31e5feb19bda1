// Locating files by hand: the person names the file or directory through the chooser.
#include <algorithm>
#include <filesystem>

#include "component/frame/StringTable.h"
#include "component/program/CDownloadModuleFileManager.h"
#include "component/program/FileManagerList.h"
#include "component/util/PathUtil.h"

using FileManagerSearch::Same;

namespace
{

constexpr const char* NoChooser =
    "Files can not be located by hand here: there is no way to choose a file or directory.";

} // namespace

bool CDownloadModuleFileManager::CanChoose() const
{
    if (chooser_ == nullptr)
        owner_.ShowMessage(NoChooser);
    return chooser_ != nullptr;
}

HRESULT CDownloadModuleFileManager::AddDownloadFile(const std::string& project, const std::string& wanted,
                                                    std::string& newPath)
{
    if (!IsDebugOnlyProject(project))
        return S_FALSE;
    auto found = data_.find(project);
    if (found == data_.end() || !CanChoose())
        return E_FAIL;
    return LocateByHand(project, found->second, wanted, newPath, true);
}

HRESULT CDownloadModuleFileManager::AddDownloadFiles(const std::string& project,
                                                     const std::vector<std::string>& names,
                                                     std::vector<std::string>& newPaths)
{
    newPaths.clear();
    if (!IsDebugOnlyProject(project))
        return S_FALSE;
    auto found = data_.find(project);
    if (found == data_.end() || !CanChoose())
        return E_FAIL;
    bool anyFailed = false;
    for (const auto& name : names) {
        std::string path;
        if (Succeeded(LocateByHand(project, found->second, name, path, false)))
            newPaths.push_back(path);
        else
            anyFailed = true;
    }
    if (anyFailed)
        owner_.ShowMessage(
            "Please note one or more files could not be located.\nThese files may already exisit "
            "in the project.");
    return anyFailed ? S_FALSE : S_OK;
}

HRESULT CDownloadModuleFileManager::LocateByHand(const std::string& project, CDownloadModuleData& data,
                                                 const std::string& wanted, std::string& newPath, bool tell)
{
    if (data.FileStates.count(wanted) == 0) {
        if (tell)
            owner_.ShowMessage(FormatText("%s is not a file of this project.", wanted.c_str()));
        return E_INVALIDARG;
    }
    std::string name = FileManagerSearch::FileName(wanted);
    auto chosen =
        chooser_->ChooseFile("Please select new location of file",
                             FormatText("(%s)|%s|", name.c_str(), name.c_str()), data.LastDirectory);
    if (!chosen || chosen->empty())
        return E_FAIL;
    std::string path = PathUtil::Normalise(*chosen);
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) {
        if (tell)
            owner_.ShowMessage(FormatText("The file %s can not be found.", path.c_str()));
        return E_FAIL;
    }
    data.LastDirectory = PathUtil::DirectoryOf(path);
    if (data.IsLocated(path) && !Same(path, wanted)) {
        if (tell)
            owner_.ShowMessage(
                FormatText("This file can not be located to %s, this file already exists in this project.",
                           path.c_str()));
        return E_FAIL;
    }
    // The file stays with the module that brought it; one never located goes
    // to the module downloaded first.
    auto module = std::find_if(data.ModuleFiles.begin(), data.ModuleFiles.end(), [&](const auto& entry) {
        return std::any_of(entry.second.begin(), entry.second.end(),
                           [&](const auto& file) { return Same(file.second, wanted); });
    });
    std::string modulePath = module != data.ModuleFiles.end() ? module->first
                             : data.ActiveModules.empty()     ? std::string()
                                                              : data.ActiveModules.front();
    data.FileStates.erase(wanted);
    data.DuplicateCounts.erase(wanted);
    data.FileStates[path] = 1;
    if (!modulePath.empty())
        ReplaceModuleFile(project, data, modulePath, wanted, path);
    FileManagerList::Write(Files(), data);
    changed_ = true;
    newPath = path;
    return S_OK;
}

void CDownloadModuleFileManager::ReplaceModuleFile(const std::string& project, CDownloadModuleData& data,
                                                   const std::string& modulePath, const std::string& oldPath,
                                                   const std::string& newPath)
{
    std::vector<std::string> paths;
    for (const auto& [id, path] : data.ModuleFiles[modulePath])
        if (!Same(path, oldPath))
            paths.push_back(path);
    paths.push_back(newPath);
    EnterModuleFiles(project, data, modulePath, paths);
}

HRESULT CDownloadModuleFileManager::RelocateModuleFiles(const std::string& project, int32_t moduleIndex)
{
    if (!IsDebugOnlyProject(project))
        return S_FALSE;
    auto found = data_.find(project);
    if (found == data_.end() || !CanChoose())
        return E_FAIL;
    auto chosen = chooser_->ChooseDirectory("Please select new location of module files", "MRU_WORKSPACES");
    if (!chosen || chosen->empty())
        return E_FAIL;
    std::string directory = PathUtil::Normalise(*chosen);
    std::error_code ec;
    if (!std::filesystem::is_directory(directory, ec)) {
        owner_.ShowMessage(FormatText("The directory %s can not be found.", directory.c_str()));
        return E_FAIL;
    }
    CDownloadModuleData& data = found->second;
    auto taken = [&](const std::string& path) { return data.IsLocated(path); };
    // A located file is looked for by its file name; so is a name that was
    // absolute, which can only be found again where it was.
    auto lookFor = [](const std::string& name) {
        return FileManagerSearch::IsAbsolute(name) ? FileManagerSearch::FileName(name) : name;
    };
    std::map<std::string, std::string, FileManagerSearch::NoCaseLess> moved;
    for (const auto& old : data.Located()) {
        data.FileStates.erase(old);
        std::string path = FileManagerSearch::Find(lookFor(old), directory, true, taken).value_or(old);
        data.FileStates[path] = 1;
        moved[old] = path;
    }
    std::vector<std::string> newlyFound;
    for (const auto& name : data.NotLocated()) {
        if (auto path = FileManagerSearch::Find(lookFor(name), directory, true, taken)) {
            data.FileStates.erase(name);
            data.DuplicateCounts.erase(name);
            data.FileStates[*path] = 1;
            newlyFound.push_back(*path);
        }
    }
    data.SearchDirectories[directory] = 1;
    data.LastDirectory = directory;

    std::string modulePath = owner_.ExpandedModulePath(moduleIndex);
    data.ModuleFiles[modulePath];
    for (auto& [module, ids] : data.ModuleFiles) {
        // A module taken out of the project stays out.
        if (!Same(module, modulePath) && !data.IsActive(module))
            continue;
        std::vector<std::string> paths;
        for (const auto& [id, path] : ids)
            paths.push_back(moved.count(path) != 0 ? moved[path] : path);
        if (Same(module, modulePath))
            paths.insert(paths.end(), newlyFound.begin(), newlyFound.end());
        EnterModuleFiles(project, data, module, paths);
    }
    FileManagerList::Write(Files(), data);
    changed_ = true;
    return S_OK;
}

HRESULT CDownloadModuleFileManager::AddFileToModule(const std::string& modulePath, const std::string& file)
{
    auto holder = HolderOf(modulePath);
    if (holder == data_.end())
        return E_FAIL;
    CDownloadModuleData& data = holder->second;
    data.FileStates.erase(file);
    data.FileStates[file] = 1;
    ReplaceModuleFile(holder->first, data, modulePath, file, file);
    return S_OK;
}

HRESULT CDownloadModuleFileManager::RemoveFileFromModule(const std::string& modulePath,
                                                         const std::string& file)
{
    auto holder = HolderOf(modulePath);
    if (holder == data_.end())
        return E_FAIL;
    auto& ids = holder->second.ModuleFiles[modulePath];
    auto entry = std::find_if(ids.begin(), ids.end(), [&](const auto& f) { return Same(f.second, file); });
    if (entry == ids.end())
        return E_FAIL;
    if (IQProjectFileService* files = Files())
        files->RemoveProjectFile(holder->first, entry->first);
    ids.erase(entry);
    holder->second.Unlocate(file);
    return S_OK;
}
