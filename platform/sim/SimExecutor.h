#pragma once
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <set>

#include "platform/sim/Checkpoint.h"
#include "platform/sim/SimEngine.h"
#include "platform/sim/SimTypes.h"

// How the target runs and steps: in slices that end at Interrupt(), each slice
// starting from a checkpoint; passing a breakpoint the PC sits on; correcting the
// instruction count of a block cut short; and, since a free run does not know the
// exact PC of a faulting load or store, replaying from the last checkpoint with
// every instruction tracked to find it.
//
// Run and Step belong to the simulator thread; Interrupt and SetBreakpoints may be
// called from any thread.
class SimExecutor
{
public:
    explicit SimExecutor(std::unique_ptr<SimEngine> engine);

    SimEngine& Engine() { return *engine_; }

    // Runs until a stop; returns Halted once halt is set and the run interrupted.
    StopInfo Run(const std::atomic<bool>& halt);
    // Executes the instruction at the PC, passing a breakpoint there.
    StopInfo Step();

    // Ends the current slice soon; a run without halt set goes on from there.
    void Interrupt();
    // Takes effect at the start of the next slice.
    void SetBreakpoints(std::set<uint32_t> addresses);

private:
    StopInfo StepOnce();
    uint64_t StepLength(uint32_t pc) const;
    StopInfo Finish(const EngineEvent& event, uc_err err);
    StopInfo LocateFault(const EngineEvent& event);
    void ApplyBreakpoints();
    StopInfo Stopped(StopReason reason, uint32_t pc, std::string cause = {}, int exitCode = 0) const;

    std::unique_ptr<SimEngine> engine_;
    Checkpoint checkpoint_;
    std::mutex mutex_;
    std::optional<std::set<uint32_t>> pendingBreakpoints_;
};
