#include "platform/simdriver/SimTargetDriverBase.h"

#include <cstdio>

#include "boundary/Ids.h"
#include "platform/sim/SimDevice.h"
#include "platform/simdriver/SimSessionDevice.h"

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

SimTargetDriverBase::SimTargetDriverBase(IQServiceRegistry* registry)
    : registry_(registry), mailbox_(std::make_shared<Mailbox>())
{
}

bool SimTargetDriverBase::Start(const std::string& variant, std::string& error)
{
    // Resolved here, on the main thread: the simulator thread may not look
    // services up. Posting is the one call it makes out of its mailbox; what it
    // reports travels in the report alone, so that two reports queued before
    // the main thread looks keep their own addresses.
    auto* posts = GetServiceAs<IQPostMessageService>(registry_, Ids::PostMessageService);
    IQPostMessageClient* client = this;
    auto post = [mailbox = mailbox_, posts, client](Report report) {
        {
            std::lock_guard<std::mutex> lock(mailbox->mutex);
            mailbox->reports.push_back(std::move(report));
        }
        if (posts != nullptr)
            posts->Post(client, kReportsWaiting);
    };
    const SimSessionDevice device = SimSessionDevice::Read(registry_);
    std::optional<SimTarget::Config> chosen =
        SimDevice::Configure(device.choice, device.folder, variant, error);
    if (!chosen)
        return false;
    SimTarget::Config& config = *chosen;
    config.onStop = [post](const StopInfo& stop) { post(Report{true, stop, {}}); };
    config.onOutput = [post](std::string_view text) { post(Report{false, {}, std::string(text)}); };
    target_ = SimTarget::Create(std::move(config), &error);
    if (!target_)
        return false;
    if (registry_ != nullptr) {
        registry_->RegisterService(Ids::IQPlatformRegisters, static_cast<IQPlatformRegisters*>(this));
        registry_->RegisterService(Ids::ForwardTarget, static_cast<IQForwardTarget*>(this));
    }
    return true;
}

SimTargetDriverBase::~SimTargetDriverBase()
{
    if (!target_)
        return;
    // The simulator thread ends first, so nothing is queued after the queue is dropped.
    target_.reset();
    if (registry_ != nullptr) {
        registry_->UnregisterService(Ids::ForwardTarget, static_cast<IQForwardTarget*>(this));
        registry_->UnregisterService(Ids::IQPlatformRegisters, static_cast<IQPlatformRegisters*>(this));
        if (auto* posts = GetServiceAs<IQPostMessageService>(registry_, Ids::PostMessageService))
            posts->ForgetClient(static_cast<IQPostMessageClient*>(this));
    }
}

HRESULT SimTargetDriverBase::QueryInterface(const Guid& iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (iid == Ids::IUnknown || iid == Ids::TargetCore)
        *out = static_cast<IQTargetCore*>(this);
    else if (iid == Ids::IQPlatformRegisters)
        *out = static_cast<IQPlatformRegisters*>(this);
    else if (iid == Ids::ForwardTarget)
        *out = static_cast<IQForwardTarget*>(this);
    return *out ? S_OK : E_NOINTERFACE;
}

HRESULT SimTargetDriverBase::Goodbye()
{
    if (target_ && target_->IsRunning()) {
        target_->Halt();
        target_->WaitUntilHalted(std::chrono::milliseconds(1000));
    }
    return S_OK;
}

HRESULT SimTargetDriverBase::GetDescription(std::string& text)
{
    text = "Tessel simulator\n" + std::string(target_->Variant() == "cortex-m4" ? "Cortex-M4" : "Cortex-M3");
    text += "\n" + target_->Map().Summary();
    return S_OK;
}

HRESULT SimTargetDriverBase::SetCpuIdentity(uint32_t first, uint32_t)
{
    cpuIdentity_ = first;
    return S_OK;
}

HRESULT SimTargetDriverBase::GetRegister(uint32_t index, uint32_t& value)
{
    SimResult r = target_->ReadRegister(index);
    if (!r)
        return E_FAIL;
    value = r.value;
    return S_OK;
}

HRESULT SimTargetDriverBase::Forward(uint32_t& low, uint32_t& limit)
{
    const auto& regions = target_->Map().Regions();
    if (regions.empty())
        return E_FAIL;
    // The regions are sorted and never overlap: the first starts lowest, the last ends highest.
    low = regions.front().base;
    limit = static_cast<uint32_t>(regions.back().End() - 1);
    return S_OK;
}

HRESULT SimTargetDriverBase::OnPostedMessage(uint32_t)
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

void SimTargetDriverBase::Deliver(const Report& report)
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
