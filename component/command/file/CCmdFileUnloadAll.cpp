#include "component/command/file/CCmdFileUnloadAll.h"

#include "component/frame/CDebuggerState.h"
#include "component/util/MessageFormat.h"

CCmdFileUnloadAll::CCmdFileUnloadAll(IQServiceRegistry* host, CDebuggerState& debugger)
    : CCmd(host, true, "file_unload_all", "ua", "<no parameters>"), debugger_(debugger)
{
}

HRESULT CCmdFileUnloadAll::Run(const std::string&, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    // The same text as for loading: the two share one failure message.
    if (Failed(debugger_.UnloadPrograms(-1))) {
        message = FormatMessageText(57750);
        return E_FAIL;
    }
    return S_OK;
}
