#pragma once
#include "component/command/symbol/CCmdLabelSymbol.h"

// "symbol_clear [<name>]": every label, or the oldest of that name. A label
// that is not there is told, not an error.
class CCmdLabelSymbolClear : public CCmdLabelSymbol
{
public:
    CCmdLabelSymbolClear(CDebuggerState& owner, CVELLabelManager& labels, IQServiceRegistry* host);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};
