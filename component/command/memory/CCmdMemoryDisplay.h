#pragma once
#include "component/command/memory/CCmdMemory.h"

// "memory_display <address> [<length>] [<mode>]": a hexadecimal dump, 16
// bytes a row, of at most 0x4000 bytes. The session's radix is the same
// afterwards, although the rows are always made in radix 16.
class CCmdMemoryDisplay : public CCmdMemory
{
public:
    struct Args {
        TargetAddress First, Last;
        // A whole number of units.
        uint32_t Bytes;
        int32_t Mode;
    };

    CCmdMemoryDisplay(IQServiceRegistry* host, MemoryChanged memoryChanged);
    static Parsed<Args> Parse(const std::string& text, AddressRange map, const CCmdEvaluator& evaluator);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;

    // The rows of values read from address on.
    static std::string Rows(IQEvaluator2* evaluator, TargetAddress address,
                            const std::vector<uint8_t>& values, int32_t mode);
};
