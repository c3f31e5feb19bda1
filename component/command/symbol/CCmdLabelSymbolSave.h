#pragma once
#include "component/command/symbol/CCmdLabelSymbol.h"

// "symbol_save <filename>": writes every label to a symbol file.
class CCmdLabelSymbolSave : public CCmdLabelSymbol
{
public:
    CCmdLabelSymbolSave(CDebuggerState& owner, CVELLabelManager& labels, IQServiceRegistry* host);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};
