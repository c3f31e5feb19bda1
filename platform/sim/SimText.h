#pragma once
#include <cstdint>
#include <string>

#include <unicorn/unicorn.h>

// The texts of stop causes, so every address in them looks alike: "0x0800001C".
class SimText
{
public:
    static std::string Hex(uint32_t value);
    static std::string MemoryFault(uc_mem_type type, uint32_t address);
    // number is the Arm translator's exception number (its EXCP_* value).
    static std::string Exception(uint32_t number, uint32_t pc);
};
