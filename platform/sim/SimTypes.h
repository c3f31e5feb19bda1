#pragma once
#include <cstdint>
#include <string>
#include <utility>

enum class StopReason {
    Halted,                // Halt() was called
    Breakpoint,            // a breakpoint set with AddBreakpoint
    BreakpointInstruction, // a BKPT in the firmware other than a semihosting call
    StepDone,              // Step() executed its instruction
    Fault,                 // bad memory access, undefined instruction, unsupported exception
    Exit,                  // the firmware asked to exit through semihosting
    Reset,                 // Reset() loaded the vector table
};

inline const char* StopReasonName(StopReason reason)
{
    switch (reason) {
    case StopReason::Halted:
        return "halted";
    case StopReason::Breakpoint:
        return "breakpoint";
    case StopReason::BreakpointInstruction:
        return "breakpoint instruction";
    case StopReason::StepDone:
        return "step done";
    case StopReason::Fault:
        return "fault";
    case StopReason::Exit:
        return "exit";
    case StopReason::Reset:
        return "reset";
    }
    return "?";
}

struct StopInfo {
    StopReason reason = StopReason::Halted;
    uint32_t pc = 0;
    // Set for faults and breakpoint instructions, e.g. "Invalid memory read at 0x30000000".
    std::string cause;
    // Set for StopReason::Exit.
    int exitCode = 0;
};

// The outcome of a debugger request: ok, or the failing address and why.
struct SimResult {
    bool ok = true;
    uint32_t address = 0;
    // A register read's value.
    uint32_t value = 0;
    std::string cause;

    explicit operator bool() const { return ok; }
    static SimResult Ok(uint32_t value = 0) { return SimResult{true, 0, value, {}}; }
    static SimResult Fail(uint32_t address, std::string cause)
    {
        return SimResult{false, address, 0, std::move(cause)};
    }
};
