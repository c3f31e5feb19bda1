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
