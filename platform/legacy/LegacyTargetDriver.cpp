#include "platform/legacy/LegacyTargetDriver.h"

#include "boundary/Ids.h"

namespace
{

const char kOnlyOne[] = "Only one function-name target can be connected at a time";

} // namespace

std::unique_ptr<LegacyTargetDriver> LegacyTargetDriver::Create(IQServiceRegistry* registry,
                                                               const std::string& variant, std::string& error)
{
    // Asked before the simulator is made, so that a refused connection costs nothing.
    if (LegacyPlatform::Current() != nullptr) {
        error = kOnlyOne;
        return nullptr;
    }
    std::unique_ptr<LegacyTargetDriver> driver(new LegacyTargetDriver(registry));
    if (!driver->Start(variant, error))
        return nullptr;
    driver->platform_ = std::make_unique<LegacyPlatform>(driver->Target());
    if (!driver->platform_->Bind()) {
        error = kOnlyOne;
        return nullptr;
    }
    if (registry != nullptr) {
        LegacyPlatform* platform = driver->platform_.get();
        registry->RegisterService(Ids::IQPlatformFunctions, static_cast<IQPlatformFunctions*>(platform));
        registry->RegisterService(Ids::IQPlatformFreeRun, static_cast<IQPlatformFreeRun*>(platform));
    }
    return driver;
}

LegacyTargetDriver::~LegacyTargetDriver()
{
    IQServiceRegistry* registry = Registry();
    LegacyPlatform* platform = platform_.get();
    if (registry == nullptr || platform == nullptr)
        return;
    registry->UnregisterService(Ids::IQPlatformFreeRun, static_cast<IQPlatformFreeRun*>(platform));
    registry->UnregisterService(Ids::IQPlatformFunctions, static_cast<IQPlatformFunctions*>(platform));
}
