#pragma once
#include "component/command/memory/CCmdMemory.h"

// "memory_move <start> <end> <destination> [<verify>] [<mode>]": copies a
// range. Unlike its siblings it takes <verify> before <mode>.
class CCmdMemoryMove : public CCmdMemory
{
public:
    CCmdMemoryMove(IQServiceRegistry* host, MemoryChanged memoryChanged);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};
