#include "workbench/EvaluatorHost.h"

#include "boundary/Ids.h"

HRESULT EvaluatorHost::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQEvaluatorHost}, iid, static_cast<IQEvaluatorHost*>(this), out);
}

HRESULT EvaluatorHost::SetEvaluator(IQEvaluator2* evaluator)
{
    if (evaluator == nullptr)
        return E_POINTER;
    auto* current = GetServiceAs<IQEvaluator2>(&registry_, Ids::IQEvaluator2);
    if (current == evaluator)
        return S_OK;
    HRESULT hr = registry_.RegisterService(Ids::IQEvaluator2, evaluator);
    if (Failed(hr))
        return hr;
    stack_.push_back(Entry{evaluator, current});
    return S_OK;
}

HRESULT EvaluatorHost::ClearEvaluator()
{
    if (stack_.empty())
        return S_FALSE;
    Entry top = stack_.back();
    stack_.pop_back();
    // Only the evaluator this host put in front is taken away: one that
    // replaced it meanwhile stays.
    if (registry_.UnregisterService(Ids::IQEvaluator2, top.evaluator) == S_OK && top.covered != nullptr)
        registry_.RegisterService(Ids::IQEvaluator2, top.covered);
    return S_OK;
}
