#pragma once
#include <vector>

#include "boundary/interfaces/Workbench.h"

// Which evaluator the workbench hands out. The platform registers its own;
// a session whose platform has none puts its evaluator in front for as long
// as it is connected, and the one it covered comes back when it leaves.
class EvaluatorHost final : public IQEvaluatorHost
{
public:
    explicit EvaluatorHost(IQServiceRegistry& registry) : registry_(registry) {}
    EvaluatorHost(const EvaluatorHost&) = delete;
    EvaluatorHost& operator=(const EvaluatorHost&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    // Setting the evaluator already in front changes nothing.
    HRESULT SetEvaluator(IQEvaluator2* evaluator) override;
    // Takes the evaluator in front away; the one it covered, if still
    // registered by nobody else, is put back.
    HRESULT ClearEvaluator() override;

private:
    struct Entry {
        IQEvaluator2* evaluator;
        IQEvaluator2* covered;
    };
    IQServiceRegistry& registry_;
    std::vector<Entry> stack_;
};
