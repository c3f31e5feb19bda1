#pragma once
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "boundary/interfaces/Workbench.h"
#include "boundary/interfaces/Workspace.h"
#include "component/frame/CUserPrompts.h"
#include "component/program/CDownloadModuleData.h"
#include "component/program/FileManagerChooser.h"
#include "component/program/FileManagerOwner.h"

// The source files of the modules of debug-only projects: found on disk after
// a download, entered in the project, remembered in a file list beside the
// module and applied again when the module changes or moves. Every operation
// for a project that isn't debug-only does nothing.
//
// There is no file search dialog on this console: where it would come up, the
// files that weren't found stay not located and a note says so.
class CDownloadModuleFileManager
{
public:
    CDownloadModuleFileManager(FileManagerOwner& owner, IQServiceRegistry* registry);
    ~CDownloadModuleFileManager();
    CDownloadModuleFileManager(const CDownloadModuleFileManager&) = delete;
    CDownloadModuleFileManager& operator=(const CDownloadModuleFileManager&) = delete;

    void SetDebugOnlyProjects(std::vector<std::string> projects) { debugOnly_ = std::move(projects); }
    bool IsDebugOnlyProject(const std::string& project) const;
    // Without a chooser, locating by hand fails with a message.
    void SetChooser(FileManagerChooser* chooser) { chooser_ = chooser; }

    HRESULT OnModuleDownloaded(const std::string& project, const std::string& modulePath, int32_t moduleIndex,
                               bool forced);
    // Takes the module's files out of the project; the data stays for its next download.
    HRESULT ForgetModule(const std::string& project, const std::string& modulePath);

    HRESULT AddDownloadFile(const std::string& project, const std::string& wanted, std::string& newPath);
    HRESULT AddDownloadFiles(const std::string& project, const std::vector<std::string>& names,
                             std::vector<std::string>& newPaths);
    HRESULT RelocateModuleFiles(const std::string& project, int32_t moduleIndex);
    std::optional<std::string> FindSourceFile(const std::string& name, const std::string& modulePath,
                                              bool& ambiguous) const;
    HRESULT AddFileToModule(const std::string& modulePath, const std::string& file);
    HRESULT RemoveFileFromModule(const std::string& modulePath, const std::string& file);

    void ClearAll();
    bool IsProjectDirty() const { return changed_; }
    void ClearChanged() { changed_ = false; }
    const CDownloadModuleData* Data(const std::string& project) const;

private:
    struct Scan;
    struct Located {
        std::vector<std::string> found;
        bool missing = false;
    };
    using DataMap = std::map<std::string, CDownloadModuleData, FileManagerSearch::NoCaseLess>;
    using Directories = std::map<std::string, int, FileManagerSearch::NoCaseLess>;

    void FirstScan(const Scan& scan);
    void ReadList(const Scan& scan);
    void Rescan(const Scan& scan, CDownloadModuleData& data, bool forced);
    // Searches the module's source files in the directories, in their order;
    // a copy, since a search enters its directory in the data.
    Located Locate(CDownloadModuleData& data, const Scan& scan, Directories where);
    void NoteMissing(bool missing) const;
    void Store(const Scan& scan, CDownloadModuleData& data);
    void EnterModuleFiles(const std::string& project, CDownloadModuleData& data,
                          const std::string& modulePath, const std::vector<std::string>& paths);
    void RemoveModuleFiles(const std::string& project, CDownloadModuleData& data,
                           const std::string& modulePath);
    void ReplaceModuleFile(const std::string& project, CDownloadModuleData& data,
                           const std::string& modulePath, const std::string& oldPath,
                           const std::string& newPath);
    // tell: show why a chosen file can't be taken.
    HRESULT LocateByHand(const std::string& project, CDownloadModuleData& data, const std::string& wanted,
                         std::string& newPath, bool tell);
    DataMap::iterator HolderOf(const std::string& modulePath);
    bool CanChoose() const;
    CFileTime TimeOf(const std::string& path) const;
    IQProjectFileService* Files() const;

    FileManagerOwner& owner_;
    IQServiceRegistry* registry_;
    CUserPrompts prompts_;
    FileManagerChooser* chooser_ = nullptr;
    std::vector<std::string> debugOnly_;
    DataMap data_;
    Guid browsePrompt_;
    Guid cancelPrompt_;
    Guid searchPrompt_;
    bool changed_ = false;
};
