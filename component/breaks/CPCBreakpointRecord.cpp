#include "component/breaks/CPCBreakpointRecord.h"

#include <algorithm>

#include "component/util/MessageFormat.h"

CPCBreakpointRecord::CPCBreakpointRecord(const CPCBreakpoint& breakpoint)
    : file_(breakpoint.GetFile()), line_(breakpoint.GetLine()), address_(breakpoint.GetAddress()),
      enabled_(breakpoint.GetEnabled()), ownerText_(breakpoint.GetOwnerText()),
      ownerName_(breakpoint.GetOwnerName())
{
}

std::string CPCBreakpointRecord::SortKey() const
{
    if (line_ == -1)
        return MessageFormat::Format("%08x", address_.Value());
    return MessageFormat::Format("%s|%06d", file_.c_str(), line_);
}

void CPCBreakpointRecord::Sort(std::vector<CPCBreakpointRecord>& records)
{
    std::stable_sort(records.begin(), records.end(),
                     [](const auto& a, const auto& b) { return a.SortKey() < b.SortKey(); });
}
