#pragma once
#include "component/command/file/CCmdFile.h"

// "file_save": writes a range of target memory to a file in an object format.
class CCmdFileSave : public CCmdFile
{
public:
    CCmdFileSave(IQServiceRegistry* host, CDebuggerState& debugger);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;

private:
    // Empty when the format exists and writes memory; else why not.
    std::string RefuseFormat() const;
};
