#pragma once
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "platform/sim/SimTarget.h"
#include "support/FirmwareProgram.h"

// A target booted into one of the test programs, collecting what it reports on
// its simulator thread for the test to wait on.
class SimHarness
{
public:
    static constexpr std::chrono::seconds kTimeout{20};

    // Creates the target, downloads the program and resets; false (with a reason in
    // Error()) if any of that fails.
    bool Boot(const std::string& program, const std::string& variant = "cortex-m3");
    // Downloads a test program into a target and resets it.
    static bool Download(SimTarget& target, const std::string& program, std::string* error = nullptr);

    SimTarget& Target() { return *target_; }
    const FirmwareProgram& Program() const { return *firmware_; }
    uint32_t Symbol(const char* name) const { return firmware_->Symbol(name); }
    const std::string& Error() const { return error_; }

    // The oldest report not yet taken, waiting for it if need be.
    std::optional<StopInfo> Next(std::chrono::milliseconds timeout = kTimeout);
    bool WaitForOutput(const std::string& text, std::chrono::milliseconds timeout = kTimeout);
    std::string Output() const;

    // Go and wait for the stop; empty if none came in time.
    std::optional<StopInfo> Run();
    std::optional<StopInfo> StepOnce();
    // Goes, waits until the count program has announced its loop, halts and
    // answers the halt's report.
    std::optional<StopInfo> RunAWhile();
    // Runs to a labelled instruction through a breakpoint, which is then removed.
    bool RunTo(const char* label);
    uint32_t Reg(unsigned index) const { return target_->ReadRegister(index).value; }
    uint32_t Word(uint32_t address) const;
    bool SetWord(uint32_t address, uint32_t value) { return target_->WriteMemory(address, 4, &value).ok; }

    void Destroy() { target_.reset(); }

private:
    // Declared first so they outlive the target whose callbacks point at them.
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<StopInfo> stops_;
    std::string output_;
    std::optional<FirmwareProgram> firmware_;
    std::unique_ptr<SimTarget> target_;
    std::string error_;
};
