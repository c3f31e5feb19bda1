#include "component/breaks/CPCBreak.h"

#include "component/util/ObjectSerial.h"

namespace
{

// The platform's ids and ours name breakpoints in one list. Ours keep to a
// range of their own, clear of a platform's counter from 1 and of -1, which
// names every breakpoint.
constexpr uint32_t kOwnIdBase = 0x40000000;
constexpr uint32_t kOwnIdMask = 0x3FFFFFFF;

} // namespace

CPCBreak::CPCBreak()
    : ownId_(kOwnIdBase | static_cast<uint32_t>(NextObjectSerial() & kOwnIdMask)), id_(ownId_)
{
}

PCBreakState CPCBreak::GetState() const
{
    PCBreakState state = GetStateRaw();
    state.Enabled = GetEnabled();
    return state;
}

PCBreakState CPCBreak::GetStateRaw() const
{
    return {planted_, hasAddress_, sourceBound_, enabled_};
}
