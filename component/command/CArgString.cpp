#include "component/command/CArgString.h"

#include <utility>

CArgString::CArgString(bool required, std::string defaultValue, std::string name)
    : CArg(required, std::move(name)), Default(std::move(defaultValue))
{
}

bool CArgString::Parse(const std::string& text, int32_t quoteKind)
{
    Reset();
    Raw = text;
    Value.clear();
    if (quoteKind == QuotePlain || quoteKind == QuoteDouble)
        Value = text;
    if (!Value.empty())
        return true;
    Value = Default;
    UsedDefault = true;
    if (Required) {
        Error = ErrorEmpty;
        return false;
    }
    return true;
}
