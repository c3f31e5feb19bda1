#pragma once
#include "component/command/memory/CCmdMemory.h"

// "memory_fill <start> <end> <data> [<mode>] [<verify>]": writes one value
// over a range. A range that is no multiple of the value's size loses its
// tail rather than being written in part.
class CCmdMemoryFill : public CCmdMemory
{
public:
    CCmdMemoryFill(IQServiceRegistry* host, MemoryChanged memoryChanged);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};
