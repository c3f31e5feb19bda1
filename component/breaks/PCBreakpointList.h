#pragma once
#include <memory>
#include <vector>

#include "boundary/Variant.h"
#include "component/breaks/CPCBreak.h"
#include "component/breaks/CPCBreakpoint.h"

// The session's breakpoints in the form the store keeps: six strings a
// breakpoint (file, line, address, enabled, owner, owner name), numbers in
// signed decimal.

// The break manager's breakpoints, oldest first.
using PCBreakArray = std::vector<std::unique_ptr<CPCBreak>>;

// The records to store, from the newest breakpoint to the oldest; temporary
// ones are left out. An address breakpoint goes without file and line even
// when its source place is known. The enabled value is the user's, whatever
// the suspended state.
std::vector<CPCBreakpoint> BuildStoredBreakpoints(const PCBreakArray& breaks);

// An empty owner text is written "0".
void WriteBreakpointList(const std::vector<CPCBreakpoint>& breakpoints, Variant& stored);
// In the order stored. Another type or a count that is no multiple of six
// reads as no breakpoints; a number that is no number reads as 0.
void ReadBreakpointList(const Variant& stored, std::vector<CPCBreakpoint>& breakpoints);

// A loaded record as a breakpoint: a source breakpoint when it names a file,
// else an address breakpoint. User kind, not planted: nothing of the platform
// comes back from the store. An owner text that is no identity gives kNoOwner.
std::unique_ptr<CPCBreak> MakeStoredBreak(const CPCBreakpoint& breakpoint);
