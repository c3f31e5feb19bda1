#pragma once
#include <cstdint>
#include <string>

#include "boundary/TargetAddress.h"
#include "boundary/Unknown.h"

// The public form of a label, as the label interfaces pass it. The name is
// UTF-8 like all text of the system, so the one string serves both the
// comparisons and the callers that want the name.
struct LabelRecord {
    std::string Name;
    TargetAddress Address{};
    // Kind and Extra are opaque and carried unchanged; the labels this system
    // makes by itself have kind 2 and extra 0.
    uint32_t Kind = 2;
    uint32_t Extra = 0;
};

// The session's labels as the platform's readers, the views and the command
// line see them. Lists are in name order. A record pointer handed out is
// borrowed: valid until that label goes.
struct IQLabelManager : IUnknown {
    virtual HRESULT ClearLabels() = 0;                                     // 3
    virtual HRESULT AddLabel(const LabelRecord& record) = 0;               // 4
    virtual HRESULT RemoveLabel(const std::string& name) = 0;              // 5
    virtual HRESULT GetLabelCopy(uint32_t index, LabelRecord& record) = 0; // 6
    // 0, or 1 when there is no label at that index.
    virtual HRESULT GetLabelPointer(uint32_t index, const LabelRecord*& record) = 0; // 7
    virtual HRESULT GetLabelCount(uint32_t& count) = 0;                              // 8
    // Fills in the name of the label at exactly record.Address.
    virtual HRESULT FindLabelByAddress(LabelRecord& record) = 0; // 9
    // Fills in the address of the label named record.Name; exact 0 ignores case.
    virtual HRESULT FindLabelByName(LabelRecord& record, int32_t exact) = 0;                      // 10
    virtual HRESULT ReplaceLabel(const LabelRecord& oldRecord, const LabelRecord& newRecord) = 0; // 11
};

struct IQLabelManager2 : IQLabelManager {
    // Lets the user pick a label; the name is empty when none was picked.
    virtual HRESULT SelectLabel(std::string& name) = 0; // 12
};

// Record access in either order, for the component's own use. Both answer 0,
// or 1 at or above the count.
struct IQLabelManagerInternal : IUnknown {
    virtual HRESULT GetRecordByNameIndex(uint32_t index, const LabelRecord*& record) = 0;    // 3
    virtual HRESULT GetRecordByAddressIndex(uint32_t index, const LabelRecord*& record) = 0; // 4
};
