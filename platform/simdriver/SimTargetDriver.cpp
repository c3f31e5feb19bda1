#include "platform/simdriver/SimTargetDriver.h"

#include "boundary/Ids.h"

std::unique_ptr<SimTargetDriver> SimTargetDriver::Create(IQServiceRegistry* registry,
                                                         const std::string& variant, std::string& error)
{
    std::unique_ptr<SimTargetDriver> driver(new SimTargetDriver(registry));
    if (!driver->Start(variant, error))
        return nullptr;
    driver->memory_ = std::make_unique<SimPlatformMemory>(driver->Target());
    if (registry != nullptr) {
        SimPlatformMemory* memory = driver->memory_.get();
        registry->RegisterService(Ids::IQPlatformMemory, static_cast<IQPlatformMemory*>(memory));
        registry->RegisterService(Ids::IQPlatformMemory2, static_cast<IQPlatformMemory2*>(memory));
        registry->RegisterService(Ids::IQPlatformMemory3, static_cast<IQPlatformMemory3*>(memory));
        registry->RegisterService(Ids::IQPlatformMemory5, static_cast<IQPlatformMemory5*>(memory));
    }
    return driver;
}

SimTargetDriver::~SimTargetDriver()
{
    IQServiceRegistry* registry = Registry();
    SimPlatformMemory* memory = memory_.get();
    if (registry == nullptr || memory == nullptr)
        return;
    registry->UnregisterService(Ids::IQPlatformMemory5, static_cast<IQPlatformMemory5*>(memory));
    registry->UnregisterService(Ids::IQPlatformMemory3, static_cast<IQPlatformMemory3*>(memory));
    registry->UnregisterService(Ids::IQPlatformMemory2, static_cast<IQPlatformMemory2*>(memory));
    registry->UnregisterService(Ids::IQPlatformMemory, static_cast<IQPlatformMemory*>(memory));
}
