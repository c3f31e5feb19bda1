#pragma once
#include "component/command/memory/CCmdMemory.h"

// "memory_display <address> [<length>] [<mode>]": a hexadecimal dump, 16
// bytes a row, of at most 0x4000 bytes. The session's radix is the same
// afterwards, although the rows are always made in radix 16.
class CCmdMemoryDisplay : public CCmdMemory
{
public:
    CCmdMemoryDisplay(IQServiceRegistry* host, MemoryChanged memoryChanged);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;

private:
    std::string Rows(TargetAddress address, const std::vector<uint8_t>& values, int32_t mode) const;
};
