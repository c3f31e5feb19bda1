#include "component/command/CCmdInitialise.h"

#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"
#include "component/frame/CDebuggerState.h"
#include "component/run/CRunner.h"
#include "component/util/MessageFormat.h"

CCmdInitialise::CCmdInitialise(IQServiceRegistry* host, CDebuggerState& state)
    : CCmd(host, true, std::vector<std::string>{"initialise", "initialize", "in"}, "<no parameters>"),
      state_(state)
{
}

HRESULT CCmdInitialise::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    if (!HasNoMoreText(text)) {
        message = MessageTooMany();
        return E_FAIL;
    }
    if (!state_.IsConnected() || state_.GetRunner()->IsRunning()) {
        message = FormatMessageText(5146);
        return E_FAIL;
    }
    state_.InitialiseTarget();
    return S_OK;
}
