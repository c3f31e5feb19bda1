#pragma once
#include <utility>

// Runs an action when the scope ends, whichever way it ends: a flag, a mark
// or a lock taken for one call is given back on the error paths too.
template <class Action> class ScopeGuard
{
public:
    explicit ScopeGuard(Action action) : action_(std::move(action)) {}
    ~ScopeGuard()
    {
        if (armed_)
            action_();
    }
    ScopeGuard(const ScopeGuard&) = delete;
    ScopeGuard& operator=(const ScopeGuard&) = delete;

    // The action will not run: what was taken is handed on to someone else.
    void Release() { armed_ = false; }

private:
    Action action_;
    bool armed_ = true;
};

// Sets a variable for one scope and puts its old value back at the end.
template <class T> class ScopedValue
{
public:
    ScopedValue(T& variable, T value) : variable_(variable), old_(std::exchange(variable, std::move(value))) {}
    ~ScopedValue() { variable_ = std::move(old_); }
    ScopedValue(const ScopedValue&) = delete;
    ScopedValue& operator=(const ScopedValue&) = delete;

private:
    T& variable_;
    T old_;
};
