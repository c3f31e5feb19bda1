#pragma once
#include <ostream>
#include <string>
#include <vector>

#include "boundary/interfaces/Workbench.h"

// The command log: what the user did, written as the commands that do it.
// Written to the sink, when one is set, line by line; memory keeps only the
// latest lines, so that a long batch runs in flat memory.
class CommandRecorder final : public IQCommandRecorder
{
public:
    CommandRecorder() = default;
    CommandRecorder(const CommandRecorder&) = delete;
    CommandRecorder& operator=(const CommandRecorder&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    // S_OK when on, S_FALSE when off.
    HRESULT IsLogging() override;
    // S_FALSE and nothing kept while logging is off.
    HRESULT LogCommand(const std::string& text) override;

    void SetLogging(bool on) { logging_ = on; }
    // Null stops writing; the stream must outlive the recorder or be unset first.
    void SetSink(std::ostream* sink) { sink_ = sink; }
    // The latest lines, oldest first: at least the last kKept of them.
    const std::vector<std::string>& Lines() const { return lines_; }

    static constexpr size_t kKept = 1000;

private:
    bool logging_ = true;
    std::ostream* sink_ = nullptr;
    std::vector<std::string> lines_;
};
