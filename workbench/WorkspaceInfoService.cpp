#include "workbench/WorkspaceInfoService.h"

#include <strings.h>

#include <algorithm>
#include <cstdlib>

#include "boundary/Ids.h"
#include "workbench/store/WorkspaceModel.h"

namespace
{

bool Same(const std::string& a, const std::string& b)
{
    return strcasecmp(a.c_str(), b.c_str()) == 0;
}

HRESULT Give(std::string& out, std::string value)
{
    out = std::move(value);
    return out.empty() ? E_FAIL : S_OK;
}

} // namespace

HRESULT WorkspaceInfoService::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQWorkspaceInfo}, iid, static_cast<IQWorkspaceInfo*>(this), out);
}

bool WorkspaceInfoService::IsThisWorkspace(const std::string& ws) const
{
    return ws.empty() || Same(ws, model_.Name());
}

std::string WorkspaceInfoService::ProjectOrActive(const std::string& project) const
{
    std::string name = project.empty() ? model_.Active().project : project;
    for (const auto& p : model_.Projects())
        if (Same(p, name))
            return p;
    return {};
}

HRESULT WorkspaceInfoService::GetInstallDirectory(std::string& dir)
{
    return Give(dir, installDirectory_);
}

HRESULT WorkspaceInfoService::GetTempDirectory(std::string& dir)
{
    const char* tmp = std::getenv("TMPDIR");
    return Give(dir, tmp != nullptr && *tmp ? tmp : "/tmp");
}

HRESULT WorkspaceInfoService::GetActiveConfiguration(std::string& name)
{
    return Give(name, model_.Active().configuration);
}
HRESULT WorkspaceInfoService::GetActiveProject(std::string& name)
{
    return Give(name, model_.Active().project);
}
HRESULT WorkspaceInfoService::GetActiveWorkspace(std::string& name)
{
    return Give(name, model_.Name());
}

HRESULT WorkspaceInfoService::GetConfigurationName(const std::string& ws, const std::string& project,
                                                   const std::string& cfg, std::string& name)
{
    std::string p = IsThisWorkspace(ws) ? ProjectOrActive(project) : std::string();
    std::string wanted = cfg.empty() ? model_.Active().configuration : cfg;
    for (const auto& c : model_.Configurations(p))
        if (Same(c, wanted))
            return Give(name, c);
    return Give(name, {});
}

HRESULT WorkspaceInfoService::GetProjectName(const std::string& ws, const std::string& project,
                                             std::string& name)
{
    return Give(name, IsThisWorkspace(ws) ? ProjectOrActive(project) : std::string());
}

HRESULT WorkspaceInfoService::GetWorkspaceName(const std::string& ws, std::string& name)
{
    return Give(name, IsThisWorkspace(ws) ? model_.Name() : std::string());
}

HRESULT WorkspaceInfoService::GetWorkspaceDirectory(const std::string& ws, std::string& dir)
{
    return Give(dir, IsThisWorkspace(ws) ? model_.Folder().string() : std::string());
}

HRESULT WorkspaceInfoService::GetProjectDirectory(const std::string& ws, const std::string& project,
                                                  std::string& dir)
{
    std::string p = IsThisWorkspace(ws) ? ProjectOrActive(project) : std::string();
    return Give(dir, p.empty() || model_.Folder().empty() ? std::string() : (model_.Folder() / p).string());
}

HRESULT WorkspaceInfoService::GetConfigurationDirectory(const std::string& ws, const std::string& project,
                                                        const std::string& cfg, std::string& dir)
{
    std::string projectDir, name;
    if (GetProjectDirectory(ws, project, projectDir) != S_OK ||
        GetConfigurationName(ws, project, cfg, name) != S_OK)
        return Give(dir, {});
    return Give(dir, projectDir + "/" + name);
}

HRESULT WorkspaceInfoService::IsWorkspaceOpen()
{
    return model_.Folder().empty() ? S_FALSE : S_OK;
}
