#pragma once
#include <cstdint>

#include "boundary/interfaces/Workbench.h"

class CDebuggerState;

// The evaluator the component makes for a platform driven by function name.
// It holds the session's radix; a new one starts at 16.
class CPDEvaluator : public IQEvaluator2
{
public:
    CPDEvaluator(IQServiceRegistry* registry, CDebuggerState& state);
    virtual ~CPDEvaluator() = default;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT GetRadix(int32_t& radix) override;
    // No check of the value: the callers pass 2, 8, 10 or 16.
    HRESULT SetRadix(int32_t radix) override;

    uint64_t Serial() const { return serial_; }

private:
    IQServiceRegistry* registry_;
    CDebuggerState& state_;
    int32_t radix_ = 16;
    uint64_t serial_;
};
