#include "component/command/file/CCmdFileLoadAll.h"

#include "component/frame/CDebuggerState.h"
#include "component/util/MessageFormat.h"

CCmdFileLoadAll::CCmdFileLoadAll(IQServiceRegistry* host, CDebuggerState& debugger)
    : CCmd(host, true, "file_load_all", "la", "<no parameters>"), debugger_(debugger)
{
}

HRESULT CCmdFileLoadAll::Run(const std::string&, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    if (Failed(debugger_.DownloadPrograms(-1, false, false, false, true, true))) {
        message = FormatMessageText(57750);
        return E_FAIL;
    }
    return S_OK;
}
