#pragma once
#include <algorithm>
#include <string>
#include <vector>

#include "boundary/Ids.h"
#include "boundary/interfaces/PlatformFunctions.h"

// The labels of a platform driven by function name: its value-to-symbol and
// symbol-to-value functions and its label list, over one table. Function
// pointers carry no state, so the table is process-wide; each fake empties it.
class FakeLabelPlatform final : public IQPlatformFunctions, public IQPlatformFreeRun
{
public:
    FakeLabelPlatform() { Table().clear(); }
    static std::vector<LabelRecord>& Table()
    {
        static std::vector<LabelRecord> table;
        return table;
    }

    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerFrom({Ids::IUnknown, Ids::IQPlatformFunctions}, iid,
                          static_cast<IQPlatformFunctions*>(this), out);
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT GetFunction(const std::string& name, void*& pointer) override
    {
        pointer = nullptr;
        if (std::find(offered.begin(), offered.end(), name) == offered.end())
            return E_FAIL;
        pointer =
            name == "LOAD_ValToSym" ? reinterpret_cast<void*>(&ValToSym) : reinterpret_cast<void*>(&SymToVal);
        return S_OK;
    }
    HRESULT GetLastErrorText(std::string&) override { return E_FAIL; }

    HRESULT GetLabelPointer(uint32_t index, const LabelRecord*& record) override
    {
        if (index >= Table().size())
            return 1;
        record = &Table()[index];
        return S_OK;
    }
    HRESULT GetLabelCopy(uint32_t index, LabelRecord& record) override
    {
        if (index >= Table().size())
            return E_FAIL;
        record = Table()[index];
        return S_OK;
    }
    HRESULT GetLabelCount(uint32_t& count) override
    {
        count = static_cast<uint32_t>(Table().size());
        return S_OK;
    }
    HRESULT GetAreaCount(uint32_t&) override { return E_FAIL; }
    HRESULT GetAreaBounds(uint32_t, TargetAddress&, TargetAddress&) override { return E_FAIL; }

    std::vector<std::string> offered = {"LOAD_ValToSym", "LOAD_SymToVal"};

private:
    static const char* ValToSym(int32_t, uint32_t value)
    {
        for (const LabelRecord& label : Table())
            if (label.Address.Value() == value)
                return label.Name.c_str();
        return "";
    }
    static int SymToVal(int32_t, const char* name, uint32_t* value)
    {
        for (const LabelRecord& label : Table())
            if (label.Name == name) {
                *value = label.Address.Value();
                return 1;
            }
        return 0;
    }
};
