#include "support/SimHarness.h"

bool SimHarness::Boot(const std::string& program, const std::string& variant)
{
    firmware_ = FirmwareProgram::Load(program);
    if (!firmware_) {
        error_ = "no firmware " + program;
        return false;
    }
    SimTarget::Config config;
    config.variant = variant;
    config.onStop = [this](const StopInfo& info) {
        std::lock_guard<std::mutex> lock(mutex_);
        stops_.push_back(info);
        changed_.notify_all();
    };
    config.onOutput = [this](std::string_view text) {
        std::lock_guard<std::mutex> lock(mutex_);
        output_ += text;
        changed_.notify_all();
    };
    target_ = SimTarget::Create(std::move(config), &error_);
    if (!target_ || !Download(*target_, program, &error_))
        return false;
    auto reset = Next();
    if (!reset || reset->reason != StopReason::Reset) {
        error_ = "no reset report";
        return false;
    }
    return true;
}

bool SimHarness::Download(SimTarget& target, const std::string& program, std::string* error)
{
    auto firmware = FirmwareProgram::Load(program);
    SimResult r = !firmware ? SimResult::Fail(0, "no firmware " + program)
                            : target.WriteMemory(FirmwareProgram::kFlashBase, firmware->Image().size(),
                                                 firmware->Image().data());
    if (r)
        r = target.Reset();
    if (!r && error)
        *error = r.cause;
    return r.ok;
}

std::optional<StopInfo> SimHarness::Next(std::chrono::milliseconds timeout)
{
    std::unique_lock<std::mutex> lock(mutex_);
    if (!changed_.wait_for(lock, timeout, [this] { return !stops_.empty(); }))
        return std::nullopt;
    StopInfo info = stops_.front();
    stops_.pop_front();
    return info;
}

bool SimHarness::WaitForOutput(const std::string& text, std::chrono::milliseconds timeout)
{
    std::unique_lock<std::mutex> lock(mutex_);
    return changed_.wait_for(lock, timeout, [&] { return output_.find(text) != std::string::npos; });
}

std::string SimHarness::Output() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return output_;
}

std::optional<StopInfo> SimHarness::Run()
{
    return target_->Go() ? Next() : std::nullopt;
}

std::optional<StopInfo> SimHarness::StepOnce()
{
    return target_->Step() ? Next() : std::nullopt;
}

std::optional<StopInfo> SimHarness::RunAWhile()
{
    if (!target_->Go() || !WaitForOutput("+") || !target_->Halt())
        return std::nullopt;
    return Next();
}

bool SimHarness::RunTo(const char* label)
{
    const uint32_t address = Symbol(label);
    if (address == 0 || !target_->AddBreakpoint(address))
        return false;
    auto stop = Run();
    return stop && stop->reason == StopReason::Breakpoint && stop->pc == address &&
           target_->RemoveBreakpoint(address);
}

uint32_t SimHarness::Word(uint32_t address) const
{
    uint32_t value = 0;
    target_->ReadMemory(address, sizeof value, &value);
    return value;
}
