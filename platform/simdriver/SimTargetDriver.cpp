#include "platform/simdriver/SimTargetDriver.h"

#include <cstdio>

#include "boundary/Ids.h"

namespace
{

constexpr uint32_t kReportsWaiting = 1;

std::string Hex(uint32_t value)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", value);
    return text;
}

} // namespace

std::unique_ptr<SimTargetDriver> SimTargetDriver::Create(IQServiceRegistry* registry,
                                                         const std::string& variant, std::string& error)
{
    auto mailbox = std::make_shared<Mailbox>();
    std::unique_ptr<SimTargetDriver> driver(new SimTargetDriver(registry, mailbox));
    // Resolved here, on the main thread: the simulator thread may not look
    // services up, but posting and the stop address are safe from any thread.
    auto* posts = GetServiceAs<IQPostMessageService>(registry, Ids::PostMessageService);
    auto* state = GetServiceAs<IQDebuggerState4>(registry, Ids::IQDebuggerState4);
    IQPostMessageClient* client = driver.get();
    auto post = [mailbox, posts, client](Report report) {
        {
            std::lock_guard<std::mutex> lock(mailbox->mutex);
            mailbox->reports.push_back(std::move(report));
        }
        if (posts != nullptr)
            posts->Post(client, kReportsWaiting);
    };
    SimTarget::Config config;
    config.variant = variant;
    config.onStop = [post, state](const StopInfo& stop) {
        if (state != nullptr)
            state->SetStopAddress(stop.pc);
        post(Report{true, stop, {}});
    };
    config.onOutput = [post](std::string_view text) { post(Report{false, {}, std::string(text)}); };
    driver->target_ = SimTarget::Create(std::move(config), &error);
    if (!driver->target_)
        return nullptr;
    driver->memory_ = std::make_unique<SimPlatformMemory>(*driver->target_);
    if (registry != nullptr) {
        registry->RegisterService(Ids::IQPlatformRegisters, static_cast<IQPlatformRegisters*>(driver.get()));
        SimPlatformMemory* memory = driver->memory_.get();
        registry->RegisterService(Ids::IQPlatformMemory, static_cast<IQPlatformMemory*>(memory));
        registry->RegisterService(Ids::IQPlatformMemory2, static_cast<IQPlatformMemory2*>(memory));
        registry->RegisterService(Ids::IQPlatformMemory3, static_cast<IQPlatformMemory3*>(memory));
        registry->RegisterService(Ids::IQPlatformMemory5, static_cast<IQPlatformMemory5*>(memory));
    }
    return driver;
}

SimTargetDriver::SimTargetDriver(IQServiceRegistry* registry, std::shared_ptr<Mailbox> mailbox)
    : registry_(registry), mailbox_(std::move(mailbox))
{
}

SimTargetDriver::~SimTargetDriver()
{
    // The simulator thread ends first, so nothing is queued after the queue is dropped.
    target_.reset();
    if (registry_ != nullptr) {
        registry_->UnregisterService(Ids::IQPlatformRegisters, static_cast<IQPlatformRegisters*>(this));
        SimPlatformMemory* memory = memory_.get();
        registry_->UnregisterService(Ids::IQPlatformMemory, static_cast<IQPlatformMemory*>(memory));
        registry_->UnregisterService(Ids::IQPlatformMemory2, static_cast<IQPlatformMemory2*>(memory));
        registry_->UnregisterService(Ids::IQPlatformMemory3, static_cast<IQPlatformMemory3*>(memory));
        registry_->UnregisterService(Ids::IQPlatformMemory5, static_cast<IQPlatformMemory5*>(memory));
        if (auto* posts = GetServiceAs<IQPostMessageService>(registry_, Ids::PostMessageService))
            posts->ForgetClient(static_cast<IQPostMessageClient*>(this));
    }
}

HRESULT SimTargetDriver::QueryInterface(const Guid& iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (iid == Ids::IUnknown || iid == Ids::TargetCore)
        *out = static_cast<IQTargetCore*>(this);
    else if (iid == Ids::IQPlatformRegisters)
        *out = static_cast<IQPlatformRegisters*>(this);
    return *out ? S_OK : E_NOINTERFACE;
}

HRESULT SimTargetDriver::Goodbye()
{
    if (target_ && target_->IsRunning()) {
        target_->Halt();
        target_->WaitUntilHalted(std::chrono::milliseconds(1000));
    }
    return S_OK;
}

HRESULT SimTargetDriver::GetDescription(std::string& text)
{
    text = "Tessel simulator\n" + std::string(target_->Variant() == "cortex-m4" ? "Cortex-M4" : "Cortex-M3");
    std::string regions;
    for (const auto& region : target_->Map().Regions())
        regions += (regions.empty() ? "" : ", ") + region.name + " " + Hex(region.base) + " " +
                   std::to_string(region.size / 1024) + " KiB";
    text += "\n" + regions;
    return S_OK;
}

HRESULT SimTargetDriver::SetCpuIdentity(uint32_t first, uint32_t)
{
    cpuIdentity_ = first;
    return S_OK;
}

HRESULT SimTargetDriver::GetRegister(uint32_t index, uint32_t& value)
{
    SimResult r = target_->ReadRegister(index);
    if (!r)
        return E_FAIL;
    value = r.value;
    return S_OK;
}

HRESULT SimTargetDriver::OnPostedMessage(uint32_t)
{
    std::deque<Report> reports;
    {
        std::lock_guard<std::mutex> lock(mailbox_->mutex);
        reports.swap(mailbox_->reports);
    }
    for (const auto& report : reports)
        Deliver(report);
    return S_OK;
}

void SimTargetDriver::Deliver(const Report& report)
{
    auto* out = GetServiceAs<IQOutputWindow>(registry_, Ids::OutputWindow);
    if (!report.isStop) {
        if (out != nullptr)
            out->AppendText("Target", report.output);
        return;
    }
    const StopInfo& stop = report.stop;
    std::string line;
    if (stop.reason == StopReason::Fault || stop.reason == StopReason::BreakpointInstruction)
        line = "Target stopped: " + stop.cause;
    else if (stop.reason == StopReason::Exit)
        line = "Target exited with code " + std::to_string(stop.exitCode);
    if (!line.empty() && out != nullptr)
        out->AppendText("Debug", line + " (pc " + Hex(stop.pc) + ")\r\n");
    if (registry_ != nullptr)
        registry_->Broadcast(Event{Ids::EVENT_TARGET_STOPPED, static_cast<int32_t>(stop.pc)});
}
