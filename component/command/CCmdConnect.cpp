#include "component/command/CCmdConnect.h"

#include "component/frame/CDebuggerState.h"
#include "component/frame/StringTable.h"

CCmdConnect::CCmdConnect(IQServiceRegistry* host, CDebuggerState& state)
    : CCmd(host, true, "connect", "cn", "<no parameters>"), state_(state)
{
}

HRESULT CCmdConnect::Run(const std::string&, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    if (!state_.CanConnect() || Failed(state_.Connect())) {
        message = StringTable::Load(57759);
        return E_FAIL;
    }
    return S_OK;
}

CCmdDisconnect::CCmdDisconnect(IQServiceRegistry* host, CDebuggerState& state)
    : CCmd(host, true, "disconnect", "dn", "<no parameters>"), state_(state)
{
}

HRESULT CCmdDisconnect::Run(const std::string&, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    if (!state_.CanDisconnect()) {
        message = StringTable::Load(57770);
        return E_FAIL;
    }
    // Disconnecting deletes this very command: nothing of it may be touched after.
    state_.Disconnect();
    return S_OK;
}
