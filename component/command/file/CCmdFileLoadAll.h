#pragma once
#include "component/command/CCmd.h"

class CDebuggerState;

// "file_load_all": loads every program of the session's list.
class CCmdFileLoadAll : public CCmd
{
public:
    CCmdFileLoadAll(IQServiceRegistry* host, CDebuggerState& debugger);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;

private:
    CDebuggerState& debugger_;
};
