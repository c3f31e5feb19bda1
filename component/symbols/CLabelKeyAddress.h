#pragma once
#include "component/symbols/CDataLabel.h"

// A label's place in the address order. Keys never own their label.
class CLabelKeyAddress
{
public:
    explicit CLabelKeyAddress(CDataLabel* label) : Label(label) {}

    TargetAddress Address() const { return Label->Record.Address; }

    CDataLabel* Label;
};

// Looks up by a bare address, with no probe label.
struct LabelAddressOrder {
    using is_transparent = void;
    bool operator()(const CLabelKeyAddress& a, const CLabelKeyAddress& b) const
    {
        return a.Address() < b.Address();
    }
    bool operator()(const CLabelKeyAddress& a, TargetAddress b) const { return a.Address() < b; }
    bool operator()(TargetAddress a, const CLabelKeyAddress& b) const { return a < b.Address(); }
};
