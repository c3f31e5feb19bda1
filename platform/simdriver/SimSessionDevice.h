#pragma once
#include <string>

struct IQServiceRegistry;

// The simulated device a session chose (see SimDevice::Configure), kept with
// the session as a property of the workbench's store, and the folder a
// device file is relative to: the workspace's.
struct SimSessionDevice {
    static constexpr const char* kTag = "SIM_DEVICE_TAG";

    std::string choice;
    std::string folder;

    // The session is the one the debugger has open, in the workbench's active
    // workspace and project: a driver is only told the registry. Empty (the
    // platform's own device) where any of that is missing.
    static SimSessionDevice Read(IQServiceRegistry* registry);
};
