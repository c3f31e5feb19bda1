#include "component/command/CArgNumberUnsigned.h"

#include <utility>

CArgNumberUnsigned::CArgNumberUnsigned(bool required, int32_t radix, const CCmdEvaluator* evaluator,
                                       uint64_t defaultValue, uint64_t minimum, uint64_t maximum,
                                       std::string name)
    : CArgNumber(required, radix, evaluator, std::move(name)), Default(defaultValue), Minimum(minimum),
      Maximum(maximum), Value(defaultValue)
{
}

bool CArgNumberUnsigned::Parse(const std::string& text, int32_t quoteKind)
{
    Reset();
    if (quoteKind == QuotePlain)
        Raw = text;
    if (Raw.empty() || !Evaluate(Raw, Value)) {
        Value = Default;
        UsedDefault = true;
        if (Required) {
            Error = Raw.empty() ? ErrorEmpty : ErrorInvalid;
            return false;
        }
        return true;
    }
    if (Value < Minimum || Value > Maximum) {
        Error = ErrorRange;
        return false;
    }
    return true;
}
