#include "platform/catalog/PlatformTable.h"

#include <strings.h>

// Platform and driver names are typed by users: compared without regard to case.
const PlatformEntry* PlatformTable::Find(const std::string& name) const
{
    for (const auto& p : platforms)
        if (strcasecmp(p.name.c_str(), name.c_str()) == 0)
            return &p;
    return nullptr;
}

const PlatformEntry* PlatformTable::FindByCpu(const std::string& cpuDriver) const
{
    for (const auto& p : platforms)
        if (strcasecmp(p.cpuDriver.c_str(), cpuDriver.c_str()) == 0)
            return &p;
    return nullptr;
}

const ReaderEntry* PlatformTable::FindReader(const std::string& name) const
{
    for (const auto& r : readers)
        if (strcasecmp(r.name.c_str(), name.c_str()) == 0)
            return &r;
    return nullptr;
}
