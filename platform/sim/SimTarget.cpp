#include "platform/sim/SimTarget.h"

#include <exception>
#include <utility>

#include "platform/sim/SimEngine.h"
#include "platform/sim/SimExecutor.h"
#include "platform/sim/SimRunner.h"
#include "platform/sim/SimText.h"
#include "platform/sim/SimVariant.h"

namespace
{

constexpr uint32_t kThumbBit = 1u << 24;
constexpr uint32_t kNoReturn = 0xFFFFFFFFu;

std::string KnownVariants()
{
    std::string names;
    for (const SimVariant& variant : SimVariant::All())
        names += (names.empty() ? "" : ", ") + std::string(variant.name);
    return names;
}

SimResult NoRegister(unsigned index)
{
    return SimResult::Fail(0, "No register " + std::to_string(index));
}

} // namespace

std::unique_ptr<SimTarget> SimTarget::Create(Config config, std::string* error)
{
    try {
        return Build(std::move(config), error);
    } catch (const std::exception& e) {
        if (error)
            *error = std::string("Cannot create the target: ") + e.what();
    } catch (...) {
        if (error)
            *error = "Cannot create the target";
    }
    return nullptr;
}

std::unique_ptr<SimTarget> SimTarget::Build(Config config, std::string* error)
{
    auto fail = [error](std::string message) {
        if (error)
            *error = std::move(message);
        return std::unique_ptr<SimTarget>();
    };
    const SimVariant* variant = SimVariant::Find(config.variant);
    if (!variant)
        return fail("Unknown CPU variant '" + config.variant + "' (known: " + KnownVariants() + ")");
    if (!config.map) {
        SimMapParse builtIn = SimMemoryMap::Parse(variant->description);
        if (!builtIn.map)
            return fail("Built-in description of " + std::string(variant->name) + ": " + builtIn.error);
        config.map = std::move(builtIn.map);
    }
    std::string message;
    auto engine = SimEngine::Create(*variant, *config.map, std::move(config.onOutput), message);
    if (!engine)
        return fail(message);
    auto runner =
        SimRunner::Start(std::make_unique<SimExecutor>(std::move(engine)), std::move(config.onStop));
    return std::unique_ptr<SimTarget>(
        new SimTarget(std::string(variant->name), std::move(*config.map), std::move(runner)));
}

SimTarget::SimTarget(std::string variant, SimMemoryMap map, std::shared_ptr<SimRunner> runner)
    : variant_(std::move(variant)), map_(std::move(map)), runner_(std::move(runner))
{
}

SimTarget::~SimTarget()
{
    runner_->Shutdown();
}

SimResult SimTarget::ReadMemory(uint32_t address, size_t size, void* buffer) const
{
    return runner_->WhileHalted(
        [&](SimExecutor& executor) { return executor.Engine().Read(address, size, buffer); });
}

SimResult SimTarget::WriteMemory(uint32_t address, size_t size, const void* data)
{
    return runner_->WhileHalted(
        [&](SimExecutor& executor) { return executor.Engine().Write(address, size, data); });
}

SimResult SimTarget::ReadRegister(unsigned index) const
{
    const int id = SimRegisters::EngineId(index);
    if (id < 0)
        return NoRegister(index);
    return runner_->WhileHalted([&](SimExecutor& executor) {
        SimEngine& engine = executor.Engine();
        return SimResult::Ok(index == kRegPc ? engine.Pc() : engine.Register(id));
    });
}

SimResult SimTarget::WriteRegister(unsigned index, uint32_t value)
{
    const int id = SimRegisters::EngineId(index);
    if (id < 0)
        return NoRegister(index);
    return runner_->WhileHalted([&](SimExecutor& executor) {
        executor.Engine().SetRegister(id, value);
        return SimResult::Ok();
    });
}

SimResult SimTarget::Reset()
{
    uint32_t entry = 0;
    SimResult result = runner_->WhileHalted([&](SimExecutor& executor) {
        SimEngine& engine = executor.Engine();
        const SimRegion* flash = map_.FirstOf(RegionKind::Flash);
        if (!flash)
            return SimResult::Fail(0, "No flash region holds a vector table");
        uint32_t vectors[2] = {};
        if (SimResult read = engine.Read(flash->base, sizeof vectors, vectors); !read)
            return read;
        // The core ignores the low bits of the initial stack pointer.
        const uint32_t sp = vectors[0] & ~3u;
        entry = vectors[1];
        const SimRegion* code = map_.Find(entry & ~1u);
        if (!code || !code->Allows(kAccessExecute))
            return SimResult::Fail(flash->base + 4, "Reset vector " + SimText::Hex(entry) +
                                                        " points outside executable memory");
        if ((entry & 1u) == 0)
            return SimResult::Fail(flash->base + 4,
                                   "Reset vector " + SimText::Hex(entry) + " lacks the Thumb bit");
        // A push writes below the initial SP, so the word under it must be RAM.
        const SimRegion* stack = sp >= 4 ? map_.Find(sp - 4) : nullptr;
        if (!stack || stack->kind == RegionKind::Peripheral || !stack->Allows(kAccessWrite))
            return SimResult::Fail(flash->base, "Initial stack pointer " + SimText::Hex(vectors[0]) +
                                                    " points outside writable memory");
        // CONTROL first: it selects which stack pointer SP names.
        engine.SetRegister(SimRegisters::EngineId(kRegControl), 0);
        for (unsigned i = kRegR0; i <= kRegR12; ++i)
            engine.SetRegister(SimRegisters::EngineId(i), 0);
        for (unsigned i : {kRegPsp, kRegPrimask, kRegBasepri, kRegFaultmask})
            engine.SetRegister(SimRegisters::EngineId(i), 0);
        engine.SetRegister(SimRegisters::EngineId(kRegMsp), sp);
        engine.SetRegister(SimRegisters::EngineId(kRegSp), sp);
        engine.SetRegister(SimRegisters::EngineId(kRegLr), kNoReturn);
        engine.SetRegister(SimRegisters::EngineId(kRegXpsr), kThumbBit);
        engine.SetPc(entry);
        return SimResult::Ok();
    });
    if (result)
        runner_->Report(StopInfo{StopReason::Reset, entry & ~1u, {}, 0});
    return result;
}

SimResult SimTarget::Go()
{
    return runner_->Go();
}

SimResult SimTarget::Halt()
{
    return runner_->Halt();
}

SimResult SimTarget::Step()
{
    return runner_->Step();
}

bool SimTarget::IsRunning() const
{
    return runner_->Running();
}

bool SimTarget::WaitUntilHalted(std::chrono::milliseconds timeout) const
{
    return runner_->WaitUntilHalted(timeout);
}

SimResult SimTarget::AddBreakpoint(uint32_t address)
{
    address &= ~1u;
    const SimRegion* region = map_.Find(address);
    if (!region || !region->Allows(kAccessExecute))
        return SimResult::Fail(address,
                               "Breakpoint at " + SimText::Hex(address) + " is not in executable memory");
    std::lock_guard<std::mutex> lock(breakpointsMutex_);
    breakpoints_.insert(address);
    runner_->Executor().SetBreakpoints(breakpoints_);
    return SimResult::Ok();
}

SimResult SimTarget::RemoveBreakpoint(uint32_t address)
{
    address &= ~1u;
    std::lock_guard<std::mutex> lock(breakpointsMutex_);
    if (breakpoints_.erase(address) == 0)
        return SimResult::Fail(address, "No breakpoint at " + SimText::Hex(address));
    runner_->Executor().SetBreakpoints(breakpoints_);
    return SimResult::Ok();
}

std::vector<uint32_t> SimTarget::Breakpoints() const
{
    std::lock_guard<std::mutex> lock(breakpointsMutex_);
    return {breakpoints_.begin(), breakpoints_.end()};
}

uint64_t SimTarget::InstructionCount() const
{
    return runner_->Executor().Engine().Counter().Total();
}
