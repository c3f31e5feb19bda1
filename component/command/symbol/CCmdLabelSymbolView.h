#pragma once
#include "component/command/symbol/CCmdLabelSymbol.h"

// "symbol_view [<pattern>]": the labels in name order, those whose name holds
// the pattern (case counts), and how many were shown.
class CCmdLabelSymbolView : public CCmdLabelSymbol
{
public:
    CCmdLabelSymbolView(CDebuggerState& owner, CVELLabelManager& labels, IQServiceRegistry* host);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};
