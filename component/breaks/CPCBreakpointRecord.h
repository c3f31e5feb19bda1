#pragma once
#include <string>
#include <vector>

#include "component/breaks/CPCBreakpoint.h"

// A breakpoint's stored values as a record of its own, so that a list of them
// can be put in the order in which people look for a breakpoint: address
// breakpoints by address, source breakpoints by file and line.
class CPCBreakpointRecord
{
public:
    explicit CPCBreakpointRecord(const CPCBreakpoint& breakpoint);

    const std::string& GetFile() const { return file_; }
    int32_t GetLine() const { return line_; }
    TargetAddress GetAddress() const { return address_; }
    int32_t GetEnabled() const { return enabled_; }
    const std::string& GetOwnerText() const { return ownerText_; }
    const std::string& GetOwnerName() const { return ownerName_; }

    // "%08x" of the address when there is no line, else "%s|%06d" of file and line.
    std::string SortKey() const;
    // By key; records of one key keep their order.
    static void Sort(std::vector<CPCBreakpointRecord>& records);

private:
    std::string file_;
    int32_t line_;
    TargetAddress address_;
    int32_t enabled_;
    std::string ownerText_;
    std::string ownerName_;
};
