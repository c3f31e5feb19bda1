#pragma once
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include <unicorn/unicorn.h>

#include "platform/sim/EngineEvent.h"
#include "platform/sim/InstructionCounter.h"
#include "platform/sim/MappedMemory.h"
#include "platform/sim/SimMemoryMap.h"
#include "platform/sim/SimTypes.h"
#include "platform/sim/SimVariant.h"

// One Unicorn instance with the target's memory map, its hooks, and access for the
// debugger. Owns no thread: Start runs on the caller's thread, and only
// RequestSliceEnd may be called from another thread while Start runs.
class SimEngine
{
public:
    using Output = std::function<void(std::string_view)>;
    // Step and Replay stop after a given count of instructions; Replay re-runs code
    // already seen, so it neither prints nor stops at breakpoints.
    enum class Mode { Run, Step, Replay };

    static std::unique_ptr<SimEngine> Create(const SimVariant& variant, const SimMemoryMap& map,
                                             Output output, std::string& error);
    ~SimEngine();
    SimEngine(const SimEngine&) = delete;
    SimEngine& operator=(const SimEngine&) = delete;

    const SimMemoryMap& Map() const { return map_; }
    uc_engine* Handle() const { return uc_; }
    InstructionCounter& Counter() { return counter_; }

    // Debugger access; see MappedMemory.
    SimResult Read(uint32_t address, size_t size, void* out) const;
    SimResult Write(uint32_t address, size_t size, const void* data);
    uint32_t Register(int id) const;
    void SetRegister(int id, uint32_t value);
    uint32_t Pc() const;
    // Keeps the Thumb bit: the M profile has no other state.
    void SetPc(uint32_t pc);

    void SyncBreakpoints(const std::set<uint32_t>& wanted);
    bool HasBreakpoint(uint32_t address) const { return breakpoints_.count(address) != 0; }

    // Runs from the PC; count limits the instructions (0: no limit).
    uc_err Start(Mode mode, size_t count);
    // Ends a Run-mode Start at the next block it enters, before that block counts:
    // a stop from another thread could land between counting a block and running
    // it, and a request made just before Start begins would be lost. The request
    // stays until taken.
    void RequestSliceEnd() { sliceEnd_.store(true, std::memory_order_release); }
    bool TakeSliceEnd() { return sliceEnd_.exchange(false); }
    const EngineEvent& Event() const { return event_; }
    // The breakpoint at this address lets the next Start pass once.
    void PassBreakpointOnce(uint32_t address);
    // Stops the current Start with a fault.
    void Fail(std::string cause);

private:
    SimEngine(const SimMemoryMap& map, Output output)
        : map_(map), output_(std::move(output)), memory_(uc_, map_)
    {
    }
    bool Open(const SimVariant& variant, std::string& error);
    bool Record(EngineEvent::Kind kind, uint32_t pc, std::string cause);
    uint32_t PrecisePcOr(uint32_t fallback) const;

    static void OnBlock(uc_engine* uc, uint64_t address, uint32_t size, void* self);
    static void OnBreakpoint(uc_engine* uc, uint64_t address, uint32_t size, void* self);
    static bool OnBadMemory(uc_engine* uc, uc_mem_type type, uint64_t address, int size, int64_t value,
                            void* self);
    static void OnInterrupt(uc_engine* uc, uint32_t number, void* self);
    static bool OnInvalidInstruction(uc_engine* uc, void* self);
    void Interrupt(uint32_t number);
    void Semihost(uint32_t pc);

    SimMemoryMap map_;
    Output output_;
    uc_engine* uc_ = nullptr;
    MappedMemory memory_;
    InstructionCounter counter_;
    std::map<uint32_t, uc_hook> breakpoints_;
    EngineEvent event_;
    Mode mode_ = Mode::Run;
    bool countedBlocks_ = false;
    bool passArmed_ = false;
    std::optional<uint32_t> pcAfterStop_;
    std::atomic<bool> sliceEnd_{false};
    uint32_t passAddress_ = 0;
};
