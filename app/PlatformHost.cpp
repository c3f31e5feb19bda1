#include "app/PlatformHost.h"

#include "boundary/Ids.h"
#include "boundary/interfaces/LabelManager.h"
#include "workbench/ServiceRegistry.h"

PlatformHost::PlatformHost(ServiceRegistry& registry)
    : registry_(registry), table_(InstalledPlatforms()), list_(table_), factory_(table_),
      evaluator_(&registry)
{
    // Labels in expressions are the session's labels, asked of whichever label
    // manager the debugger has registered at the time of the lookup.
    evaluator_.SetLabelLookup([this](std::string_view name) -> std::optional<uint64_t> {
        auto* labels = GetServiceAs<IQLabelManager>(&registry_, Ids::IQLabelManager);
        LabelRecord record{std::string(name)};
        if (labels == nullptr || labels->FindLabelByName(record, 1) != S_OK)
            return std::nullopt;
        return record.Address.Value();
    });
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

std::vector<std::string> PlatformHost::Formats() const
{
    std::vector<std::string> names;
    for (const auto& reader : table_.readers)
        names.push_back(reader.name);
    return names;
}
