#include "platform/simdriver/InstalledPlatforms.h"

#include <type_traits>

#include "boundary/Ids.h"
#include "boundary/interfaces/Workbench.h"

#include "platform/legacy/LegacyTargetDriver.h"
#include "platform/objfile/ElfReader.h"
#include "platform/objfile/IhexFormat.h"
#include "platform/objfile/SrecFormat.h"
#include "platform/objfile/TextImageReader.h"
#include "platform/sim/SimDevice.h"
#include "platform/simdriver/SimCpuDriver.h"
#include "platform/simdriver/SimSessionDevice.h"
#include "platform/simdriver/SimTargetDriver.h"

namespace
{

// Driver is the class of the target driver: SimTargetDriver, or
// LegacyTargetDriver for the platform driven by function name.
template <class Driver>
PlatformEntry Simulator(const std::string& name, const std::string& cpu, const std::string& variant)
{
    PlatformEntry entry;
    entry.name = name;
    entry.cpuDriver = cpu;
    entry.functionFamily = std::is_same_v<Driver, LegacyTargetDriver>;
    // A device the session named brings its own core.
    entry.makeCpu = [variant](IQServiceRegistry* registry) -> std::unique_ptr<PlatformDriver> {
        return std::make_unique<SimCpuDriver>(
            SimDevice::VariantOf(SimSessionDevice::Read(registry).choice, variant));
    };
    entry.makeTarget = [variant](IQServiceRegistry* registry) -> std::unique_ptr<PlatformDriver> {
        std::string error;
        auto driver = Driver::Create(registry, variant, error);
        // The debugger says only that the driver could not be made; this says why.
        auto* box = GetServiceAs<IQMessageBox>(registry, Ids::MessageBoxService);
        if (!driver && box != nullptr && !error.empty())
            box->ShowMessage(error, MessageIcon::Stop);
        return driver;
    };
    return entry;
}

} // namespace

PlatformTable InstalledPlatforms()
{
    PlatformTable table;
    table.platforms.push_back(Simulator<SimTargetDriver>("simulator", "Cortex-M3", "cortex-m3"));
    table.platforms.push_back(Simulator<SimTargetDriver>("simulator-m4", "Cortex-M4", "cortex-m4"));
    table.platforms.push_back(Simulator<LegacyTargetDriver>("simulator-legacy", "Cortex-M3", "cortex-m3"));
    table.readers.push_back({ElfReader::FormatName, "", [](IQServiceRegistry* registry) {
                                 return std::unique_ptr<PlatformDriver>(
                                     std::make_unique<ElfReader>(registry));
                             }});
    for (const TextFormat* format : {&SrecText, &IhexText})
        table.readers.push_back({format->name, "", [format](IQServiceRegistry* registry) {
                                     return std::unique_ptr<PlatformDriver>(
                                         std::make_unique<TextImageReader>(registry, *format));
                                 }});
    return table;
}
