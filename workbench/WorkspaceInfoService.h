#pragma once
#include <string>

#include "boundary/interfaces/Workspace.h"

class WorkspaceModel;

// What the workbench tells of its workspace, projects and configurations:
// the workspace is a folder, a project a folder inside it, a configuration a
// folder inside its project.
class WorkspaceInfoService final : public IQWorkspaceInfo
{
public:
    WorkspaceInfoService(const WorkspaceModel& model, std::string installDirectory)
        : model_(model), installDirectory_(std::move(installDirectory))
    {
    }

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT GetInstallDirectory(std::string& dir) override;
    HRESULT GetTempDirectory(std::string& dir) override;
    HRESULT GetActiveConfiguration(std::string& name) override;
    HRESULT GetActiveProject(std::string& name) override;
    HRESULT GetActiveWorkspace(std::string& name) override;
    HRESULT GetConfigurationName(const std::string& ws, const std::string& project, const std::string& cfg,
                                 std::string& name) override;
    HRESULT GetProjectName(const std::string& ws, const std::string& project, std::string& name) override;
    HRESULT GetWorkspaceName(const std::string& ws, std::string& name) override;
    HRESULT GetConfigurationDirectory(const std::string& ws, const std::string& project,
                                      const std::string& cfg, std::string& dir) override;
    HRESULT GetProjectDirectory(const std::string& ws, const std::string& project, std::string& dir) override;
    HRESULT GetWorkspaceDirectory(const std::string& ws, std::string& dir) override;
    HRESULT IsWorkspaceOpen() override;

private:
    bool IsThisWorkspace(const std::string& ws) const;
    std::string ProjectOrActive(const std::string& project) const;

    const WorkspaceModel& model_;
    std::string installDirectory_;
};
