#include "platform/sim/SimText.h"

#include <cstdio>

namespace
{
enum Exception : uint32_t {
    kSupervisorCall = 2,
    kExceptionExit = 8,
    kNoCoprocessor = 17,
    kInvalidState = 18,
    kUnaligned = 22,
};
} // namespace

std::string SimText::Hex(uint32_t value)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", value);
    return text;
}

std::string SimText::MemoryFault(uc_mem_type type, uint32_t address)
{
    switch (type) {
    case UC_MEM_READ_UNMAPPED:
        return "Invalid memory read at " + Hex(address);
    case UC_MEM_WRITE_UNMAPPED:
        return "Invalid memory write at " + Hex(address);
    case UC_MEM_FETCH_UNMAPPED:
        return "Invalid memory fetch at " + Hex(address);
    case UC_MEM_WRITE_PROT:
        return "Write to read-only memory at " + Hex(address);
    case UC_MEM_READ_PROT:
        return "Read from unreadable memory at " + Hex(address);
    case UC_MEM_FETCH_PROT:
        return "Execute from non-executable memory at " + Hex(address);
    default:
        return "Invalid memory access at " + Hex(address);
    }
}

std::string SimText::Exception(uint32_t number, uint32_t pc)
{
    // The simulator models no exception entry, so these stop the target.
    switch (number) {
    case kSupervisorCall:
        return "Unhandled supervisor call at " + Hex(pc);
    case kExceptionExit:
        return "Unhandled exception return at " + Hex(pc);
    case kNoCoprocessor:
        return "Coprocessor disabled at " + Hex(pc);
    case kInvalidState:
        return "Invalid state at " + Hex(pc);
    case kUnaligned:
        return "Unaligned access at " + Hex(pc);
    default:
        return "Unhandled exception " + std::to_string(number) + " at " + Hex(pc);
    }
}
