#pragma once
#include "component/command/CCmd.h"

class CDebuggerState;

// "cache": shows or switches the memory manager's cache of target memory.
class CCmdCache : public CCmd
{
public:
    CCmdCache(IQServiceRegistry* host, CDebuggerState& state);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;

private:
    CDebuggerState& state_;
};
