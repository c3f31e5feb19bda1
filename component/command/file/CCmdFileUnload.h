#pragma once
#include "component/command/file/CCmdFile.h"

// "file_unload": takes a program of the session's list out of the target.
class CCmdFileUnload : public CCmdFile
{
public:
    CCmdFileUnload(IQServiceRegistry* host, CDebuggerState& debugger);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};
