#include "support/TestCommands.h"

#include <string_view>

#include "component/command/CArgKeyword.h"
#include "component/command/CArgNumberUnsigned.h"
#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"
#include "component/util/MessageFormat.h"

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

ProbeCommand::ProbeCommand(IQServiceRegistry* host, FakeManager& manager, TimingCheck check)
    : CCmdBaseTiming(host, true, "probe_fill", "pf", "<start> <end> [<count>] [<mode>]"), manager_(manager),
      check_(check)
{
}

HRESULT ProbeCommand::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    if (!TimingAllows(check_, message))
        return S_OK;
    CArgNumberUnsigned start(true, 0, &Evaluator, 0, 0, 0xFFFFFFFF);
    CArgNumberUnsigned end(true, 0, &Evaluator, 0, 0, 0xFFFFFFFF);
    CArgNumberUnsigned count(false, 0, &Evaluator, 1, 1, 0x100);
    CArgKeyword mode(false, "byte\0word\0long\0", 0);
    std::string_view cursor = text;
    switch (ParseArguments(cursor, {&start, &end, &count, &mode})) {
    case 0:
        message = ArgumentMessage(start, "<start>");
        return E_FAIL;
    case 1:
        message = ArgumentMessage(end, "<end>");
        return E_FAIL;
    case 2:
        message = ArgumentMessage(count, "<count>");
        return E_FAIL;
    case 4:
        break;
    default:
        message = FormatMessageText(30009);
        return E_FAIL;
    }
    if (!HasNoMoreText(cursor)) {
        message = FormatMessageText(30002);
        return E_FAIL;
    }
    HRESULT hr = manager_.Fill(start.Value, end.Value, count.Value, mode.SelectedKeyword());
    if (Failed(hr)) {
        message = ErrorTextFor(&manager_, hr);
        return E_FAIL;
    }
    message.clear();
    return S_OK;
}
