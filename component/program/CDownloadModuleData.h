#pragma once
#include <map>
#include <string>
#include <vector>

#include "component/program/CFileTime.h"
#include "component/program/FileManagerSearch.h"

// What is known of the files of one debug-only project.
class CDownloadModuleData
{
public:
    using NoCaseLess = FileManagerSearch::NoCaseLess;
    // Workbench file identifier to path.
    using FileIds = std::map<std::string, std::string>;

    // Directories searched so far; 1 means with subdirectories.
    std::map<std::string, int, NoCaseLess> SearchDirectories;
    // Every file the debug data named: its path once located (1), else its name (0).
    std::map<std::string, int, NoCaseLess> FileStates;
    // How many more times a name that wasn't located was named.
    std::map<std::string, int, NoCaseLess> DuplicateCounts;
    // The files each module brought into the project, by module path.
    std::map<std::string, FileIds, NoCaseLess> ModuleFiles;
    std::vector<std::string> ActiveModules;
    CFileTime ModuleTime;
    std::string ListFileName;
    std::string LastDirectory;

    bool IsLocated(const std::string& path) const;
    bool IsActive(const std::string& modulePath) const;
    void SetActive(const std::string& modulePath, bool active);
    std::vector<std::string> Located() const { return WithState(1); }
    std::vector<std::string> NotLocated() const { return WithState(0); }

    // Searches the pending names, in their order, in a directory; the names
    // found leave `pending` and their paths are located. Gives the paths found.
    std::vector<std::string> Search(std::vector<std::string>& pending, const std::string& directory,
                                    bool subdirectories);
    // Enters names that no search found as not located; a name given again
    // counts as a duplicate.
    void MarkNotLocated(const std::vector<std::string>& names);
    // Takes a located path back, so that a search can find it again.
    void Unlocate(const std::string& path);

private:
    std::vector<std::string> WithState(int state) const;
};
