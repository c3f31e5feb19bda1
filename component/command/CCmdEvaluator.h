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
    explicit CCmdEvaluator(IQServiceRegistry* host) : host_(host) {}

    bool Available() const { return Interface() != nullptr; }
    // The evaluator itself, for operations the proxy does not wrap; may be
    // null. Asked for at each use: the session's evaluator changes with the
    // platform.
    IQEvaluator2* Interface() const;

    // radix 0 is the session's current radix.
    bool TextToUInt64(const std::string& text, int32_t radix, uint64_t& value) const;
    bool UInt64ToText(uint64_t value, int32_t radix, std::string& text) const;

private:
    IQServiceRegistry* host_;
};
