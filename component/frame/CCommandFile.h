#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "boundary/Variant.h"

// Timings at which the session's batch files run.
enum BatchTimingValue : int32_t {
    TIMING_AT_CONNECTION = 0,
    TIMING_BEFORE_DOWNLOAD = 1,
    TIMING_AFTER_DOWNLOAD = 2,
    TIMING_AFTER_RESET = 3,
};

// One batch file of the session: the file, or the file and its initial
// directory joined by "|", placeholders unexpanded, and its timing.
class CCommandFile
{
public:
    CCommandFile() = default;
    CCommandFile(std::string entry, int32_t timing) : entry_(std::move(entry)), timing_(timing) {}

    const std::string& Entry() const { return entry_; }
    int32_t Timing() const { return timing_; }
    friend bool operator==(const CCommandFile&, const CCommandFile&) = default;

    // The stored form: two strings an entry, the entry and its timing in decimal.
    // Another type or an odd length reads as no files; a timing that is no
    // number reads as 0.
    static std::vector<CCommandFile> Read(const Variant& stored);
    static Variant Write(const std::vector<CCommandFile>& files);

    // The batch state a running batch of this timing answers; 0 for none.
    static int32_t BatchStateOf(int32_t timing);
    // The timing's text for messages, by batch state (1, 2, 3, 5); empty for others.
    static std::string TimingTextOfState(int32_t batchState);

private:
    std::string entry_;
    int32_t timing_ = 0;
};
