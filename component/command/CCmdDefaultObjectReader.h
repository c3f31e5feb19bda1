#pragma once
#include "component/command/CCmd.h"

class CDebuggerState;

// "default_object_format": shows or sets the object format that the file
// commands read and write when no format is typed.
class CCmdDefaultObjectReader : public CCmd
{
public:
    CCmdDefaultObjectReader(IQServiceRegistry* host, CDebuggerState& state);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;

private:
    CDebuggerState& state_;
};
