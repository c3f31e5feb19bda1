#include "platform/sim/SimVariant.h"

#include <unicorn/unicorn.h>

namespace
{

// RAM is executable because firmware commonly runs code from SRAM. The system
// window covers the core's private registers (SysTick, NVIC, SCB), which firmware
// touches during start-up even though the simulator models no devices there.
constexpr std::string_view kCortexM3 = R"(# Cortex-M3: 1 MiB flash, 128 KiB SRAM
flash      0x08000000 0x00100000 rx  flash
ram        0x20000000 0x00020000 rwx sram
peripheral 0x40000000 0x20000000 rw  peripherals
peripheral 0xE0000000 0x00100000 rw  system
)";

constexpr std::string_view kCortexM4 = R"(# Cortex-M4: 1 MiB flash, 192 KiB SRAM
flash      0x08000000 0x00100000 rx  flash
ram        0x20000000 0x00030000 rwx sram
peripheral 0x40000000 0x20000000 rw  peripherals
peripheral 0xE0000000 0x00100000 rw  system
)";

} // namespace

const std::vector<SimVariant>& SimVariant::All()
{
    static const std::vector<SimVariant> variants{
        {"cortex-m3", UC_CPU_ARM_CORTEX_M3, kCortexM3},
        {"cortex-m4", UC_CPU_ARM_CORTEX_M4, kCortexM4},
    };
    return variants;
}

const SimVariant* SimVariant::Find(std::string_view name)
{
    for (const SimVariant& variant : All())
        if (variant.name == name)
            return &variant;
    return nullptr;
}
