#pragma once
#include <memory>
#include <string>

#include "platform/simdriver/SimPlatformMemory.h"
#include "platform/simdriver/SimTargetDriverBase.h"

// The target driver of the simulator as a rich platform: its memory is the
// platform memory service in its first, second, third and fifth generations.
// The fourth, long operations under the platform's own progress display, is
// not offered: the simulator answers every range at once.
class SimTargetDriver final : public SimTargetDriverBase
{
public:
    // Empty with a message when the simulator cannot be made.
    static std::unique_ptr<SimTargetDriver> Create(IQServiceRegistry* registry, const std::string& variant,
                                                   std::string& error);
    ~SimTargetDriver() override;

    SimPlatformMemory& Memory() { return *memory_; }

private:
    explicit SimTargetDriver(IQServiceRegistry* registry) : SimTargetDriverBase(registry) {}

    std::unique_ptr<SimPlatformMemory> memory_;
};
