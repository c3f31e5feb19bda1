#pragma once
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <string>

#include "platform/sim/SimTarget.h"

// Collects what a target reports on its simulator thread, for a test to wait on.
class StopRecorder
{
public:
    static constexpr std::chrono::seconds kTimeout{20};

    SimTarget::StopCallback StopCallback();
    SimTarget::OutputCallback OutputCallback();

    // The oldest report not yet taken, waiting for it if need be.
    std::optional<StopInfo> Next(std::chrono::milliseconds timeout = kTimeout);
    bool WaitForOutput(const std::string& text, std::chrono::milliseconds timeout = kTimeout);
    std::string Output() const;
    size_t Pending() const;

private:
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<StopInfo> stops_;
    std::string output_;
};
