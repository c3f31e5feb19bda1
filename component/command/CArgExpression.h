#pragma once
#include <string>

#include "component/command/CArg.h"

// An expression kept as text: the command evaluates it once it knows the
// type of the data it stands for. A quoted token gives no expression.
class CArgExpression : public CArg
{
public:
    explicit CArgExpression(bool required, std::string name = {});

    bool Parse(const std::string& text, int32_t quoteKind) override;

    std::string Value;
};
