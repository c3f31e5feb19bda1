#include "component/program/CDlgProgressSave.h"

#include "boundary/Ids.h"
#include "component/util/MessageFormat.h"

CTaskSaveObject::CTaskSaveObject(IQServiceRegistry* registry, const std::string& path, TargetAddress start,
                                 TargetAddress end)
    : CDlgProgressTask(registry, "Saving Program", path, start), end_(end)
{
    SetText(MessageFormat::Format("Saving memory to: %s", ShortPath(path).c_str()));
}

HRESULT CTaskSaveObject::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQTC, Ids::IQTCP, Ids::IQTCPObject, Ids::IQTCPObjectSave}, iid,
                      static_cast<IQTCPObjectSave*>(this), out);
}

CDlgProgressSave::CDlgProgressSave(IQServiceRegistry* registry, IQModuleLoader& reader,
                                   const std::string& path, TargetAddress start, TargetAddress end)
    : CTaskSaveObject(registry, path, start, end), reader_(reader)
{
}

// The reader is told 3: memory and what it knows of the program.
void CDlgProgressSave::Start()
{
    reader_.Save(this, 3);
}
