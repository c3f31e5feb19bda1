#include "component/program/CDownloadModuleRecord4.h"

std::optional<CDownloadModuleRecord4> CDownloadModuleRecord4::FromOlder(const CDownloadModule& values,
                                                                        int fields)
{
    if (fields < kOldestFieldCount)
        return std::nullopt;
    CDownloadModule module = values;
    const CDownloadModule defaults;
    if (fields < 5)
        module.Verify = defaults.Verify;
    if (fields < 6)
        module.AccessSize = defaults.AccessSize;
    if (fields < kFieldCount)
        module.AutoDownload = defaults.AutoDownload;
    return CDownloadModuleRecord4(module);
}
