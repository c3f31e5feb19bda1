#pragma once
#include "component/program/CDlgProgressTask.h"

// The compare of an object file with target memory by the module's reader.
class CDlgProgressVerify final : public CDlgProgressTask<IQTCPObjectVerify>
{
public:
    CDlgProgressVerify(IQServiceRegistry* registry, IQModuleLoader& reader, const std::string& path,
                       uint32_t offset);

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    HRESULT ReportMismatchAddress(TargetAddress address) override;
    HRESULT ReportMismatch(TargetAddress address, int32_t inMemory, int32_t inFile) override;

    const TaskMismatch& Mismatch() const { return mismatch_; }

private:
    void Start() override;

    IQModuleLoader& reader_;
    TaskMismatch mismatch_;
};
