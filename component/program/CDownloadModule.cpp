#include "component/program/CDownloadModule.h"

#include <utility>

CDownloadModule::CDownloadModule(std::string fileName, uint32_t offset, std::string format, int32_t debugOnly,
                                 int32_t verify, int32_t accessSize, int32_t autoDownload)
    : FileName(std::move(fileName)), Offset(offset), Format(std::move(format)), DebugOnly(debugOnly),
      Verify(verify), AccessSize(accessSize), AutoDownload(autoDownload)
{
}

CDownloadModule::CDownloadModule(const CDownloadModule& other)
{
    *this = other;
}

CDownloadModule& CDownloadModule::operator=(const CDownloadModule& other)
{
    Fields(*this) = Fields(other);
    Assigned = 1;
    return *this;
}

bool CDownloadModule::operator==(const CDownloadModule& other) const
{
    return Fields(*this) == Fields(other);
}

std::string CDownloadModule::Key() const
{
    return Key(FileName, Offset, Format, AccessSize);
}

std::string CDownloadModule::Key(const std::string& fileName, uint32_t offset, const std::string& format,
                                 int32_t accessSize)
{
    return fileName + std::to_string(static_cast<int32_t>(offset)) + format + std::to_string(accessSize);
}
