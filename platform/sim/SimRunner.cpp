#include "platform/sim/SimRunner.h"

#include <utility>

namespace
{
// Long enough that checkpoints cost nothing measurable, short enough that a replay
// after a fault and a Halt that missed its slice stay quick.
constexpr std::chrono::milliseconds kSlice{20};
} // namespace

std::shared_ptr<SimRunner> SimRunner::Start(std::unique_ptr<SimExecutor> executor, StopCallback onStop)
{
    std::shared_ptr<SimRunner> runner(new SimRunner(std::move(executor), std::move(onStop)));
    runner->worker_ = std::thread([self = runner] { self->Work(); });
    try {
        runner->ticker_ = std::thread([self = runner] { self->Tick(); });
    } catch (...) {
        runner->Shutdown();
        throw;
    }
    return runner;
}

SimRunner::SimRunner(std::unique_ptr<SimExecutor> executor, StopCallback onStop)
    : onStop_(std::move(onStop)), executor_(std::move(executor))
{
}

SimRunner::~SimRunner() = default;

void SimRunner::Shutdown()
{
    {
        std::lock_guard<std::mutex> lock(mutex_);
        if (quit_)
            return;
        quit_ = true;
        halt_ = true;
    }
    changed_.notify_all();
    executor_->Interrupt();
    if (worker_.joinable() && std::this_thread::get_id() == worker_.get_id()) {
        // Called from a callback: the threads hold this object and end by themselves.
        worker_.detach();
        ticker_.detach();
        return;
    }
    if (worker_.joinable())
        worker_.join();
    if (ticker_.joinable())
        ticker_.join();
}

SimResult SimRunner::Begin(Command command)
{
    {
        std::lock_guard<std::mutex> lock(mutex_);
        if (quit_)
            return SimResult::Fail(0, "target shut down");
        if (running_)
            return SimResult::Fail(0, "target running");
        running_ = true;
        halt_ = false;
        jobs_.push_back(Job{command, {}});
        // Under the lock: a stop callback may destroy the target, and with it
        // this condition, as soon as the worker sees the job.
        changed_.notify_all();
    }
    return SimResult::Ok();
}

SimResult SimRunner::Go()
{
    return Begin(Command::Go);
}

SimResult SimRunner::Step()
{
    return Begin(Command::Step);
}

SimResult SimRunner::Halt()
{
    {
        std::lock_guard<std::mutex> lock(mutex_);
        if (!running_)
            return SimResult::Fail(0, "target not running");
        halt_ = true;
    }
    executor_->Interrupt();
    return SimResult::Ok();
}

void SimRunner::Report(StopInfo info)
{
    {
        std::lock_guard<std::mutex> lock(mutex_);
        jobs_.push_back(Job{Command::Report, std::move(info)});
        changed_.notify_all();
    }
}

bool SimRunner::Running() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return running_;
}

bool SimRunner::WaitUntilHalted(std::chrono::milliseconds timeout) const
{
    std::unique_lock<std::mutex> lock(mutex_);
    return changed_.wait_for(lock, timeout, [this] { return !running_; });
}

SimResult SimRunner::WhileHalted(const std::function<SimResult(SimExecutor&)>& access)
{
    std::lock_guard<std::mutex> lock(mutex_);
    if (quit_)
        return SimResult::Fail(0, "target shut down");
    if (running_)
        return SimResult::Fail(0, "target running");
    return access(*executor_);
}

void SimRunner::Work()
{
    for (;;) {
        Job job;
        {
            std::unique_lock<std::mutex> lock(mutex_);
            changed_.wait(lock, [this] { return quit_ || !jobs_.empty(); });
            if (quit_)
                break;
            job = std::move(jobs_.front());
            jobs_.pop_front();
        }
        if (job.command == Command::Go)
            job.info = executor_->Run(halt_);
        else if (job.command == Command::Step)
            job.info = executor_->Step();
        {
            std::lock_guard<std::mutex> lock(mutex_);
            if (job.command != Command::Report)
                running_ = false;
            if (quit_)
                break;
        }
        changed_.notify_all();
        if (onStop_) {
            // The owner's exception has nowhere to go on this thread.
            try {
                onStop_(job.info);
            } catch (...) {
            }
        }
    }
    {
        std::lock_guard<std::mutex> lock(mutex_);
        running_ = false;
        workerDone_ = true;
    }
    changed_.notify_all();
}

void SimRunner::Tick()
{
    std::unique_lock<std::mutex> lock(mutex_);
    while (!workerDone_) {
        if (!running_ && !quit_) {
            changed_.wait(lock, [this] { return running_ || quit_ || workerDone_; });
            continue;
        }
        if (changed_.wait_for(lock, kSlice, [this] { return workerDone_ || (!running_ && !quit_); }))
            continue;
        executor_->Interrupt();
    }
}
