#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/sim/SimTarget.h"
#include "support/FirmwareProgram.h"
#include "support/StopRecorder.h"

// A target with a recorder, booted into one of the test programs.
class SimHarness
{
public:
    // Creates the target, downloads the program and resets; false (with a reason in
    // Error()) if any of that fails.
    bool Boot(const std::string& program, const std::string& variant = "cortex-m3");

    SimTarget& Target() { return *target_; }
    StopRecorder& Recorder() { return recorder_; }
    const FirmwareProgram& Program() const { return *firmware_; }
    uint32_t Symbol(const char* name) const { return firmware_->Symbol(name); }
    const std::string& Error() const { return error_; }

    // Go and wait for the stop; empty if none came in time.
    std::optional<StopInfo> Run();
    std::optional<StopInfo> StepOnce();
    uint32_t Reg(unsigned index) const;
    uint32_t Word(uint32_t address) const;
    bool SetWord(uint32_t address, uint32_t value);

    void Destroy() { target_.reset(); }

private:
    // Declared first so it outlives the target whose callbacks point at it.
    StopRecorder recorder_;
    std::optional<FirmwareProgram> firmware_;
    std::unique_ptr<SimTarget> target_;
    std::string error_;
};
