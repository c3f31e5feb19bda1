#pragma once
#include <cstdint>
#include <functional>
#include <string>

// A file's last-write time as a count of 100 ns since 1601-01-01 UTC, the
// unit the stored file times of modules are in. 0 is no time known.
class CFileTime
{
public:
    using DebugStream = std::function<void(const std::string&)>;

    CFileTime() = default;
    CFileTime(uint32_t low, uint32_t high) : Low(low), High(high) {}
    static CFileTime FromValue(uint64_t value);

    uint64_t Value() const { return (static_cast<uint64_t>(High) << 32) | Low; }
    bool IsKnown() const { return Value() != 0; }
    // Sixteen hexadecimal digits, High first.
    std::string Text() const;

    // The last-write time of a file. When it can't be had the time stays as
    // it was, the reason goes to `debug`, and the answer is false.
    bool ReadFrom(const std::string& path, const DebugStream& debug);
    static CFileTime OfFile(const std::string& path, const DebugStream& debug);

    friend bool operator==(const CFileTime& a, const CFileTime& b)
    {
        return a.Low == b.Low && a.High == b.High;
    }
    friend bool operator!=(const CFileTime& a, const CFileTime& b) { return !(a == b); }
    friend bool operator<(const CFileTime& a, const CFileTime& b) { return a.Value() < b.Value(); }
    friend bool operator>(const CFileTime& a, const CFileTime& b) { return b < a; }

    uint32_t Low = 0;
    uint32_t High = 0;
};
