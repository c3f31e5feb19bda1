#include "component/program/CDownloadModuleRecord4.h"

CDownloadModuleRecord4::CDownloadModuleRecord4(const CDownloadModule& module)
    : FileName(module.FileName), Offset(module.Offset), Format(module.Format), DebugOnly(module.DebugOnly),
      Verify(module.Verify), AccessSize(module.AccessSize), AutoDownload(module.AutoDownload)
{
}

std::optional<CDownloadModuleRecord4> CDownloadModuleRecord4::FromOlder(const CDownloadModule& values,
                                                                        int fields)
{
    if (fields < kOldestFieldCount)
        return std::nullopt;
    CDownloadModuleRecord4 record(values);
    const CDownloadModuleRecord4 defaults;
    if (fields < 5)
        record.Verify = defaults.Verify;
    if (fields < 6)
        record.AccessSize = defaults.AccessSize;
    if (fields < kFieldCount)
        record.AutoDownload = defaults.AutoDownload;
    return record;
}

CDownloadModule CDownloadModuleRecord4::Module() const
{
    return CDownloadModule(FileName, Offset, Format, DebugOnly, Verify, AccessSize, AutoDownload);
}
