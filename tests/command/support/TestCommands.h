#pragma once
#include <string>
#include <vector>

#include "component/command/CCmd.h"
#include "component/command/CCmdBaseTiming.h"
#include "support/CommandFakes.h"

// A command that records what the base hands it and answers as told.
class RecordingCommand : public CCmd
{
public:
    using CCmd::CCmd;
    using CCmd::CompletionSink;
    using CCmd::Continuing;
    using CCmd::Kind;
    using CCmd::StripName;

    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
    HRESULT Continue(const std::string& line, std::string& message, bool& continuing) override;

    std::vector<std::string> runTexts;
    std::vector<std::string> continueLines;
    std::string reply = "done";
    bool startContinuing = false;
    bool startPending = false;
    HRESULT result = S_OK;
};

// "probe_fill <start> <end> [<count>] [<mode>]": a command run in the usual
// order (timing, arguments, leftovers, manager), so that the framework's
// messages can be seen as a user would.
class ProbeCommand : public CCmdBaseTiming
{
public:
    ProbeCommand(IQServiceRegistry* host, FakeManager& manager, TimingCheck check);

    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;

private:
    FakeManager& manager_;
    TimingCheck check_;
};
