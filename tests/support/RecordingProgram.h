#pragma once
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "boundary/Ids.h"
#include "boundary/interfaces/ObjectReader.h"

// A program as a reader sees it: its file, offset and access size as set,
// and the areas the reader reports, in the order they came.
struct ProgramRecord : IQProgram3 {
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerFrom({Ids::IQProgram, Ids::IQProgram2, Ids::IQProgram3}, iid, this, out);
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT GetFilePath(std::string& p) override { return p = path, S_OK; }
    HRESULT GetOffset(uint32_t& o) override { return o = offset, S_OK; }
    HRESULT GetFormat(std::string&) override { return E_NOTIMPL; }
    HRESULT IsLoaded() override { return E_FAIL; }
    HRESULT ClearAreas() override { return areas.clear(), S_OK; }
    HRESULT AddArea(TargetAddress s, TargetAddress e) override
    {
        return areas.push_back({s.Value(), e.Value()}), S_OK;
    }
    HRESULT GetAreaCount(uint32_t&) override { return E_NOTIMPL; }
    HRESULT GetArea(uint32_t, TargetAddress&, TargetAddress&) override { return E_NOTIMPL; }
    HRESULT GetRawFileName(std::string&) override { return E_NOTIMPL; }
    HRESULT IsVerifyOff() override { return verify ? S_FALSE : S_OK; }
    HRESULT SetVerify(VariantBool) override { return E_NOTIMPL; }
    HRESULT GetAccessSize(int32_t& size) override { return size = accessSize, S_OK; }

    std::string path;
    uint32_t offset = 0;
    int32_t accessSize = 1;
    bool verify = false;
    std::vector<std::pair<uint32_t, uint32_t>> areas;
};
