#include "platform/simdriver/InstalledPlatforms.h"

#include "platform/simdriver/SimCpuDriver.h"
#include "platform/simdriver/SimTargetDriver.h"

namespace
{

PlatformEntry Simulator(const std::string& name, const std::string& cpu, const std::string& variant)
{
    PlatformEntry entry;
    entry.name = name;
    entry.cpuDriver = cpu;
    entry.makeCpu = [variant](IQServiceRegistry*) -> std::unique_ptr<PlatformDriver> {
        return std::make_unique<SimCpuDriver>(variant);
    };
    entry.makeTarget = [variant](IQServiceRegistry* registry) -> std::unique_ptr<PlatformDriver> {
        std::string error;
        return SimTargetDriver::Create(registry, variant, error);
    };
    return entry;
}

} // namespace

PlatformTable InstalledPlatforms()
{
    PlatformTable table;
    table.platforms.push_back(Simulator("simulator", "Cortex-M3", "cortex-m3"));
    table.platforms.push_back(Simulator("simulator-m4", "Cortex-M4", "cortex-m4"));
    return table;
}
