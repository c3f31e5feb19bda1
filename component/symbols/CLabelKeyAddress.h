#pragma once
#include "component/symbols/CDataLabel.h"

// A label's place in the address order. Keys never own their label. The key
// keeps its own copy of the address, which a label never changes, so that a
// search down the tree touches no label.
class CLabelKeyAddress
{
public:
    explicit CLabelKeyAddress(CDataLabel* label) : Label(label), address_(label->Record.Address) {}

    TargetAddress Address() const { return address_; }

    CDataLabel* Label;

private:
    TargetAddress address_;
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
