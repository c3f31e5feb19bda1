#pragma once
#include <optional>

#include "component/program/CDownloadModule.h"

// The record form of a module, the latest of four generations: the seven
// fields with the defaults of a new module. Each older generation held a
// prefix of them: the first four, five or six.
class CDownloadModuleRecord4
{
public:
    static constexpr int kFieldCount = 7;
    static constexpr int kOldestFieldCount = 4;

    CDownloadModuleRecord4() = default;
    explicit CDownloadModuleRecord4(const CDownloadModule& module) : module_(module) {}

    // A record made from an older one that held the first `fields` fields of
    // `values`; the fields it lacked take their defaults. Nothing for fewer
    // fields than the oldest generation held.
    static std::optional<CDownloadModuleRecord4> FromOlder(const CDownloadModule& values, int fields);

    const CDownloadModule& Module() const { return module_; }

private:
    CDownloadModule module_;
};
