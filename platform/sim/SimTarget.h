#pragma once
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sim/SimMemoryMap.h"
#include "platform/sim/SimRegisters.h"
#include "platform/sim/SimTypes.h"

class SimRunner;

// One simulated Cortex-M target.
//
// Every call is safe from the owner's thread while the target runs on its own
// simulator thread; none throws. Go and Step return at once, and each is followed
// by exactly one stop report; Halt makes the running Go report StopReason::Halted;
// Reset reports StopReason::Reset. Reports arrive in order through onStop ON THE
// SIMULATOR THREAD, as does semihosting output through onOutput: forward them, and
// don't wait there for the owner's thread. Memory and registers are only accessible
// while the target is halted; while it runs they answer "target running".
//
// What the engine cannot do: it models no exceptions or interrupts, so SVC, an
// exception return and the like stop the target with a fault, and WFI carries on
// at once. It cannot stop inside an IT block: a step from an IT instruction runs
// the whole block, and a breakpoint inside one stops where the engine can next stop.
class SimTarget
{
public:
    using StopCallback = std::function<void(const StopInfo&)>;
    using OutputCallback = std::function<void(std::string_view)>;

    struct Config {
        // "cortex-m3" or "cortex-m4"; see SimVariant.
        std::string variant = "cortex-m3";
        // Empty: the variant's built-in description.
        std::optional<SimMemoryMap> map;
        StopCallback onStop;
        OutputCallback onOutput;
    };

    // Empty with *error set when the variant is unknown or the map cannot be built.
    static std::unique_ptr<SimTarget> Create(Config config, std::string* error = nullptr);
    // Stops a run and joins the simulator thread.
    ~SimTarget();
    SimTarget(const SimTarget&) = delete;
    SimTarget& operator=(const SimTarget&) = delete;

    const std::string& Variant() const { return variant_; }
    const SimMemoryMap& Map() const { return map_; }

    // Any mapped byte, flash included (that is how code is downloaded); peripherals
    // read as zero. On failure, address is the first byte that is not mapped.
    SimResult ReadMemory(uint32_t address, size_t size, void* buffer) const;
    SimResult WriteMemory(uint32_t address, size_t size, const void* data);

    // Indexes as in SimRegister: 0 pc, 1..13 r0..r12, 14 sp, 15 lr, 16 xpsr, then
    // msp, psp, primask, basepri, faultmask, control. A read's value is in .value.
    // The PC and xPSR keep the Thumb bit whatever is written.
    SimResult ReadRegister(unsigned index) const;
    SimResult WriteRegister(unsigned index, uint32_t value);
    static unsigned RegisterCount() { return SimRegisters::Count(); }
    static std::string_view RegisterName(unsigned index) { return SimRegisters::Name(index); }

    // Loads SP and PC from the vector table at the start of the lowest flash region
    // and clears the other registers (LR reads 0xFFFFFFFF, as on the hardware; xPSR
    // holds only the Thumb bit). Fails, changing nothing, when the table points
    // outside the map. The count of executed instructions is kept.
    SimResult Reset();

    // A fault or a breakpoint instruction leaves the PC on the instruction, and an
    // exit on its call, so going again meets them again.
    SimResult Go();
    // Returns at once; the run stops at its next block of code and reports Halted.
    SimResult Halt();
    // Asynchronous: executes one instruction on the simulator thread and reports
    // StepDone, or the fault, exit or breakpoint instruction it met.
    SimResult Step();
    bool IsRunning() const;
    // True once the target is halted (its report may still be on its way).
    bool WaitUntilHalted(std::chrono::milliseconds timeout) const;

    // Address of an instruction in executable memory (the Thumb bit is ignored). Set
    // while running, a breakpoint takes effect at the run's next block of code.
    // Going from a breakpoint executes the instruction there instead of stopping
    // again; breakpoints cost nothing where none is set.
    SimResult AddBreakpoint(uint32_t address);
    SimResult RemoveBreakpoint(uint32_t address);
    std::vector<uint32_t> Breakpoints() const;

    // Instructions executed since the target was created; exact whenever it is
    // stopped, and close while it runs.
    uint64_t InstructionCount() const;

private:
    SimTarget(std::string variant, SimMemoryMap map, std::shared_ptr<SimRunner> runner);
    static std::unique_ptr<SimTarget> Build(Config config, std::string* error);

    std::string variant_;
    SimMemoryMap map_;
    std::shared_ptr<SimRunner> runner_;
    mutable std::mutex breakpointsMutex_;
    std::set<uint32_t> breakpoints_;
};
