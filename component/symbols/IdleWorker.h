#pragma once
#include <atomic>
#include <functional>
#include <sys/types.h>
#include <thread>

// One background job at the lowest priority the system grants without
// privileges, so that it never competes with the workbench. Whoever waits for
// it lifts it to normal priority first: a user who wants the result now should
// not wait at idle priority.
class IdleWorker
{
public:
    IdleWorker() = default;
    IdleWorker(const IdleWorker&) = delete;
    IdleWorker& operator=(const IdleWorker&) = delete;
    ~IdleWorker() { Wait(); }

    // Throws std::system_error when the system has no thread to give.
    void Start(std::function<void()> job);
    // Returns at once when no job was started since the last wait.
    void Wait();

private:
    void Run(const std::function<void()>& job);

    std::thread thread_;
    // Set by the waiter, cleared by the worker as it ends.
    std::atomic<bool> waiting_{false};
    // The worker's own id while it runs at a lowered nice value, else 0.
    std::atomic<pid_t> nicedThread_{0};
};
