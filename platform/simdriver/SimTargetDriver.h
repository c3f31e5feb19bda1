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
#include "platform/simdriver/SimPlatformMemory.h"

// The target driver of the simulator. The target runs on its own thread; what
// it reports (stops, semihosting output) is queued there and handed to the
// main thread through the workbench's posted messages, where stops become
// EVENT_TARGET_STOPPED and output goes to the output window's "Target" tab.
class SimTargetDriver final : public PlatformDriver,
                              public IQTargetCore,
                              public IQPlatformRegisters,
                              public IQPostMessageClient
{
public:
    // Empty with a message when the simulator cannot be made.
    static std::unique_ptr<SimTargetDriver> Create(IQServiceRegistry* registry, const std::string& variant,
                                                   std::string& error);
    ~SimTargetDriver() override;

    IUnknown* Object() override { return static_cast<IQTargetCore*>(this); }
    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT Goodbye() override;
    HRESULT GetDescription(std::string& text) override;
    HRESULT SetCpuIdentity(uint32_t first, uint32_t second) override;
    HRESULT GetRegister(uint32_t index, uint32_t& value) override;
    HRESULT OnPostedMessage(uint32_t value) override;

    // The simulated target, for run control and loading.
    SimTarget& Target() { return *target_; }

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

    SimTargetDriver(IQServiceRegistry* registry, std::shared_ptr<Mailbox> mailbox);
    void Deliver(const Report& report);

    IQServiceRegistry* registry_;
    std::shared_ptr<Mailbox> mailbox_;
    std::unique_ptr<SimTarget> target_;
    std::unique_ptr<SimPlatformMemory> memory_;
    uint32_t cpuIdentity_ = 0;
};
