#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "component/program/CDownloadModule.h"

// The record form of a module, the latest of four generations. Each older
// generation held a prefix of the seven fields: the first four, five or six.
class CDownloadModuleRecord4
{
public:
    static constexpr int kFieldCount = 7;
    static constexpr int kOldestFieldCount = 4;

    CDownloadModuleRecord4() = default;
    explicit CDownloadModuleRecord4(const CDownloadModule& module);

    // A record made from an older one that held the first `fields` fields of
    // `values`; the fields it lacked take their defaults. Nothing for fewer
    // fields than the oldest generation held.
    static std::optional<CDownloadModuleRecord4> FromOlder(const CDownloadModule& values, int fields);

    CDownloadModule Module() const;

    std::string FileName;
    uint32_t Offset = 0;
    std::string Format;
    int32_t DebugOnly = 0;
    int32_t Verify = 0;
    int32_t AccessSize = 1;
    int32_t AutoDownload = 0;
};
