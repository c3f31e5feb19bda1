#pragma once
#include "component/breaks/CPCBreak.h"

// A breakpoint tied to a file and a line; its address comes from debug data
// whenever a program gives it one. The text member is the file name.
class CPCBreakSource : public CPCBreak
{
public:
    // Not planted; the caller sets the other flags.
    CPCBreakSource(std::string file, int32_t line);

    // The file's name without its folder, and the line.
    std::string GetDisplayName() const override;
    std::string GetFileName() const override { return GetText(); }
    bool MatchModule(int32_t operation, uint32_t module) override;
};
