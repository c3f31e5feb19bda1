#pragma once
#include <string>
#include <tuple>
#include <vector>

#include "boundary/Ids.h"
#include "boundary/interfaces/ObjectReader.h"

// A load, save or verify task as a reader sees it: it keeps what the reader
// sets, the first difference it reports, and counts the finishes. A status set
// before the call stands for a cancel the user gave. Its save face covers
// start to end.
struct RecordingTask : IQTCPObjectVerify {
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        if (iid == Ids::IQTCPObjectSave)
            return AnswerFrom({iid}, iid, static_cast<IQTCPObjectSave*>(&save), out);
        return AnswerFrom({Ids::IQTCPObject, Ids::IQTCPObjectVerify}, iid, this, out);
    }
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
    HRESULT GetStartAddress(TargetAddress& value) override { return value = start, S_OK; }
    HRESULT ReportMismatchAddress(TargetAddress) override { return S_OK; }
    HRESULT ReportMismatch(TargetAddress at, int32_t inMemory, int32_t inFile) override
    {
        return mismatches.push_back({at.Value(), inMemory, inFile}), S_OK;
    }

    std::string file;
    int32_t status = TASK_RUNNING;
    HRESULT result = S_OK;
    uint32_t range = 0, position = 0;
    int finished = 0;
    TargetAddress start = 0, end = 0;
    std::vector<std::tuple<uint32_t, int32_t, int32_t>> mismatches;

    struct SaveFace : IQTCPObjectSave {
        explicit SaveFace(RecordingTask& task) : t(task) {}
        HRESULT QueryInterface(const Guid& iid, void** out) override { return t.QueryInterface(iid, out); }
        TESSEL_NOT_REFCOUNTED
        HRESULT OnFinished() override { return t.OnFinished(); }
        HRESULT GetStatus(int32_t& s) override { return t.GetStatus(s); }
        HRESULT GetResultCode() override { return t.result; }
        HRESULT SetProgressRange(uint32_t upper) override { return t.SetProgressRange(upper); }
        HRESULT SetProgressPosition(uint32_t p) override { return t.SetProgressPosition(p); }
        HRESULT SetStatus(int32_t s) override { return t.SetStatus(s); }
        HRESULT SetResultCode(HRESULT code) override { return t.SetResultCode(code); }
        HRESULT IsSave() override { return S_OK; }
        HRESULT GetFileName(std::string& name) override { return t.GetFileName(name); }
        HRESULT GetStartAddress(TargetAddress& value) override { return value = t.start, S_OK; }
        HRESULT GetEndAddress(TargetAddress& value) override { return value = t.end, S_OK; }
        RecordingTask& t;
    } save{*this};
};
