#include "component/command/CArgExpression.h"

CArgExpression::CArgExpression(bool required) : CArg(required) {}

bool CArgExpression::Parse(const std::string& text, int32_t quoteKind)
{
    Reset();
    Raw = text;
    Value = quoteKind == QuotePlain ? text : std::string();
    if (Value.empty() && Required) {
        Error = ErrorEmpty;
        return false;
    }
    return true;
}
