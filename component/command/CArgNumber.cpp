#include "component/command/CArgNumber.h"

#include "component/command/CCmdEvaluator.h"

CArgNumber::CArgNumber(bool required, int32_t radix, const CCmdEvaluator* evaluator)
    : CArg(required), Radix(radix), Evaluator(evaluator)
{
}

bool CArgNumber::Evaluate(const std::string& text, uint64_t& value) const
{
    return Evaluator != nullptr && Evaluator->TextToUInt64(text, Radix, value);
}
