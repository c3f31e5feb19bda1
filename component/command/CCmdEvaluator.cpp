#include "component/command/CCmdEvaluator.h"

#include <utility>

#include "boundary/Ids.h"

CCmdEvaluator::CCmdEvaluator(IQServiceRegistry* host)
    : evaluator_(GetServiceAs<IQEvaluator2>(host, Ids::IQEvaluator2))
{
}

bool CCmdEvaluator::TextToUInt64(const std::string& text, int32_t radix, uint64_t& value) const
{
    if (evaluator_ == nullptr)
        return false;
    uint64_t result = 0;
    if (evaluator_->TextToUInt64Radix(text, radix, result) != S_OK)
        return false;
    value = result;
    return true;
}

bool CCmdEvaluator::UInt64ToText(uint64_t value, int32_t radix, std::string& text) const
{
    if (evaluator_ == nullptr)
        return false;
    std::string result;
    if (evaluator_->UInt64ToText(value, radix, result) != S_OK)
        return false;
    text = std::move(result);
    return true;
}
