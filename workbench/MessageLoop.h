#pragma once
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

// The main thread's loop. PostTask may be called from any thread; everything
// else belongs to the thread that runs the loop. A console polls WakeFd()
// together with its input, with NextTimerDelay() as the poll timeout.
//
// Timers follow the injected clock, so tests can move time instead of waiting;
// the timeouts of RunUntil and RunOnce are real time, so a clock that stands
// still cannot make them wait for ever.
class MessageLoop
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Clock = std::function<TimePoint()>;
    using TimerKey = uint64_t;

    explicit MessageLoop(Clock clock = {});
    ~MessageLoop();
    MessageLoop(const MessageLoop&) = delete;
    MessageLoop& operator=(const MessageLoop&) = delete;

    // Readable while tasks wait; -1 if the descriptor could not be made, in
    // which case a wait cannot be cut short by a post from another thread.
    int WakeFd() const { return wakeFd_; }

    // False for an empty task. Tasks run in the order posted, never inside this call.
    bool PostTask(std::function<void()> task);

    // Keys from here start at 2^63, above any key a caller picks by hand.
    TimerKey NewTimerKey() { return nextKey_++; }
    // Repeats every intervalMs (at least 1) until stopped; the same key restarts
    // the timer with the new interval and callback. False for an empty callback.
    bool StartTimer(TimerKey key, uint32_t intervalMs, std::function<void()> callback);
    bool StopTimer(TimerKey key);
    bool HasTimer(TimerKey key) const { return timers_.count(key) != 0; }

    // Runs tasks and due timers until nothing is ready; answers how many ran.
    size_t RunUntilIdle();
    // Runs ready work and waits for more until pred holds or timeout passes.
    bool RunUntil(const std::function<bool()>& pred, std::chrono::milliseconds timeout);
    // Waits up to timeout for something to be ready, then runs one round of it.
    size_t RunOnce(std::chrono::milliseconds timeout);
    // Time to the earliest timer (zero when one is due); empty with no timers.
    std::optional<std::chrono::milliseconds> NextTimerDelay() const;

private:
    struct Timer {
        std::chrono::milliseconds interval;
        TimePoint due;
        uint64_t order;
        std::shared_ptr<std::function<void()>> callback;
    };

    size_t RunRound();
    size_t RunQueuedTasks();
    size_t FireDueTimers(TimePoint now);
    bool HasReadyWork() const;
    void WaitForWake(std::chrono::milliseconds limit) const;
    void DrainWake() const;
    void Signal() const;

    Clock clock_;
    int wakeFd_ = -1;
    mutable std::mutex inboxMutex_;
    std::deque<std::function<void()>> inbox_;
    std::map<TimerKey, Timer> timers_;
    TimerKey nextKey_ = TimerKey{1} << 63;
    uint64_t nextOrder_ = 0;
};
