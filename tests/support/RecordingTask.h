#pragma once
#include <string>

#include "boundary/interfaces/ObjectReader.h"

// A load, save or verify task as a reader sees it: it keeps what the reader
// sets and counts the finishes. A status set before the call stands for a
// cancel the user gave.
struct RecordingTask : IQTCPObject {
    HRESULT QueryInterface(const Guid&, void**) override { return E_NOINTERFACE; }
    TESSEL_NOT_REFCOUNTED
    HRESULT OnFinished() override { return ++finished, S_OK; }
    HRESULT GetStatus(int32_t& s) override { return s = status, S_OK; }
    HRESULT GetResultCode() override { return result; }
    HRESULT SetProgressRange(uint32_t upper) override { return range = upper, S_OK; }
    HRESULT SetProgressPosition(uint32_t p) override { return position = p, S_OK; }
    HRESULT SetStatus(int32_t s) override { return status = s, S_OK; }
    HRESULT SetResultCode(HRESULT code) override { return result = code, S_OK; }
    HRESULT IsSave() override { return E_FAIL; }
    HRESULT GetFileName(std::string& name) override { return name = file, S_OK; }
    HRESULT GetStartAddress(TargetAddress& value) override { return value = 0, S_OK; }

    std::string file;
    int32_t status = TASK_RUNNING;
    HRESULT result = S_OK;
    uint32_t range = 0, position = 0;
    int finished = 0;
};
