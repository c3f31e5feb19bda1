#include "component/symbols/IdleWorker.h"

#include <pthread.h>
#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

namespace
{

constexpr int LowestNice = 19;

// A refusal is fine: the job only runs at a less friendly priority.
void SetNormalPolicy(pthread_t thread)
{
    sched_param param{};
    (void)pthread_setschedparam(thread, SCHED_OTHER, &param);
}

void RaiseNice(pid_t thread)
{
    if (thread != 0)
        (void)setpriority(PRIO_PROCESS, static_cast<id_t>(thread), 0);
}

} // namespace

void IdleWorker::Start(std::function<void()> job)
{
    Wait();
    thread_ = std::thread([this, job = std::move(job)] { Run(job); });
}

void IdleWorker::Run(const std::function<void()>& job)
{
    sched_param param{};
    if (pthread_setschedparam(pthread_self(), SCHED_IDLE, &param) != 0) {
        // A nice value set through the thread's own id stays with this thread.
        const pid_t self = gettid();
        if (setpriority(PRIO_PROCESS, static_cast<id_t>(self), LowestNice) == 0)
            nicedThread_ = self;
    }
    // A waiter that came before the lowering could not lift it.
    if (waiting_) {
        SetNormalPolicy(pthread_self());
        RaiseNice(nicedThread_);
    }
    job();
    nicedThread_ = 0;
    waiting_ = false;
}

void IdleWorker::Wait()
{
    if (!thread_.joinable())
        return;
    waiting_ = true;
    SetNormalPolicy(thread_.native_handle());
    RaiseNice(nicedThread_);
    thread_.join();
}
