#pragma once
#include <chrono>

#include "workbench/MessageLoop.h"

// Time that moves only when a test says so.
class FakeClock
{
public:
    MessageLoop::Clock AsClock()
    {
        return [this] { return now_; };
    }
    void Advance(std::chrono::milliseconds step) { now_ += step; }

private:
    MessageLoop::TimePoint now_{std::chrono::hours(1)};
};
