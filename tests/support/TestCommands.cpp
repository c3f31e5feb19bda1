#include "support/TestCommands.h"

HRESULT RecordingCommand::Run(const std::string& text, std::string& message, bool& continuing)
{
    runTexts.push_back(text);
    message = reply;
    continuing = startContinuing;
    if (startPending)
        Pending = VARIANT_TRUE;
    return result;
}

HRESULT RecordingCommand::Continue(const std::string& line, std::string& message, bool& continuing)
{
    continueLines.push_back(line);
    message = "more";
    return CCmd::Continue(line, message, continuing);
}
