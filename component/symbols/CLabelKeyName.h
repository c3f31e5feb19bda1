#pragma once
#include <string_view>

#include "component/symbols/CDataLabel.h"

// A label's place in the name order. Keys never own their label.
class CLabelKeyName
{
public:
    explicit CLabelKeyName(CDataLabel* label) : Label(label) {}

    std::string_view Name() const { return Label->NarrowName(); }

    CDataLabel* Label;
};

// Byte-wise and case-sensitive, so that names differing only in case are two
// keys and upper case sorts first. Looks up by a bare name, with no probe label.
struct LabelNameOrder {
    using is_transparent = void;
    bool operator()(const CLabelKeyName& a, const CLabelKeyName& b) const { return a.Name() < b.Name(); }
    bool operator()(const CLabelKeyName& a, std::string_view b) const { return a.Name() < b; }
    bool operator()(std::string_view a, const CLabelKeyName& b) const { return a < b.Name(); }
};
