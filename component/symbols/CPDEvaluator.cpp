#include "component/symbols/CPDEvaluator.h"

#include "boundary/Ids.h"
#include "component/util/ObjectSerial.h"

CPDEvaluator::CPDEvaluator(IQServiceRegistry* registry, CDebuggerState& state)
    : registry_(registry), state_(state), serial_(NextObjectSerial())
{
}

HRESULT CPDEvaluator::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQEvaluator, Ids::IQEvaluator2}, iid,
                      static_cast<IQEvaluator2*>(this), out);
}

HRESULT CPDEvaluator::GetRadix(int32_t& radix)
{
    radix = radix_;
    return S_OK;
}

HRESULT CPDEvaluator::SetRadix(int32_t radix)
{
    radix_ = radix;
    if (registry_ != nullptr)
        registry_->Broadcast(Event{Ids::EVENT_RADIX_CHANGED, 0});
    return S_OK;
}
