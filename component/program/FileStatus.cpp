#include "component/program/FileStatus.h"

#include <sys/stat.h>

namespace
{

bool Same(const timespec& a, const timespec& b)
{
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

} // namespace

std::optional<FileStatus> FileStatus::Of(const std::string& path)
{
    struct stat info {
    };
    if (path.empty() || ::stat(path.c_str(), &info) != 0)
        return std::nullopt;
    return FileStatus{info.st_ctim, info.st_mtim, static_cast<uint64_t>(info.st_size)};
}

bool FileStatus::TimesDiffer(const FileStatus& other) const
{
    return !Same(Created, other.Created) || !Same(Modified, other.Modified);
}
