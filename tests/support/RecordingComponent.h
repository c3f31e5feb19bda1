#pragma once
#include <functional>
#include <string>
#include <vector>

#include "boundary/Ids.h"
#include "boundary/interfaces/Component.h"

// A component that writes "name:param" to a shared log for every event and
// then runs an optional hook, so a test can act from inside a broadcast.
class RecordingComponent final : public IQComponent
{
public:
    RecordingComponent(std::string name, std::vector<std::string>& log) : name_(std::move(name)), log_(log) {}

    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerFrom({Ids::IUnknown, Ids::IQComponent}, iid, this, out);
    }
    TESSEL_NOT_REFCOUNTED

    HRESULT OnEvent(const Event& event) override
    {
        log_.push_back(name_ + ":" + std::to_string(event.param));
        if (onEvent)
            onEvent(event);
        return S_OK;
    }
    HRESULT Initialise(IQServiceRegistry*, int32_t) override { return S_OK; }
    HRESULT Reserved5() override { return E_NOTIMPL; }
    HRESULT Reserved6() override { return E_NOTIMPL; }
    HRESULT Terminate(int32_t) override { return S_OK; }

    std::function<void(const Event&)> onEvent;

private:
    std::string name_;
    std::vector<std::string>& log_;
};
