#pragma once
#include <cstdint>
#include <string>

#include "component/command/CArg.h"

class CCmdEvaluator;

// The common part of number arguments: every number goes through the
// command's evaluator, so that symbols and the session's radix apply.
class CArgNumber : public CArg
{
public:
    // radix 0: the evaluator's current radix. evaluator may be null, and then
    // no text evaluates.
    CArgNumber(bool required, int32_t radix, const CCmdEvaluator* evaluator, std::string name = {});

    int32_t Radix;
    const CCmdEvaluator* Evaluator;

protected:
    bool Evaluate(const std::string& text, uint64_t& value) const;
};
