#include "component/program/CDlgProgressVerify.h"

#include "boundary/Ids.h"
#include "component/util/MessageFormat.h"

CDlgProgressVerify::CDlgProgressVerify(IQServiceRegistry* registry, IQModuleLoader& reader,
                                       const std::string& path, uint32_t offset)
    : CDlgProgressTask(registry, "Downloading Program", path, TargetAddress(offset)), reader_(reader)
{
    SetText(MessageFormat::Format("Verifing memory from %s", ShortPath(path).c_str()));
}

HRESULT CDlgProgressVerify::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQTC, Ids::IQTCP, Ids::IQTCPObject, Ids::IQTCPObjectVerify}, iid,
                      static_cast<IQTCPObjectVerify*>(this), out);
}

void CDlgProgressVerify::Start()
{
    reader_.Verify(this);
}

HRESULT CDlgProgressVerify::ReportMismatchAddress(TargetAddress address)
{
    mismatch_.reported = true;
    mismatch_.address = address;
    return S_OK;
}

HRESULT CDlgProgressVerify::ReportMismatch(TargetAddress address, int32_t inMemory, int32_t inFile)
{
    mismatch_ = {true, address, inMemory, inFile};
    return S_OK;
}
