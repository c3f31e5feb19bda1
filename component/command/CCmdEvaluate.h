#pragma once
#include "component/command/CCmd.h"

// "evaluate": the value of an expression in every radix. Exists from the
// start of the session: numbers and labels need no target.
class CCmdEvaluate : public CCmd
{
public:
    explicit CCmdEvaluate(IQServiceRegistry* host);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};
