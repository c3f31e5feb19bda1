#pragma once
#include <string>
#include <vector>

#include "boundary/interfaces/Debugger.h"
#include "component/command/CCmd.h"

// A command that a batch file may not run at some moments: around a download
// the target's program is changing under it, and right after a reset another
// reset would undo what the reset batch just set up.
class CCmdBaseTiming : public CCmd
{
public:
    enum class TimingCheck {
        NotAroundDownload, // refused before and after the download of modules
        NotAfterReset,     // refused in the batch that follows a reset
    };

    CCmdBaseTiming(IQServiceRegistry* host, bool stripName, std::string fullName, std::string abbreviation,
                   std::string parameterText, std::string prompt = {}, std::string terminator = {});
    CCmdBaseTiming(IQServiceRegistry* host, bool stripName, std::vector<std::string> names,
                   std::string parameterText, std::string prompt = {}, std::string terminator = {});

    // false with the warning in message when the running batch's timing
    // forbids the command; message is left alone otherwise. Without the
    // timing service, or outside a batch, everything is allowed.
    bool TimingAllows(TimingCheck which, std::string& message) const;

protected:
    IQDebuggerState3* TimingService;
};
