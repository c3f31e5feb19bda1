#pragma once
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/sim/SimExecutor.h"
#include "platform/sim/SimTypes.h"

// The simulator's threads and the target's run state. One thread executes Go and
// Step and calls the stop callback; a second one ends the running slice at a fixed
// period, so that a fault never needs a long replay from its checkpoint.
//
// Owned through a shared pointer that both threads also hold, so a target may even
// be destroyed from its own stop callback: the threads then finish on their own.
class SimRunner
{
public:
    using StopCallback = std::function<void(const StopInfo&)>;

    static std::shared_ptr<SimRunner> Start(std::unique_ptr<SimExecutor> executor, StopCallback onStop);
    ~SimRunner();
    SimRunner(const SimRunner&) = delete;
    SimRunner& operator=(const SimRunner&) = delete;

    // Stops a run, ends both threads and waits for them unless called on the
    // simulator thread itself.
    void Shutdown();

    SimResult Go();
    SimResult Step();
    SimResult Halt();
    // Reports a stop that happened outside a run (a reset) on the simulator thread.
    void Report(StopInfo info);
    bool Running() const;
    bool WaitUntilHalted(std::chrono::milliseconds timeout) const;

    // Runs access while the target is halted, keeping Go and Step out meanwhile.
    SimResult WhileHalted(const std::function<SimResult(SimExecutor&)>& access);
    // For the executor's calls that are safe in any state.
    SimExecutor& Executor() { return *executor_; }

private:
    enum class Command { Go, Step, Report };
    struct Job {
        Command command = Command::Report;
        StopInfo info;
    };

    SimRunner(std::unique_ptr<SimExecutor> executor, StopCallback onStop);
    SimResult Begin(Command command);
    void Work();
    void Tick();

    // Destroyed after the engine, so whatever the callback holds outlives it.
    StopCallback onStop_;
    std::unique_ptr<SimExecutor> executor_;
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::deque<Job> jobs_;
    bool running_ = false;
    bool quit_ = false;
    bool workerDone_ = false;
    std::atomic<bool> halt_{false};
    std::thread worker_;
    std::thread ticker_;
};
