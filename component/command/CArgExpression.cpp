#include "component/command/CArgExpression.h"

#include <utility>

CArgExpression::CArgExpression(bool required, std::string name) : CArg(required, std::move(name)) {}

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
