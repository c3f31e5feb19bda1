#include "app/PlatformHost.h"

#include "boundary/Ids.h"
#include "workbench/ServiceRegistry.h"

PlatformHost::PlatformHost(ServiceRegistry& registry)
    : registry_(registry), table_(InstalledPlatforms()), list_(table_), factory_(table_),
      evaluator_(&registry)
{
    registry_.RegisterService(Ids::IQEvaluator2, static_cast<IQEvaluator2*>(&evaluator_));
    registry_.RegisterService(Ids::PlatformList, static_cast<IQPlatformList*>(&list_));
    registry_.RegisterService(Ids::DriverFactory, static_cast<IQDriverFactory*>(&factory_));
}

PlatformHost::~PlatformHost()
{
    registry_.UnregisterService(Ids::IQEvaluator2, static_cast<IQEvaluator2*>(&evaluator_));
    registry_.UnregisterService(Ids::DriverFactory, static_cast<IQDriverFactory*>(&factory_));
    registry_.UnregisterService(Ids::PlatformList, static_cast<IQPlatformList*>(&list_));
}

std::vector<std::string> PlatformHost::Names() const
{
    std::vector<std::string> names;
    for (const auto& p : table_.platforms)
        names.push_back(p.name);
    return names;
}
