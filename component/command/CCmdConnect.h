#pragma once
#include "component/command/CCmd.h"

class CDebuggerState;

// "connect": connects the session to its platform. Exists from the start of
// the session, so that a session can connect before any connection.
class CCmdConnect : public CCmd
{
public:
    CCmdConnect(IQServiceRegistry* host, CDebuggerState& state);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;

private:
    CDebuggerState& state_;
};

// "disconnect": lets the target go. Made at the first connection.
class CCmdDisconnect : public CCmd
{
public:
    CCmdDisconnect(IQServiceRegistry* host, CDebuggerState& state);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;

private:
    CDebuggerState& state_;
};
