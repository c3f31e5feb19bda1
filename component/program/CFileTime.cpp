#include "component/program/CFileTime.h"

#include <string.h>
#include <sys/stat.h>

#include <cerrno>
#include <cinttypes>
#include <cstdio>

#include "component/frame/StringTable.h"

namespace
{

// Seconds from 1601-01-01 to 1970-01-01, and the 100 ns ticks of a second.
constexpr uint64_t EpochOffset = 11644473600ull;
constexpr uint64_t TicksPerSecond = 10000000ull;

} // namespace

CFileTime CFileTime::FromValue(uint64_t value)
{
    return CFileTime(static_cast<uint32_t>(value), static_cast<uint32_t>(value >> 32));
}

std::string CFileTime::Text() const
{
    char text[17];
    snprintf(text, sizeof text, "%08" PRIX32 "%08" PRIX32, High, Low);
    return text;
}

bool CFileTime::ReadFrom(const std::string& path, const DebugStream& debug)
{
    struct stat info {
    };
    if (stat(path.c_str(), &info) != 0) {
        int error = errno;
        if (debug)
            debug(FormatText("Cannot access file %s,%s\n", path.c_str(), strerror(error)));
        return false;
    }
    // A time before 1601 can't be told in this unit; it reads as unknown.
    int64_t seconds = static_cast<int64_t>(info.st_mtim.tv_sec) + static_cast<int64_t>(EpochOffset);
    uint64_t ticks = seconds < 0 ? 0
                                 : static_cast<uint64_t>(seconds) * TicksPerSecond +
                                       static_cast<uint64_t>(info.st_mtim.tv_nsec) / 100;
    *this = FromValue(ticks);
    return true;
}

CFileTime CFileTime::OfFile(const std::string& path, const DebugStream& debug)
{
    CFileTime time;
    time.ReadFrom(path, debug);
    return time;
}
