#pragma once
#include "component/command/symbol/CCmdLabelSymbol.h"

// "symbol_load <filename>": adds the labels of a symbol file to those there are.
class CCmdLabelSymbolLoad : public CCmdLabelSymbol
{
public:
    CCmdLabelSymbolLoad(CDebuggerState& owner, CVELLabelManager& labels, IQServiceRegistry* host);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};
