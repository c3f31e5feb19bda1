#pragma once
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "boundary/Unknown.h"

// What the workbench knows about workspaces, projects and configurations.
// A name argument that is empty stands for the active one.
struct IQWorkspaceInfo : IUnknown {
    virtual HRESULT GetInstallDirectory(std::string& dir) = 0;     // 5
    virtual HRESULT GetTempDirectory(std::string& dir) = 0;        // 6
    virtual HRESULT GetActiveConfiguration(std::string& name) = 0; // 10
    virtual HRESULT GetActiveProject(std::string& name) = 0;       // 11
    virtual HRESULT GetActiveWorkspace(std::string& name) = 0;     // 12
    virtual HRESULT GetConfigurationName(const std::string& ws, const std::string& project,
                                         const std::string& cfg,
                                         std::string& name) = 0; // 19
    virtual HRESULT GetProjectName(const std::string& ws, const std::string& project,
                                   std::string& name) = 0;                          // 20
    virtual HRESULT GetWorkspaceName(const std::string& ws, std::string& name) = 0; // 21
    virtual HRESULT GetConfigurationDirectory(const std::string& ws, const std::string& project,
                                              const std::string& cfg, std::string& dir) = 0; // 22
    virtual HRESULT GetProjectDirectory(const std::string& ws, const std::string& project,
                                        std::string& dir) = 0;                          // 23
    virtual HRESULT GetWorkspaceDirectory(const std::string& ws, std::string& dir) = 0; // 24
    virtual HRESULT IsWorkspaceOpen() = 0; // 35: S_OK when one is open
};

// Placeholders the user defines: for all workspaces, and for one workspace.
struct IQCustomPlaceholders : IUnknown {
    using Map = std::vector<std::pair<std::string, std::string>>;
    virtual HRESULT GetGlobalPlaceholders(Map& map) = 0;                                  // 43
    virtual HRESULT GetWorkspacePlaceholders(const std::string& workspace, Map& map) = 0; // 186
};

// The workbench's project service as the download file manager uses it: the
// file list kept beside a download module, whose bytes are the workbench's,
// and the files a project shows. A project file is known by the identifier
// the workbench hands out when it is added.
struct IQProjectFileService : IUnknown {
    using List = std::vector<std::string>;
    // A file that can't be read leaves the three lists empty and fails.
    virtual HRESULT ReadFileList(const std::string& path, List& located, List& searched,
                                 List& notLocated) = 0; // 3
    virtual HRESULT WriteFileList(const std::string& path, const List& located, const List& searched,
                                  const List& notLocated) = 0; // 4
    // S_FALSE, with the identifier it has, when the project holds the path already.
    virtual HRESULT AddProjectFile(const std::string& project, const std::string& path,
                                   std::string& fileId) = 0;                                      // 5
    virtual HRESULT RemoveProjectFile(const std::string& project, const std::string& fileId) = 0; // 6
    // Identifier and path of each file, in the order they were added.
    virtual HRESULT GetProjectFiles(const std::string& project,
                                    std::vector<std::pair<std::string, std::string>>& files) = 0; // 7
};
