#pragma once
#include <cstdint>
#include <string>

// Why the engine stopped, as its hooks saw it.
struct EngineEvent {
    enum class Kind { None, Breakpoint, BreakpointInstruction, Fault, MemoryFault, Exit };
    Kind kind = Kind::None;
    uint32_t pc = 0;
    // For memory faults: the address accessed and the Unicorn access type.
    uint32_t address = 0;
    int accessType = 0;
    int exitCode = 0;
    std::string cause;
};
