#pragma once
#include "component/command/file/CCmdFile.h"

// "file_verify": compares target memory with an object file.
class CCmdFileVerify : public CCmdFile
{
public:
    CCmdFileVerify(IQServiceRegistry* host, CDebuggerState& debugger);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};
