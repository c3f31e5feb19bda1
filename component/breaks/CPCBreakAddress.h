#pragma once
#include "component/breaks/CPCBreak.h"

// A breakpoint tied to an address. When debug data knows the exact line of
// the address, the text and line show that place while the breakpoint stays
// tied to the address.
class CPCBreakAddress : public CPCBreak
{
public:
    // Planted from the start: the manager plants an address breakpoint as it
    // makes it, or finds out that no target takes it yet.
    explicit CPCBreakAddress(TargetAddress address);

    std::string GetDisplayName() const override { return GetText(); }
    std::string GetFileName() const override { return GetDisplayName(); }
    bool MatchModule(int32_t operation, uint32_t module) override;

    // The text of an address with no known source place.
    static std::string AddressText(TargetAddress address);
};
