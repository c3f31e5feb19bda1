#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "boundary/interfaces/Workspace.h"

// The project service of the console: a file list is a small text file, one
// entry a line under a header line per list that gives its count; the files of
// a project are kept in memory by project name for as long as the workbench runs.
class ProjectFileService final : public IQProjectFileService
{
public:
    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT ReadFileList(const std::string& path, List& located, List& searched, List& notLocated) override;
    HRESULT WriteFileList(const std::string& path, const List& located, const List& searched,
                          const List& notLocated) override;
    HRESULT AddProjectFile(const std::string& project, const std::string& path, std::string& fileId) override;
    HRESULT RemoveProjectFile(const std::string& project, const std::string& fileId) override;
    HRESULT GetProjectFiles(const std::string& project,
                            std::vector<std::pair<std::string, std::string>>& files) override;

private:
    struct NoCaseLess {
        bool operator()(const std::string& a, const std::string& b) const;
    };
    using Files = std::vector<std::pair<std::string, std::string>>;

    std::map<std::string, Files, NoCaseLess> projects_;
    uint64_t nextId_ = 1;
};
