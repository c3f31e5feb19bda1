#pragma once
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/Workbench.h"
#include "workbench/MessageLoop.h"

// Deferred calls and timers over the main loop. Post may be called from any
// thread; timers and ForgetClient belong to the loop's thread.
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
    // interface pointer it was given as, or its IUnknown identity, will do. The
    // client itself is not called.
    HRESULT ForgetClient(IUnknown* client) override;

    size_t PendingMessages() const;
    bool HasTimer(IQTimerClient* client, uint32_t id) const { return timers_.count({client, id}) != 0; }

private:
    struct Message {
        IQPostMessageClient* client;
        const IUnknown* raw;
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
    std::shared_ptr<Inbox> inbox_;
    std::map<std::pair<IQTimerClient*, uint32_t>, TimerEntry> timers_;
};
