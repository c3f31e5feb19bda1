#pragma once
#include <cstdint>
#include <string>

#include "boundary/interfaces/Workbench.h"

// The command's way to the evaluator: every number a command reads or prints
// goes through here, so that the session's radix and symbols apply alike. A
// command made before the evaluator exists simply fails its number arguments.
class CCmdEvaluator
{
public:
    explicit CCmdEvaluator(IQServiceRegistry* host);

    bool Available() const { return evaluator_ != nullptr; }
    // The evaluator itself, for operations the proxy does not wrap; may be null.
    IQEvaluator2* Interface() const { return evaluator_; }

    // radix 0 is the session's current radix.
    bool TextToUInt64(const std::string& text, int32_t radix, uint64_t& value) const;
    bool UInt64ToText(uint64_t value, int32_t radix, std::string& text) const;

private:
    IQEvaluator2* evaluator_ = nullptr;
};
