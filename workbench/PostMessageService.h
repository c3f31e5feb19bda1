#pragma once
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/Workbench.h"
#include "workbench/MessageLoop.h"

// Deferred calls and timers over the main loop. Post may be called from any
// thread; timers and ForgetClient belong to the loop's thread, the thread that
// makes the service. Clients are only ever called on that thread: a message
// posted from another thread is kept under the pointer it was posted with.
class PostMessageService final : public IQPostMessageService
{
public:
    explicit PostMessageService(MessageLoop& loop);
    ~PostMessageService();
    PostMessageService(const PostMessageService&) = delete;
    PostMessageService& operator=(const PostMessageService&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT Post(IQPostMessageClient* client, uint32_t value) override;
    // The same client and id again restarts the timer with the new interval.
    HRESULT SetTimer(IQTimerClient* client, uint32_t id, uint32_t ms) override;
    HRESULT KillTimer(IQTimerClient* client, uint32_t id) override;

    // Drops the queued messages and timers of a client that is going away: any
    // interface pointer it was given as on the loop's thread, or its IUnknown
    // identity, will do; a message posted from another thread is matched by the
    // pointer it was posted with. The client itself is not called.
    HRESULT ForgetClient(IUnknown* client) override;

    size_t PendingMessages() const;
    bool HasTimer(IQTimerClient* client, uint32_t id) const { return timers_.count({client, id}) != 0; }

private:
    struct Message {
        IQPostMessageClient* client;
        const IUnknown* raw;
        // Null when posted from another thread: the client may not be asked there.
        const IUnknown* identity;
        uint32_t value;
    };
    // Shared with the loop's tasks, so a task that outlives the service finds
    // nothing to deliver instead of a dangling service.
    struct Inbox {
        std::mutex mutex;
        std::map<uint64_t, Message> pending;
        uint64_t nextSerial = 1;
    };
    struct TimerEntry {
        MessageLoop::TimerKey key;
        const IUnknown* raw;
        const IUnknown* identity;
    };

    static const IUnknown* IdentityOf(IUnknown* object);
    static void Deliver(const std::weak_ptr<Inbox>& inbox, uint64_t serial);

    MessageLoop& loop_;
    const std::thread::id loopThread_;
    std::shared_ptr<Inbox> inbox_;
    std::map<std::pair<IQTimerClient*, uint32_t>, TimerEntry> timers_;
};
