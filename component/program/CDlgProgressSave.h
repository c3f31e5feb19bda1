#pragma once
#include "component/program/CDlgProgressTask.h"

// A save's task: the range from the start to the end, both inclusive, into a file.
class CTaskSaveObject : public CDlgProgressTask<IQTCPObjectSave>
{
public:
    CTaskSaveObject(IQServiceRegistry* registry, const std::string& path, TargetAddress start,
                    TargetAddress end);

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    HRESULT IsSave() override { return S_OK; }
    HRESULT GetEndAddress(TargetAddress& value) override
    {
        value = end_;
        return S_OK;
    }

private:
    TargetAddress end_;
};

// The save of target memory to an object file by the module's reader.
class CDlgProgressSave final : public CTaskSaveObject
{
public:
    CDlgProgressSave(IQServiceRegistry* registry, IQModuleLoader& reader, const std::string& path,
                     TargetAddress start, TargetAddress end);

private:
    void Start() override;
    IQModuleLoader& reader_;
};
