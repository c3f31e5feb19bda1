#include "platform/simdriver/SimSessionDevice.h"

#include "boundary/Ids.h"
#include "boundary/interfaces/Debugger.h"
#include "boundary/interfaces/Store.h"
#include "boundary/interfaces/Workbench.h"
#include "boundary/interfaces/Workspace.h"

SimSessionDevice SimSessionDevice::Read(IQServiceRegistry* registry)
{
    SimSessionDevice device;
    auto* workspace = GetServiceAs<IQWorkspaceInfo>(registry, Ids::IQWorkspaceInfo);
    auto* store = GetServiceAs<IQTargetRegistry>(registry, Ids::IQTargetRegistry);
    IUnknown* debugger = nullptr;
    if (workspace == nullptr || store == nullptr ||
        registry->GetService(Ids::IQDebuggerState, &debugger) != S_OK)
        return device;
    auto* server = QueryAs<IQDisassemblyDataManagerServer>(debugger, Ids::IQDisassemblyDataManagerServer);
    std::string ws, project, session;
    if (server == nullptr || Failed(server->GetSessionName(session)) ||
        Failed(workspace->GetActiveWorkspace(ws)))
        return device;
    workspace->GetActiveProject(project);
    workspace->GetWorkspaceDirectory(ws, device.folder);
    store->GetProperty(kTag, ws, project, session, device.choice);
    return device;
}
