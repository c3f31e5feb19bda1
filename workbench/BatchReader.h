#pragma once
#include <cstddef>
#include <fstream>
#include <memory>
#include <string>

// One batch file being run, read a line at a time, so that neither a long
// file nor one without an end is ever held whole.
class BatchReader
{
public:
    enum class Read { Line, End, TooLong };

    // Nothing for a file that cannot be read, a folder among them.
    static std::unique_ptr<BatchReader> Open(const std::string& path, bool announce);

    // TooLong as soon as a line passes `limit`, without reading further.
    Read Next(std::string& line, size_t limit);
    // The lines not read yet, counted up to the end or the first too long one.
    int CountRest(size_t limit);

    const std::string& Name() const { return name_; }
    int LineNumber() const { return lineNumber_; }
    // Started through the command-line service: its end is broadcast.
    bool Announce() const { return announce_; }

private:
    BatchReader(std::string name, bool announce) : name_(std::move(name)), announce_(announce) {}

    std::string name_;
    std::ifstream in_;
    int lineNumber_ = 0;
    bool announce_;
};
