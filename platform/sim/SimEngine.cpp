#include "platform/sim/SimEngine.h"

#include <cstdio>

#include "platform/sim/Semihosting.h"
#include "platform/sim/SimText.h"

namespace
{

// An odd address is never a Thumb PC, so the run never ends at an "until" address.
constexpr uint64_t kNoExit = 0xFFFFFFFFu;
constexpr uint32_t kThumbBit = 1u << 24;

// The Arm translator's exception numbers (its EXCP_* values) handled here.
constexpr uint32_t kSupervisorCall = 2;
constexpr uint32_t kBkpt = 7;

uint32_t Permissions(uint8_t access)
{
    return ((access & kAccessRead) ? UC_PROT_READ : 0) | ((access & kAccessWrite) ? UC_PROT_WRITE : 0) |
           ((access & kAccessExecute) ? UC_PROT_EXEC : 0);
}

uint64_t ReadsZero(uc_engine*, uint64_t, unsigned, void*)
{
    return 0;
}

void DropsWrite(uc_engine*, uint64_t, unsigned, uint64_t, void*) {}

SimEngine* Self(void* self)
{
    return static_cast<SimEngine*>(self);
}

// Nothing may unwind through Unicorn's C frames: whatever a hook throws (an owner's
// output callback, or memory running out) stops the target instead.
template <typename Body> void Contained(SimEngine& engine, Body body)
{
    try {
        body();
    } catch (...) {
        engine.Fail("Simulator error while handling the target");
    }
}

} // namespace

std::unique_ptr<SimEngine> SimEngine::Create(const SimVariant& variant, const SimMemoryMap& map,
                                             Output output, std::string& error)
{
    std::unique_ptr<SimEngine> engine(new SimEngine(map, std::move(output)));
    if (!engine->Open(variant, error))
        return nullptr;
    return engine;
}

SimEngine::~SimEngine()
{
    if (uc_)
        uc_close(uc_);
}

bool SimEngine::Open(const SimVariant& variant, std::string& error)
{
    auto fail = [&](const std::string& what, uc_err err) {
        error = what + ": " + uc_strerror(err);
        return false;
    };
    if (uc_err err = uc_open(UC_ARCH_ARM, static_cast<uc_mode>(UC_MODE_THUMB | UC_MODE_MCLASS), &uc_))
        return fail("Cannot start the simulator", err);
    if (uc_err err = uc_ctl_set_cpu_model(uc_, variant.cpuModel))
        return fail("Cannot select CPU " + std::string(variant.name), err);
    for (const SimRegion& region : map_.Regions()) {
        const uc_err err =
            region.kind == RegionKind::Peripheral
                ? uc_mmio_map(uc_, region.base, region.size, ReadsZero, nullptr, DropsWrite, nullptr)
                : uc_mem_map(uc_, region.base, region.size, Permissions(region.access));
        if (err)
            return fail("Cannot map region '" + region.name + "'", err);
    }
    uc_hook hook;
    const struct {
        int type;
        void* callback;
    } hooks[] = {
        {UC_HOOK_BLOCK, reinterpret_cast<void*>(&SimEngine::OnBlock)},
        {UC_HOOK_MEM_INVALID, reinterpret_cast<void*>(&SimEngine::OnBadMemory)},
        {UC_HOOK_INTR, reinterpret_cast<void*>(&SimEngine::OnInterrupt)},
        {UC_HOOK_INSN_INVALID, reinterpret_cast<void*>(&SimEngine::OnInvalidInstruction)},
    };
    for (const auto& h : hooks)
        if (uc_err err = uc_hook_add(uc_, &hook, h.type, h.callback, this, 1, 0))
            return fail("Cannot hook the simulator", err);
    return true;
}

SimResult SimEngine::Read(uint32_t address, size_t size, void* out) const
{
    return memory_.Read(address, size, out);
}

SimResult SimEngine::Write(uint32_t address, size_t size, const void* data)
{
    bool codeChanged = false;
    SimResult result = memory_.Write(address, size, data, &codeChanged);
    if (codeChanged)
        counter_.Forget();
    return result;
}

uint32_t SimEngine::Register(int id) const
{
    uint32_t value = 0;
    uc_reg_read(uc_, id, &value);
    return value;
}

void SimEngine::SetRegister(int id, uint32_t value)
{
    if (id == UC_ARM_REG_PC)
        return SetPc(value);
    if (id == UC_ARM_REG_XPSR)
        value |= kThumbBit;
    uc_reg_write(uc_, id, &value);
}

uint32_t SimEngine::Pc() const
{
    return Register(UC_ARM_REG_PC) & ~1u;
}

void SimEngine::SetPc(uint32_t pc)
{
    uint32_t value = pc | 1u;
    uc_reg_write(uc_, UC_ARM_REG_PC, &value);
}

void SimEngine::SyncBreakpoints(const std::set<uint32_t>& wanted)
{
    for (auto it = breakpoints_.begin(); it != breakpoints_.end();) {
        if (wanted.count(it->first) != 0) {
            ++it;
            continue;
        }
        uc_hook_del(uc_, it->second);
        uc_ctl_remove_cache(uc_, it->first, it->first + 4);
        it = breakpoints_.erase(it);
    }
    for (uint32_t address : wanted) {
        if (breakpoints_.count(address) != 0)
            continue;
        uc_hook hook;
        // One hook per address: code elsewhere is translated without any callback.
        if (uc_hook_add(uc_, &hook, UC_HOOK_CODE, reinterpret_cast<void*>(&SimEngine::OnBreakpoint), this,
                        address, address) != UC_ERR_OK)
            continue;
        // Blocks translated before the hook existed would never call it.
        uc_ctl_remove_cache(uc_, address, address + 4);
        breakpoints_.emplace(address, hook);
    }
}

void SimEngine::PassBreakpointOnce(uint32_t address)
{
    passArmed_ = true;
    passAddress_ = address;
}

uc_err SimEngine::Start(Mode mode, size_t count)
{
    mode_ = mode;
    event_ = EngineEvent{};
    // Unicorn counts with a hook on every instruction, compiled only into blocks
    // translated while it exists; switching between counted and free runs must
    // therefore start from fresh translations.
    const bool counted = count > 0;
    if (counted != countedBlocks_) {
        uc_ctl_flush_tlb(uc_);
        countedBlocks_ = counted;
    }
    const uc_err err = uc_emu_start(uc_, Pc() | 1u, kNoExit, 0, count);
    mode_ = Mode::Run;
    passArmed_ = false;
    if (pcAfterStop_) {
        SetPc(*pcAfterStop_);
        pcAfterStop_.reset();
    }
    return err;
}

bool SimEngine::Record(EngineEvent::Kind kind, uint32_t pc, std::string cause)
{
    // The first reason wins: a later one is a consequence of stopping.
    if (event_.kind != EngineEvent::Kind::None)
        return false;
    event_.kind = kind;
    event_.pc = pc;
    event_.cause = std::move(cause);
    return true;
}

uint32_t SimEngine::PrecisePcOr(uint32_t fallback) const
{
    // Free runs leave the PC at the last point the translator synchronised it; with
    // an instruction count every instruction synchronises it.
    return mode_ == Mode::Run ? fallback : Pc();
}

void SimEngine::Fail(std::string cause)
{
    Record(EngineEvent::Kind::Fault, Pc(), std::move(cause));
    uc_emu_stop(uc_);
}

void SimEngine::OnBlock(uc_engine* uc, uint64_t address, uint32_t size, void* self)
{
    SimEngine& e = *Self(self);
    // The engine checks for a stop right after this hook, so the block neither
    // runs nor counts.
    if (e.mode_ == Mode::Run && e.sliceEnd_.load(std::memory_order_relaxed)) {
        uc_emu_stop(uc);
        return;
    }
    Contained(e, [&] { e.counter_.OnBlock(uc, static_cast<uint32_t>(address), size); });
}

void SimEngine::OnBreakpoint(uc_engine* uc, uint64_t address, uint32_t, void* self)
{
    SimEngine& e = *Self(self);
    if (e.mode_ == Mode::Replay)
        return;
    if (e.passArmed_ && address == e.passAddress_) {
        e.passArmed_ = false;
        return;
    }
    if (e.mode_ == Mode::Step)
        return;
    Contained(e, [&] { e.Record(EngineEvent::Kind::Breakpoint, static_cast<uint32_t>(address), {}); });
    uc_emu_stop(uc);
}

bool SimEngine::OnBadMemory(uc_engine*, uc_mem_type type, uint64_t address, int, int64_t, void* self)
{
    SimEngine& e = *Self(self);
    const auto at = static_cast<uint32_t>(address);
    Contained(e, [&] {
        if (type == UC_MEM_FETCH_UNMAPPED || type == UC_MEM_FETCH_PROT) {
            e.Record(EngineEvent::Kind::Fault, at, SimText::MemoryFault(type, at));
        } else if (e.Record(EngineEvent::Kind::MemoryFault, e.PrecisePcOr(e.counter_.LastBlock()),
                            SimText::MemoryFault(type, at))) {
            e.event_.address = at;
            e.event_.accessType = type;
        }
    });
    return false;
}

void SimEngine::OnInterrupt(uc_engine*, uint32_t number, void* self)
{
    SimEngine& e = *Self(self);
    Contained(e, [&] { e.Interrupt(number); });
}

void SimEngine::Interrupt(uint32_t number)
{
    uint32_t pc = Pc();
    if (number == kSupervisorCall) {
        // Raised with the PC past the call; leave it on the call, like any other
        // instruction the target cannot carry out. Not here: writing the PC inside
        // a hook makes the engine carry on from there.
        pc -= 2;
        pcAfterStop_ = pc;
    }
    if (number == kBkpt) {
        uint8_t code[2] = {};
        Read(pc, sizeof code, code);
        if (code[1] == 0xBE && code[0] == Semihosting::kBkptImmediate)
            return Semihost(pc);
        char text[64];
        std::snprintf(text, sizeof text, "Breakpoint instruction 0x%02X at %s", code[0],
                      SimText::Hex(pc).c_str());
        Record(EngineEvent::Kind::BreakpointInstruction, pc, text);
    } else {
        Record(EngineEvent::Kind::Fault, pc, SimText::Exception(number, pc));
    }
    uc_emu_stop(uc_);
}

void SimEngine::Semihost(uint32_t pc)
{
    auto read = [this](uint32_t address, size_t size, void* out) { return Read(address, size, out); };
    const Semihosting::Result result =
        Semihosting::Handle(Register(UC_ARM_REG_R0), Register(UC_ARM_REG_R1), read);
    switch (result.action) {
    case Semihosting::Action::Continue:
        if (result.setR0)
            SetRegister(UC_ARM_REG_R0, result.r0);
        if (!result.output.empty() && output_ && mode_ != Mode::Replay) {
            // A failing output window must not stop the firmware.
            try {
                output_(result.output);
            } catch (...) {
            }
        }
        // Writing the PC makes the engine carry on from there rather than stop.
        SetPc(pc + 2);
        return;
    case Semihosting::Action::Exit:
        if (Record(EngineEvent::Kind::Exit, pc, {}))
            event_.exitCode = result.exitCode;
        break;
    case Semihosting::Action::Fault:
        Record(EngineEvent::Kind::Fault, pc, "Invalid memory read at " + SimText::Hex(result.faultAddress));
        break;
    }
    uc_emu_stop(uc_);
}

bool SimEngine::OnInvalidInstruction(uc_engine*, void* self)
{
    SimEngine& e = *Self(self);
    Contained(e, [&] {
        const uint32_t pc = e.Pc();
        e.Record(EngineEvent::Kind::Fault, pc, "Undefined instruction at " + SimText::Hex(pc));
    });
    return false;
}
