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

    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
    HRESULT Continue(const std::string& line, std::string& message, bool& continuing) override;

    std::vector<std::string> runTexts;
    std::vector<std::string> continueLines;
    std::string reply = "done";
    bool startContinuing = false;
    bool startPending = false;
    HRESULT result = S_OK;
};

// A command that may not run at some timings and otherwise answers "ran".
class TimedCommand : public CCmdBaseTiming
{
public:
    TimedCommand(IQServiceRegistry* host, TimingCheck check)
        : CCmdBaseTiming(host, true, "probe_fill", "pf", ""), check_(check)
    {
    }
    HRESULT Run(const std::string&, std::string& message, bool& continuing) override
    {
        continuing = false;
        if (TimingAllows(check_, message))
            message = "ran";
        return S_OK;
    }

private:
    TimingCheck check_;
};
