#include "workbench/MessageLoop.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

using std::chrono::milliseconds;

MessageLoop::MessageLoop(Clock clock)
    : clock_(clock ? std::move(clock) : Clock([] { return std::chrono::steady_clock::now(); })),
      wakeFd_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC))
{
}

MessageLoop::~MessageLoop()
{
    if (wakeFd_ >= 0)
        close(wakeFd_);
}

bool MessageLoop::PostTask(std::function<void()> task)
{
    if (!task)
        return false;
    {
        std::lock_guard<std::mutex> lock(inboxMutex_);
        inbox_.push_back(std::move(task));
    }
    Signal();
    return true;
}

bool MessageLoop::StartTimer(TimerKey key, uint32_t intervalMs, std::function<void()> callback)
{
    if (!callback)
        return false;
    // A zero interval would leave the timer due for ever and RunUntilIdle would never end.
    const milliseconds interval{std::max<uint32_t>(intervalMs, 1)};
    auto shared = std::make_shared<std::function<void()>>(std::move(callback));
    timers_.insert_or_assign(key, Timer{interval, clock_() + interval, nextOrder_++, std::move(shared)});
    return true;
}

bool MessageLoop::StopTimer(TimerKey key)
{
    return timers_.erase(key) == 1;
}

size_t MessageLoop::RunUntilIdle()
{
    size_t total = 0;
    while (size_t ran = RunRound())
        total += ran;
    return total;
}

bool MessageLoop::RunUntil(const std::function<bool()>& pred, milliseconds timeout)
{
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    for (;;) {
        if (pred())
            return true;
        RunUntilIdle();
        if (pred())
            return true;
        const auto now = std::chrono::steady_clock::now();
        if (now >= deadline)
            return false;
        milliseconds wait = std::chrono::ceil<milliseconds>(deadline - now);
        if (auto timer = NextTimerDelay())
            wait = std::min(wait, *timer);
        WaitForWake(wait);
    }
}

size_t MessageLoop::RunOnce(milliseconds timeout)
{
    if (!HasReadyWork()) {
        milliseconds wait = std::max(timeout, milliseconds{0});
        if (auto timer = NextTimerDelay())
            wait = std::min(wait, *timer);
        WaitForWake(wait);
    }
    return RunRound();
}

std::optional<milliseconds> MessageLoop::NextTimerDelay() const
{
    if (timers_.empty())
        return std::nullopt;
    auto earliest = std::min_element(timers_.begin(), timers_.end(), [](const auto& a, const auto& b) {
        return a.second.due < b.second.due;
    });
    const auto left = earliest->second.due - clock_();
    if (left <= decltype(left)::zero())
        return milliseconds{0};
    // Rounded up: waking a fraction early would only find nothing due and spin.
    return std::chrono::ceil<milliseconds>(left);
}

size_t MessageLoop::RunRound()
{
    DrainWake();
    size_t ran = RunQueuedTasks();
    return ran + FireDueTimers(clock_());
}

size_t MessageLoop::RunQueuedTasks()
{
    // Only what was queued when the round began: a task that posts again
    // must not keep timers from ever running.
    size_t count;
    {
        std::lock_guard<std::mutex> lock(inboxMutex_);
        count = inbox_.size();
    }
    for (size_t i = 0; i < count; ++i) {
        std::function<void()> task;
        {
            std::lock_guard<std::mutex> lock(inboxMutex_);
            task = std::move(inbox_.front());
            inbox_.pop_front();
        }
        task();
    }
    return count;
}

size_t MessageLoop::FireDueTimers(TimePoint now)
{
    size_t fired = 0;
    for (;;) {
        auto next = timers_.end();
        for (auto it = timers_.begin(); it != timers_.end(); ++it) {
            const Timer& t = it->second;
            if (t.due <= now && (next == timers_.end() ||
                                 std::pair(t.due, t.order) < std::pair(next->second.due, next->second.order)))
                next = it;
        }
        if (next == timers_.end())
            return fired;
        Timer& timer = next->second;
        // Rescheduled before the call, so the callback may stop or restart it;
        // after a long stall the missed ticks fold into one.
        timer.due += timer.interval;
        if (timer.due <= now)
            timer.due = now + timer.interval;
        auto callback = timer.callback;
        ++fired;
        (*callback)();
    }
}

bool MessageLoop::HasReadyWork() const
{
    {
        std::lock_guard<std::mutex> lock(inboxMutex_);
        if (!inbox_.empty())
            return true;
    }
    auto delay = NextTimerDelay();
    return delay && delay->count() == 0;
}

void MessageLoop::WaitForWake(milliseconds limit) const
{
    pollfd fd{wakeFd_, POLLIN, 0};
    const int ms = static_cast<int>(std::clamp<milliseconds::rep>(limit.count(), 0, INT_MAX));
    // A negative descriptor is skipped by poll, which then just waits out the time.
    while (poll(&fd, 1, ms) < 0 && errno == EINTR) {
    }
}

void MessageLoop::DrainWake() const
{
    if (wakeFd_ < 0)
        return;
    uint64_t value;
    while (read(wakeFd_, &value, sizeof value) < 0 && errno == EINTR) {
    }
}

void MessageLoop::Signal() const
{
    if (wakeFd_ < 0)
        return;
    const uint64_t one = 1;
    while (write(wakeFd_, &one, sizeof one) < 0 && errno == EINTR) {
    }
}
