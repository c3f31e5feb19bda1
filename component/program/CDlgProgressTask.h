#pragma once
#include <cstdint>
#include <string>

#include "boundary/TargetAddress.h"
#include "boundary/interfaces/ObjectReader.h"
#include "component/program/CDlgProgressGeneric.h"

// The first difference a reader found between the file and the target.
struct TaskMismatch {
    bool reported = false;
    TargetAddress address;
    int32_t inMemory = 0;
    int32_t inFile = 0;
};

// What the three tasks share: the reader drives a task through its status,
// its result code and its progress, and learns of a cancel when it asks for
// the status. Face is the task interface the reader is handed.
template <class Face> class CDlgProgressTask : public CDlgProgressGeneric, public Face
{
public:
    CDlgProgressTask(IQServiceRegistry* registry, std::string title, std::string path, TargetAddress start)
        : CDlgProgressGeneric(registry, std::move(title)), path_(std::move(path)), start_(start)
    {
    }
    TESSEL_NOT_REFCOUNTED

    int32_t Status() const { return status_; }
    HRESULT Result() const { return result_; }

    HRESULT OnFinished() override
    {
        Close();
        return S_OK;
    }
    HRESULT GetStatus(int32_t& status) override
    {
        PollCancel();
        status = status_;
        return S_OK;
    }
    HRESULT GetResultCode() override { return result_; }
    HRESULT SetProgressRange(uint32_t upper) override
    {
        Progress(upper);
        return S_OK;
    }
    HRESULT SetProgressPosition(uint32_t position) override
    {
        Position(position);
        return S_OK;
    }
    HRESULT SetStatus(int32_t status) override
    {
        status_ = status;
        return S_OK;
    }
    HRESULT SetResultCode(HRESULT code) override
    {
        result_ = code;
        return S_OK;
    }
    HRESULT IsSave() override { return E_FAIL; }
    HRESULT GetFileName(std::string& name) override
    {
        name = path_;
        return S_OK;
    }
    HRESULT GetStartAddress(TargetAddress& value) override
    {
        value = start_;
        return S_OK;
    }

protected:
    int32_t CurrentStatus() const override { return status_; }
    void Cancel() override { status_ = TASK_CANCELLED; }

    std::string path_;
    TargetAddress start_;
    int32_t status_ = TASK_RUNNING;
    HRESULT result_ = S_OK;
};
