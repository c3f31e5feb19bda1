#pragma once
#include <cstdint>
#include <ctime>
#include <optional>
#include <string>

// What the file system says of a program's file, to tell whether it was
// rebuilt: the status change time stands for the creation time. Times keep
// their nanoseconds, so that two builds within a second differ.
struct FileStatus {
    timespec Created{};
    timespec Modified{};
    uint64_t Size = 0;

    // Nothing when the file cannot be asked about, a missing one above all.
    static std::optional<FileStatus> Of(const std::string& path);
    // Whether either time differs; the size is no part of it.
    bool TimesDiffer(const FileStatus& other) const;
};
