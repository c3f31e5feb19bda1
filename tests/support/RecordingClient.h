#pragma once
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "boundary/Ids.h"
#include "boundary/interfaces/Component.h"

// A client of both deferred calls and timers, logging "name:post:value" and
// "name:timer:id". Its identity is its post-message side, as a real object
// with several interfaces answers one fixed pointer for IUnknown.
class RecordingClient final : public IQPostMessageClient, public IQTimerClient
{
public:
    RecordingClient(std::string name, std::vector<std::string>& log) : name_(std::move(name)), log_(log) {}

    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        askedOn.push_back(std::this_thread::get_id());
        return AnswerFrom({Ids::IUnknown, Ids::IQPostMessageClient}, iid, Identity(), out);
    }
    TESSEL_NOT_REFCOUNTED

    HRESULT OnPostedMessage(uint32_t value) override
    {
        log_.push_back(name_ + ":post:" + std::to_string(value));
        if (onPost)
            onPost(value);
        return S_OK;
    }
    HRESULT OnTimer(uint32_t id) override
    {
        log_.push_back(name_ + ":timer:" + std::to_string(id));
        if (onTimer)
            onTimer(id);
        return S_OK;
    }

    IUnknown* Identity() { return static_cast<IQPostMessageClient*>(this); }
    IQTimerClient* Timer() { return this; }

    std::function<void(uint32_t)> onPost;
    std::function<void(uint32_t)> onTimer;
    // The threads QueryInterface was called on.
    std::vector<std::thread::id> askedOn;

private:
    std::string name_;
    std::vector<std::string>& log_;
};
