#include "component/command/CArgNumber.h"

#include <utility>

#include "component/command/CCmdEvaluator.h"

CArgNumber::CArgNumber(bool required, int32_t radix, const CCmdEvaluator* evaluator, std::string name)
    : CArg(required, std::move(name)), Radix(radix), Evaluator(evaluator)
{
}

bool CArgNumber::Evaluate(const std::string& text, uint64_t& value) const
{
    return Evaluator != nullptr && Evaluator->TextToUInt64(text, Radix, value);
}
