#pragma once
#include <ostream>
#include <string>
#include <vector>

#include "boundary/interfaces/Workbench.h"

// The command log: what the user did, written as the commands that do it.
// Kept in memory and, when a sink is set, written there line by line.
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
    const std::vector<std::string>& Lines() const { return lines_; }

private:
    bool logging_ = true;
    std::ostream* sink_ = nullptr;
    std::vector<std::string> lines_;
};
