#include "platform/sim/SimExecutor.h"

#include <utility>

namespace
{
// Instructions a replay may run beyond the count first seen, which can overstate the
// faulting block by its unexecuted tail.
constexpr uint64_t kReplaySlack = 4096;
} // namespace

SimExecutor::SimExecutor(std::unique_ptr<SimEngine> engine)
    : engine_(std::move(engine)), checkpoint_(*engine_)
{
}

void SimExecutor::Interrupt()
{
    engine_->RequestSliceEnd();
}

void SimExecutor::SetBreakpoints(std::set<uint32_t> addresses)
{
    {
        std::lock_guard<std::mutex> lock(mutex_);
        pendingBreakpoints_ = std::move(addresses);
    }
    Interrupt();
}

void SimExecutor::ApplyBreakpoints()
{
    std::optional<std::set<uint32_t>> wanted;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        wanted.swap(pendingBreakpoints_);
    }
    if (wanted)
        engine_->SyncBreakpoints(*wanted);
}

StopInfo SimExecutor::Stopped(StopReason reason, uint32_t pc, std::string cause, int exitCode) const
{
    return StopInfo{reason, pc, std::move(cause), exitCode};
}

StopInfo SimExecutor::Run(const std::atomic<bool>& halt)
{
    ApplyBreakpoints();
    if (halt)
        return Stopped(StopReason::Halted, engine_->Pc());
    if (engine_->HasBreakpoint(engine_->Pc())) {
        StopInfo passed = StepOnce();
        if (passed.reason != StopReason::StepDone)
            return passed;
    }
    checkpoint_.Take();
    for (;;) {
        engine_->TakeSliceEnd();
        ApplyBreakpoints();
        if (halt)
            return Stopped(StopReason::Halted, engine_->Pc());
        const uc_err err = engine_->Start(SimEngine::Mode::Run, 0);
        const EngineEvent& event = engine_->Event();
        // A slice ended by Interrupt, or by WFI, which has no interrupt to wait for.
        if (event.kind == EngineEvent::Kind::None && err == UC_ERR_OK) {
            checkpoint_.Take();
            continue;
        }
        return Finish(event, err);
    }
}

StopInfo SimExecutor::Finish(const EngineEvent& event, uc_err err)
{
    InstructionCounter& counter = engine_->Counter();
    uc_engine* uc = engine_->Handle();
    switch (event.kind) {
    case EngineEvent::Kind::None:
        return Stopped(StopReason::Fault, engine_->Pc(), uc_strerror(err));
    case EngineEvent::Kind::Breakpoint: {
        // Inside an IT block the engine only stops once the block is done, so the
        // PC may have moved past the breakpoint.
        const uint32_t pc = engine_->Pc();
        counter.Uncount(uc, pc);
        return Stopped(StopReason::Breakpoint, pc);
    }
    case EngineEvent::Kind::BreakpointInstruction:
        counter.Uncount(uc, event.pc);
        return Stopped(StopReason::BreakpointInstruction, event.pc, event.cause);
    case EngineEvent::Kind::Fault:
        counter.Uncount(uc, event.pc);
        return Stopped(StopReason::Fault, event.pc, event.cause);
    case EngineEvent::Kind::Exit:
        // The exit call itself ran.
        counter.Uncount(uc, event.pc + 2);
        return Stopped(StopReason::Exit, event.pc, {}, event.exitCode);
    case EngineEvent::Kind::MemoryFault:
        return LocateFault(event);
    }
    return Stopped(StopReason::Fault, engine_->Pc(), uc_strerror(err));
}

StopInfo SimExecutor::LocateFault(const EngineEvent& event)
{
    InstructionCounter& counter = engine_->Counter();
    Checkpoint atFault(*engine_);
    atFault.Take();
    const uint64_t seen = counter.Total();
    if (checkpoint_.Restore()) {
        const uint64_t budget = seen - checkpoint_.Count() + kReplaySlack;
        engine_->Start(SimEngine::Mode::Replay, budget);
        const EngineEvent& again = engine_->Event();
        if (again.kind == EngineEvent::Kind::MemoryFault && again.address == event.address &&
            again.accessType == event.accessType) {
            counter.Uncount(engine_->Handle(), again.pc);
            return Stopped(StopReason::Fault, again.pc, again.cause);
        }
    }
    // The replay went elsewhere: keep the state as the fault left it, with the start
    // of the faulting block as the closest known PC.
    atFault.Restore();
    engine_->SetPc(event.pc);
    return Stopped(StopReason::Fault, event.pc, event.cause);
}

StopInfo SimExecutor::Step()
{
    ApplyBreakpoints();
    return StepOnce();
}

uint64_t SimExecutor::StepLength(uint32_t pc) const
{
    // The engine cannot stop inside an IT block, so a step from an IT instruction
    // runs the whole block.
    uint16_t code = 0;
    if (!engine_->Read(pc, sizeof code, &code) || (code & 0xFF00) != 0xBF00 || (code & 0x000F) == 0)
        return 1;
    unsigned trailingZeros = 0;
    while (((code >> trailingZeros) & 1u) == 0)
        ++trailingZeros;
    return 1 + (4 - trailingZeros);
}

StopInfo SimExecutor::StepOnce()
{
    InstructionCounter& counter = engine_->Counter();
    const uint32_t start = engine_->Pc();
    const uint64_t length = StepLength(start);
    engine_->PassBreakpointOnce(start);
    counter.SetEnabled(false);
    const uc_err err = engine_->Start(SimEngine::Mode::Step, 1);
    counter.SetEnabled(true);
    const EngineEvent& event = engine_->Event();
    switch (event.kind) {
    case EngineEvent::Kind::None:
        if (err != UC_ERR_OK)
            return Stopped(StopReason::Fault, engine_->Pc(), uc_strerror(err));
        counter.Add(length);
        return Stopped(StopReason::StepDone, engine_->Pc());
    case EngineEvent::Kind::Exit:
        counter.Add(1);
        return Stopped(StopReason::Exit, event.pc, {}, event.exitCode);
    case EngineEvent::Kind::BreakpointInstruction:
        return Stopped(StopReason::BreakpointInstruction, event.pc, event.cause);
    case EngineEvent::Kind::Breakpoint:
    case EngineEvent::Kind::Fault:
    case EngineEvent::Kind::MemoryFault:
        break;
    }
    // A fault elsewhere than the stepped instruction (a branch into unmapped
    // memory) comes after that instruction ran.
    if (event.pc != start)
        counter.Add(1);
    return Stopped(StopReason::Fault, event.pc, event.cause);
}
