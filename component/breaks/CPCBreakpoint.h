#pragma once
#include <cstdint>
#include <string>

#include "boundary/TargetAddress.h"

// One breakpoint on its way to or from the session store: the user's wish
// without anything of the platform. Kept only during a save or a load.
class CPCBreakpoint
{
public:
    CPCBreakpoint() = default;
    CPCBreakpoint(int32_t enabled, int32_t line, std::string file, TargetAddress address,
                  std::string ownerText, std::string ownerName)
        : enabled_(enabled), line_(line), file_(std::move(file)), address_(address),
          ownerText_(std::move(ownerText)), ownerName_(std::move(ownerName))
    {
    }
    CPCBreakpoint(const CPCBreakpoint&) = default;
    CPCBreakpoint& operator=(const CPCBreakpoint&) = default;
    virtual ~CPCBreakpoint() = default;

    int32_t GetEnabled() const { return enabled_; }
    void SetEnabled(int32_t enabled) { enabled_ = enabled; }
    int32_t GetLine() const { return line_; }
    void SetLine(int32_t line) { line_ = line; }
    const std::string& GetFile() const { return file_; }
    void SetFile(std::string file) { file_ = std::move(file); }
    TargetAddress GetAddress() const { return address_; }
    void SetAddress(TargetAddress address) { address_ = address; }
    const std::string& GetOwnerText() const { return ownerText_; }
    void SetOwnerText(std::string text) { ownerText_ = std::move(text); }
    const std::string& GetOwnerName() const { return ownerName_; }
    void SetOwnerName(std::string name) { ownerName_ = std::move(name); }

    friend bool operator==(const CPCBreakpoint&, const CPCBreakpoint&) = default;

private:
    int32_t enabled_ = 0;
    int32_t line_ = -1;
    std::string file_;
    TargetAddress address_;
    std::string ownerText_;
    std::string ownerName_;
};
