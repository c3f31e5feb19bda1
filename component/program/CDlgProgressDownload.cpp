#include "component/program/CDlgProgressDownload.h"

#include "boundary/Ids.h"
#include "component/util/MessageFormat.h"

CDlgProgressDownload::CDlgProgressDownload(IQServiceRegistry* registry, IQModuleLoader& reader, int32_t mode,
                                           const std::string& path, uint32_t offset,
                                           IQDownloadSecondStage* secondStage)
    : CDlgProgressTask(registry, "Downloading Program", path, TargetAddress(offset)), reader_(reader),
      mode_(mode), secondStage_(secondStage)
{
    SetText(MessageFormat::Format("Loading\r\n%s\r\nto memory", ShortPath(path).c_str()));
}

HRESULT CDlgProgressDownload::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom(
        {Ids::IUnknown, Ids::IQTC, Ids::IQTCP, Ids::IQTCPObject, Ids::IQTCPObjectLoad, Ids::IQTCPObjectLoad2},
        iid, static_cast<IQTCPObjectLoad2*>(this), out);
}

void CDlgProgressDownload::Start()
{
    reader_.Load(this, mode_);
}

// The reader's end may be the start of the target's own stage, which ends
// with a second call here.
HRESULT CDlgProgressDownload::OnFinished()
{
    if (secondStage_ != nullptr && !secondBegun_) {
        std::string text;
        if (Succeeded(secondStage_->GetText(text)) && !text.empty()) {
            SetText(text);
            secondBegun_ = true;
            secondStage_->Run(this, mode_);
            return S_OK;
        }
    }
    Close();
    return S_OK;
}

HRESULT CDlgProgressDownload::ReportMismatch(TargetAddress address, int32_t inMemory, int32_t inFile)
{
    mismatch_ = {true, address, inMemory, inFile};
    return S_OK;
}
