#pragma once
#include "component/command/symbol/CCmdLabelSymbol.h"

// "symbol_add <name> <address>": a label by hand, or a new address for the
// label of that name.
class CCmdLabelSymbolAdd : public CCmdLabelSymbol
{
public:
    struct Args {
        std::string Name;
        uint32_t Address;
    };

    CCmdLabelSymbolAdd(CDebuggerState& owner, CVELLabelManager& labels, IQServiceRegistry* host);
    static Parsed<Args> Parse(const std::string& text, const CCmdEvaluator& evaluator);
    HRESULT Run(const std::string& text, std::string& message, bool& continuing) override;
};
