#pragma once
#include <string>

#include "component/command/CArg.h"

// Any text. A double-quoted token keeps its quotes in Value.
class CArgString : public CArg
{
public:
    CArgString(bool required, std::string defaultValue, std::string name = {});

    bool Parse(const std::string& text, int32_t quoteKind) override;

    std::string Default;
    std::string Value;
};
