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
    config.onStop = recorder_.StopCallback();
    config.onOutput = recorder_.OutputCallback();
    target_ = SimTarget::Create(std::move(config), &error_);
    if (!target_)
        return false;
    const auto& image = firmware_->Image();
    if (SimResult r = target_->WriteMemory(FirmwareProgram::kFlashBase, image.size(), image.data()); !r) {
        error_ = r.cause;
        return false;
    }
    if (SimResult r = target_->Reset(); !r) {
        error_ = r.cause;
        return false;
    }
    auto reset = recorder_.Next();
    if (!reset || reset->reason != StopReason::Reset) {
        error_ = "no reset report";
        return false;
    }
    return true;
}

std::optional<StopInfo> SimHarness::Run()
{
    if (!target_->Go())
        return std::nullopt;
    return recorder_.Next();
}

std::optional<StopInfo> SimHarness::StepOnce()
{
    if (!target_->Step())
        return std::nullopt;
    return recorder_.Next();
}

uint32_t SimHarness::Reg(unsigned index) const
{
    return target_->ReadRegister(index).value;
}

uint32_t SimHarness::Word(uint32_t address) const
{
    uint32_t value = 0;
    target_->ReadMemory(address, sizeof value, &value);
    return value;
}

bool SimHarness::SetWord(uint32_t address, uint32_t value)
{
    return target_->WriteMemory(address, sizeof value, &value).ok;
}
