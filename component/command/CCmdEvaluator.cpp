#include "component/command/CCmdEvaluator.h"

#include <utility>

#include "boundary/Ids.h"

IQEvaluator2* CCmdEvaluator::Interface() const
{
    if (isFixed_)
        return fixed_;
    return GetServiceAs<IQEvaluator2>(host_, Ids::IQEvaluator2);
}

bool CCmdEvaluator::TextToUInt64(const std::string& text, int32_t radix, uint64_t& value) const
{
    IQEvaluator2* evaluator = Interface();
    if (evaluator == nullptr)
        return false;
    uint64_t result = 0;
    if (evaluator->TextToUInt64Radix(text, radix, result) != S_OK)
        return false;
    value = result;
    return true;
}

bool CCmdEvaluator::UInt64ToText(uint64_t value, int32_t radix, std::string& text) const
{
    IQEvaluator2* evaluator = Interface();
    if (evaluator == nullptr)
        return false;
    std::string result;
    if (evaluator->UInt64ToText(value, radix, result) != S_OK)
        return false;
    text = std::move(result);
    return true;
}
