#pragma once
#include "component/command/CCmd.h"

class CDebuggerState;

// "radix": shows or sets the radix numbers are read and shown in.
class CCmdRadix : public CCmd
{
public:
    CCmdRadix(IQServiceRegistry* host, CDebuggerState& state);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;

private:
    CDebuggerState& state_;
};
