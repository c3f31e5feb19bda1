#pragma once
#include <deque>
#include <memory>
#include <mutex>
#include <string>

#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/Debugger.h"
#include "boundary/interfaces/Platform.h"
#include "boundary/interfaces/Workbench.h"
#include "platform/catalog/PlatformTable.h"
#include "platform/sim/SimTarget.h"

// What every target driver over the simulator shares, whichever face its
// memory has: the simulated target itself, its registers, its address limits,
// and the road of its reports to the main thread. The target runs on its own
// thread; what it reports (stops, semihosting output) is queued there and
// handed to the main thread through the workbench's posted messages, where
// stops become EVENT_TARGET_STOPPED and output goes to the output window's
// "Target" tab.
class SimTargetDriverBase : public PlatformDriver,
                            public IQTargetCore,
                            public IQPlatformRegisters,
                            public IQPostMessageClient,
                            public IQForwardTarget
{
public:
    ~SimTargetDriverBase() override;
    SimTargetDriverBase(const SimTargetDriverBase&) = delete;
    SimTargetDriverBase& operator=(const SimTargetDriverBase&) = delete;

    IUnknown* Object() override { return static_cast<IQTargetCore*>(this); }
    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT Goodbye() override;
    HRESULT GetDescription(std::string& text) override;
    HRESULT SetCpuIdentity(uint32_t first, uint32_t second) override;
    HRESULT GetRegister(uint32_t index, uint32_t& value) override;
    HRESULT OnPostedMessage(uint32_t value) override;
    // The lowest start and the highest end of the memory map.
    HRESULT Forward(uint32_t& low, uint32_t& limit) override;

    // The simulated target, for run control and loading.
    SimTarget& Target() { return *target_; }

protected:
    explicit SimTargetDriverBase(IQServiceRegistry* registry);
    // Makes the simulator as the device the session chose (the variant's own
    // when none) and registers the services every simulated target offers;
    // false with a message when the simulator cannot be made.
    bool Start(const std::string& variant, std::string& error);
    IQServiceRegistry* Registry() const { return registry_; }

private:
    struct Report {
        bool isStop = false;
        StopInfo stop;
        std::string output;
    };
    // Shared with the simulator thread's callbacks.
    struct Mailbox {
        std::mutex mutex;
        std::deque<Report> reports;
    };

    void Deliver(const Report& report);

    IQServiceRegistry* registry_;
    std::shared_ptr<Mailbox> mailbox_;
    std::unique_ptr<SimTarget> target_;
    uint32_t cpuIdentity_ = 0;
};
