#include "workbench/PostMessageService.h"

#include <new>

#include "boundary/Ids.h"

PostMessageService::PostMessageService(MessageLoop& loop)
    : loop_(loop), loopThread_(std::this_thread::get_id()), inbox_(std::make_shared<Inbox>())
{
}

PostMessageService::~PostMessageService()
{
    // The loop's timers call into this object, so none may outlive it.
    for (const auto& [key, entry] : timers_)
        loop_.StopTimer(entry.key);
}

HRESULT PostMessageService::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::PostMessageService}, iid, static_cast<IQPostMessageService*>(this),
                      out);
}

HRESULT PostMessageService::Post(IQPostMessageClient* client, uint32_t value)
{
    if (client == nullptr)
        return E_POINTER;
    const IUnknown* identity = std::this_thread::get_id() == loopThread_ ? IdentityOf(client) : nullptr;
    uint64_t serial = 0;
    try {
        std::lock_guard<std::mutex> lock(inbox_->mutex);
        serial = inbox_->nextSerial++;
        inbox_->pending.emplace(serial, Message{client, client, identity, value});
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    bool queued = false;
    try {
        queued = loop_.PostTask([inbox = std::weak_ptr<Inbox>(inbox_), serial] { Deliver(inbox, serial); });
    } catch (const std::bad_alloc&) {
    }
    if (!queued) {
        std::lock_guard<std::mutex> lock(inbox_->mutex);
        inbox_->pending.erase(serial);
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

HRESULT PostMessageService::SetTimer(IQTimerClient* client, uint32_t id, uint32_t ms)
{
    if (client == nullptr)
        return E_POINTER;
    auto callback = [client, id] { client->OnTimer(id); };
    auto found = timers_.find({client, id});
    MessageLoop::TimerKey key = 0;
    try {
        if (found != timers_.end())
            return loop_.StartTimer(found->second.key, ms, callback) ? S_OK : E_FAIL;
        key = loop_.NewTimerKey();
        loop_.StartTimer(key, ms, callback);
        timers_.emplace(std::pair(client, id), TimerEntry{key, client, IdentityOf(client)});
    } catch (const std::bad_alloc&) {
        // A timer the table does not know of could never be killed.
        if (key != 0)
            loop_.StopTimer(key);
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

HRESULT PostMessageService::KillTimer(IQTimerClient* client, uint32_t id)
{
    if (client == nullptr)
        return E_POINTER;
    auto found = timers_.find({client, id});
    if (found == timers_.end())
        return E_FAIL;
    loop_.StopTimer(found->second.key);
    timers_.erase(found);
    return S_OK;
}

HRESULT PostMessageService::ForgetClient(IUnknown* client)
{
    if (client == nullptr)
        return E_POINTER;
    // The pointer may be one interface of an object that was given to us as
    // another; the identity recorded with any entry made under this pointer
    // finds those too, without calling into an object being torn down.
    const IUnknown* identity = client;
    {
        std::lock_guard<std::mutex> lock(inbox_->mutex);
        for (const auto& [serial, message] : inbox_->pending)
            if (message.raw == client && message.identity != nullptr)
                identity = message.identity;
    }
    for (const auto& [key, entry] : timers_)
        if (entry.raw == client)
            identity = entry.identity;
    auto matches = [&](const IUnknown* raw, const IUnknown* id) {
        return raw == client || (id != nullptr && (id == client || id == identity));
    };
    {
        std::lock_guard<std::mutex> lock(inbox_->mutex);
        std::erase_if(inbox_->pending,
                      [&](const auto& item) { return matches(item.second.raw, item.second.identity); });
    }
    for (auto it = timers_.begin(); it != timers_.end();) {
        if (matches(it->second.raw, it->second.identity)) {
            loop_.StopTimer(it->second.key);
            it = timers_.erase(it);
        } else {
            ++it;
        }
    }
    return S_OK;
}

size_t PostMessageService::PendingMessages() const
{
    std::lock_guard<std::mutex> lock(inbox_->mutex);
    return inbox_->pending.size();
}

const IUnknown* PostMessageService::IdentityOf(IUnknown* object)
{
    // Asked while the client is alive, so ForgetClient can match the identity
    // later without calling into an object that is being torn down.
    IUnknown* identity = QueryAs<IUnknown>(object, Ids::IUnknown);
    return identity != nullptr ? identity : object;
}

void PostMessageService::Deliver(const std::weak_ptr<Inbox>& weak, uint64_t serial)
{
    auto inbox = weak.lock();
    if (!inbox)
        return;
    Message message{};
    {
        std::lock_guard<std::mutex> lock(inbox->mutex);
        auto it = inbox->pending.find(serial);
        if (it == inbox->pending.end())
            return;
        message = it->second;
        inbox->pending.erase(it);
    }
    message.client->OnPostedMessage(message.value);
}
