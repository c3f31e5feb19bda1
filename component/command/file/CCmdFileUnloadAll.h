#pragma once
#include "component/command/CCmd.h"

class CDebuggerState;

// "file_unload_all": takes every program of the session's list out of the target.
class CCmdFileUnloadAll : public CCmd
{
public:
    CCmdFileUnloadAll(IQServiceRegistry* host, CDebuggerState& debugger);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;

private:
    CDebuggerState& debugger_;
};
