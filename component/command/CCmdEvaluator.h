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

    // One bound to the evaluator the registry holds now, for the length of a
    // command: it is looked up once instead of at every number.
    CCmdEvaluator Snapshot() const { return CCmdEvaluator(Interface()); }

    bool Available() const { return Interface() != nullptr; }
    // The evaluator itself, for operations the proxy does not wrap; may be
    // null. Asked for at each use: the session's evaluator changes with the
    // platform.
    IQEvaluator2* Interface() const;

    // radix 0 is the session's current radix.
    bool TextToUInt64(const std::string& text, int32_t radix, uint64_t& value) const;
    bool UInt64ToText(uint64_t value, int32_t radix, std::string& text) const;

private:
    explicit CCmdEvaluator(IQEvaluator2* fixed) : fixed_(fixed), isFixed_(true) {}

    IQServiceRegistry* host_ = nullptr;
    IQEvaluator2* fixed_ = nullptr;
    bool isFixed_ = false;
};
