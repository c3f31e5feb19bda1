#pragma once
#include <string>
#include <vector>

#include "platform/catalog/DriverFactory.h"
#include "platform/catalog/PlatformList.h"
#include "platform/eval/ExpressionEvaluator.h"
#include "platform/simdriver/InstalledPlatforms.h"

class ServiceRegistry;

// The installed platforms as the workbench offers them: the catalogue and the
// driver factory, registered for as long as this object lives. It must outlive
// every debugger instance that may hold its drivers.
class PlatformHost
{
public:
    explicit PlatformHost(ServiceRegistry& registry);
    ~PlatformHost();
    PlatformHost(const PlatformHost&) = delete;
    PlatformHost& operator=(const PlatformHost&) = delete;

    std::vector<std::string> Names() const;
    // The object formats its readers offer, as `file_load` takes them.
    std::vector<std::string> Formats() const;

private:
    ServiceRegistry& registry_;
    PlatformTable table_;
    PlatformList list_;
    DriverFactory factory_;
    // The platform's evaluator: numbers and expressions of the command line.
    ExpressionEvaluator evaluator_;
};
