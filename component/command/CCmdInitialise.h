#pragma once
#include "component/command/CCmd.h"

class CDebuggerState;

// "initialise": connects the target anew, as after a power-up.
class CCmdInitialise : public CCmd
{
public:
    CCmdInitialise(IQServiceRegistry* host, CDebuggerState& state);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;

private:
    CDebuggerState& state_;
};
