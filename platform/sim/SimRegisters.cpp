#include "platform/sim/SimRegisters.h"

#include <unicorn/unicorn.h>

namespace
{

struct Entry {
    std::string_view name;
    int id;
};

constexpr Entry kTable[kRegisterCount] = {
    {"pc", UC_ARM_REG_PC},           {"r0", UC_ARM_REG_R0},
    {"r1", UC_ARM_REG_R1},           {"r2", UC_ARM_REG_R2},
    {"r3", UC_ARM_REG_R3},           {"r4", UC_ARM_REG_R4},
    {"r5", UC_ARM_REG_R5},           {"r6", UC_ARM_REG_R6},
    {"r7", UC_ARM_REG_R7},           {"r8", UC_ARM_REG_R8},
    {"r9", UC_ARM_REG_R9},           {"r10", UC_ARM_REG_R10},
    {"r11", UC_ARM_REG_R11},         {"r12", UC_ARM_REG_R12},
    {"sp", UC_ARM_REG_SP},           {"lr", UC_ARM_REG_LR},
    {"xpsr", UC_ARM_REG_XPSR},       {"msp", UC_ARM_REG_MSP},
    {"psp", UC_ARM_REG_PSP},         {"primask", UC_ARM_REG_PRIMASK},
    {"basepri", UC_ARM_REG_BASEPRI}, {"faultmask", UC_ARM_REG_FAULTMASK},
    {"control", UC_ARM_REG_CONTROL},
};

} // namespace

std::string_view SimRegisters::Name(unsigned index)
{
    return index < kRegisterCount ? kTable[index].name : std::string_view{};
}

std::optional<unsigned> SimRegisters::Find(std::string_view name)
{
    for (unsigned i = 0; i < kRegisterCount; ++i)
        if (kTable[i].name == name)
            return i;
    return std::nullopt;
}

int SimRegisters::EngineId(unsigned index)
{
    return index < kRegisterCount ? kTable[index].id : -1;
}
