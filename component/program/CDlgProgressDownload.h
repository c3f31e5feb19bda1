#pragma once
#include "component/program/CDlgProgressTask.h"

class CQProgram;

// A target that takes part in a download after the reader: it may have a
// second stage of its own, which gives a text while it runs.
struct IQDownloadSecondStage : IUnknown {
    virtual HRESULT GetText(std::string& text) = 0;           // 3
    virtual HRESULT Run(IQTCPObject* task, int32_t mode) = 0; // 4
};

// The load of one program into the target by the module's reader.
class CDlgProgressDownload final : public CDlgProgressTask<IQTCPObjectLoad2>
{
public:
    // `secondStage` may be null; `mode` is 1 debug data, 2 object, 3 both.
    CDlgProgressDownload(IQServiceRegistry* registry, IQModuleLoader& reader, int32_t mode,
                         const std::string& path, uint32_t offset, IQDownloadSecondStage* secondStage);

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    HRESULT OnFinished() override;
    HRESULT Reserved13() override { return E_NOTIMPL; }
    HRESULT ReportMismatch(TargetAddress address, int32_t inMemory, int32_t inFile) override;

    const TaskMismatch& Mismatch() const { return mismatch_; }

private:
    void Start() override;

    IQModuleLoader& reader_;
    int32_t mode_;
    IQDownloadSecondStage* secondStage_;
    bool secondBegun_ = false;
    TaskMismatch mismatch_;
};
