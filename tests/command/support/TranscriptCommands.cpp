#include "support/TranscriptCommands.h"

#include <cstdio>

#include "component/command/CArgExpression.h"
#include "component/command/CArgKeyword.h"
#include "component/command/CArgString.h"
#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"
#include "component/frame/CDebuggerState.h"
#include "component/run/CRunner.h"
#include "component/util/MessageFormat.h"

HRESULT TokensCommand::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    std::string_view cursor = text;
    message.clear();
    while (!HasNoMoreText(cursor)) {
        int32_t kind = 0;
        std::string token = ReadToken(cursor, kind);
        message += (message.empty() ? "" : " ") + ("[" + token + "]") + std::to_string(kind);
    }
    if (message.empty())
        message = "no tokens";
    return S_OK;
}

HRESULT PickCommand::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    CArgKeyword mode(true, "byte\0word\0long\0", 0);
    CArgString name(true, "");
    CArgExpression expression(true);
    std::string_view cursor = text;
    switch (ParseArguments(cursor, {&mode, &name, &expression})) {
    case 0:
        message = ArgumentMessage(mode, "<mode>");
        return E_FAIL;
    case 1:
        message = ArgumentMessage(name, "<name>");
        return E_FAIL;
    case 2:
        message = ArgumentMessage(expression, "<expression>");
        return E_FAIL;
    default:
        break;
    }
    if (!HasNoMoreText(cursor)) {
        message = FormatMessageText(30002);
        return E_FAIL;
    }
    message = "picked " + mode.SelectedKeyword() + " " + name.Value + " " + expression.Value;
    return S_OK;
}

HRESULT EditCommand::Run(const std::string&, std::string& message, bool& continuing)
{
    message = "editing";
    continuing = true;
    return S_OK;
}

HRESULT EditCommand::Continue(const std::string& line, std::string& message, bool& continuing)
{
    HRESULT hr = CCmd::Continue(line, message, continuing);
    message = continuing ? "got " + line : "edit done";
    return hr;
}

HRESULT WaitCommand::Run(const std::string&, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    IQCmdCompletionSink* sink = CompletionSink;
    CDebuggerState& state = state_;
    state_.GetRunner()->SetRunState(RUN_GOING);
    state_.SetWaitingCommand([sink, &state] {
        char text[64];
        std::snprintf(text, sizeof text, "Stopped at H'%08X", state.GetStopAddress());
        sink->OnCommandComplete(text, S_OK);
    });
    Pending = VARIANT_TRUE;
    return S_OK;
}
