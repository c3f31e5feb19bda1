// What the file commands change of the session's programs and of its stored
// module list, beyond the loads themselves.
#include "boundary/Ids.h"
#include "boundary/interfaces/Store.h"
#include "component/frame/CDebuggerState.h"
#include "component/program/DownloadModuleList.h"

CQProgram CDebuggerState::MakeProgram(const CDownloadModule& module)
{
    return CQProgram(module, SessionContext(), ProgramHostFace, Registry);
}

int32_t CDebuggerState::InsertProgram(int32_t index, const CQProgram& program)
{
    return Programs.Insert(program, index, Registry);
}

bool CDebuggerState::RemoveProgramByName(const std::string& key)
{
    const std::optional<int32_t> index = FindProgramIndexByKey(key);
    if (!index)
        return false;
    RemoveProgram(*index);
    return true;
}

void CDebuggerState::WriteModules(const std::vector<CDownloadModule>& modules)
{
    Variant stored;
    WriteModuleList(modules, stored);
    if (auto* store = GetServiceAs<IQDebugSettingsStore>(Registry, Ids::IQDebugSettingsStore))
        store->SetModules(WorkspaceName, ProjectName, SessionName, stored);
    // Settings applied later compare with this list: the programs match it already.
    Modules = modules;
}
