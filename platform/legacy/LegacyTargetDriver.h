#pragma once
#include <memory>
#include <string>

#include "platform/legacy/LegacyPlatform.h"
#include "platform/simdriver/SimTargetDriverBase.h"

// The target driver of the simulator as a function-name platform: instead of
// the platform memory services it registers the named functions and the
// memory areas. Only one can live at a time (see LegacyPlatform).
class LegacyTargetDriver final : public SimTargetDriverBase
{
public:
    // Empty with a message when the simulator cannot be made or another
    // function-name target is connected.
    static std::unique_ptr<LegacyTargetDriver> Create(IQServiceRegistry* registry, const std::string& variant,
                                                      std::string& error);
    ~LegacyTargetDriver() override;

    LegacyPlatform& Platform() { return *platform_; }

private:
    explicit LegacyTargetDriver(IQServiceRegistry* registry) : SimTargetDriverBase(registry) {}

    std::unique_ptr<LegacyPlatform> platform_;
};
