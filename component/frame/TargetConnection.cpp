#include "component/frame/TargetConnection.h"

#include <strings.h>

#include <algorithm>

#include "boundary/Ids.h"

namespace
{

// Lines of a driver's description; text past the last wanted line is dropped.
template <size_t N> void SplitDescription(const std::string& text, std::string (&lines)[N])
{
    size_t start = 0;
    for (size_t i = 0; i < N; ++i) {
        size_t end = text.find('\n', start);
        lines[i] = start == std::string::npos
                       ? std::string()
                       : text.substr(start, end == std::string::npos ? end : end - start);
        start = end == std::string::npos ? end : end + 1;
    }
}

bool SameName(const std::string& a, const std::string& b)
{
    return strcasecmp(a.c_str(), b.c_str()) == 0;
}

} // namespace

bool TargetConnection::NamesNothing(const std::string& name)
{
    return name.empty() || SameName(name, "<none>");
}

void TargetConnection::Attach(IQServiceRegistry* registry, IQHostExtras* extras, IQPlatformList* platforms,
                              IQDriverFactory* factory)
{
    registry_ = registry;
    hostExtras_ = extras;
    platforms_ = platforms;
    factory_ = factory;
}

void TargetConnection::Detach()
{
    registry_ = nullptr;
    hostExtras_ = nullptr;
    platforms_ = nullptr;
    factory_ = nullptr;
}

int32_t TargetConnection::DriverMode() const
{
    return hostExtras_ != nullptr && hostExtras_->GetDriverCreationMode() == S_OK ? 1 : 0;
}

bool TargetConnection::FindCpuDriver(const std::string& platform, std::string& cpuName) const
{
    return platforms_ != nullptr && factory_ != nullptr &&
           Succeeded(platforms_->GetCpuDriverName(platform, cpuName));
}

bool TargetConnection::CreateDrivers(const std::string& platform, const std::string& cpuName,
                                     bool functionFamily, std::string& error)
{
    const int32_t mode = DriverMode();
    IUnknown* cpu = nullptr;
    HRESULT hr = functionFamily
                     ? (factory_->CheckCpuDriverFor(cpuName, mode, 0, platform) == S_OK
                            ? factory_->CreateCpuDriverFor(cpuName, registry_, 0, mode, 0, platform, &cpu)
                            : E_FAIL)
                     : (factory_->CheckCpuDriver(cpuName, mode, 0) == S_OK
                            ? factory_->CreateCpuDriver(cpuName, registry_, 0, mode, 0, &cpu)
                            : E_FAIL);
    if (Failed(hr) || cpu == nullptr) {
        error = "Cpu Driver Missing : " + cpuName;
        return false;
    }
    IUnknown* target = nullptr;
    hr = factory_->CheckTargetDriver(platform, mode, 0) == S_OK
             ? factory_->CreateTargetDriver(platform, registry_, 0, mode, 0, &target)
             : E_FAIL;
    if (Failed(hr) || target == nullptr) {
        factory_->ReleaseDriver(cpu, -1);
        error = "Target device driver missing, or connection cancelled: " + platform;
        return false;
    }
    cpuDriver_ = cpu;
    cpuDetails_ = QueryAs<IQCpuDetails>(cpu, Ids::CpuDetails);
    cpuOptions_ = QueryAs<IQCpuOptions>(cpuDetails_, Ids::CpuOptions);
    target_ = target;
    core_ = QueryAs<IQTargetCore>(target, Ids::TargetCore);
    control_ = QueryAs<IQTargetControl>(target, Ids::TargetControl);
    kind_ = QueryAs<IQTargetKind>(target, Ids::TargetKind);

    uint32_t first = 0, second = 0;
    std::string text;
    if (cpuDetails_ != nullptr) {
        cpuDetails_->GetIdentity(first, second);
        cpuDetails_->GetDescription(text);
    }
    SplitDescription(text, cpuText_);
    text.clear();
    if (core_ != nullptr) {
        core_->SetCpuIdentity(first, second);
        core_->GetDescription(text);
    }
    SplitDescription(text, targetText_);
    alwaysConnected_ = IsAlwaysConnectedPlatform(platform);
    return true;
}

bool TargetConnection::SayGoodbye()
{
    if (control_ != nullptr)
        control_->Goodbye();
    else if (core_ != nullptr)
        core_->Goodbye();
    else
        return false;
    return true;
}

void TargetConnection::GiveBack(IUnknown*& driver)
{
    if (driver != nullptr && factory_ != nullptr)
        factory_->ReleaseDriver(driver, -1);
    driver = nullptr;
}

void TargetConnection::ReleaseTarget()
{
    GiveBack(target_);
    core_ = nullptr;
    control_ = nullptr;
    kind_ = nullptr;
}

void TargetConnection::ReleaseCpu()
{
    GiveBack(cpuDriver_);
    cpuDetails_ = nullptr;
    cpuOptions_ = nullptr;
}

void TargetConnection::ClearDescriptions()
{
    alwaysConnected_ = false;
    for (auto& line : cpuText_)
        line.clear();
    for (auto& line : targetText_)
        line.clear();
}

void TargetConnection::OpenReader(const std::string& name, bool functionFamily)
{
    if (reader_ != nullptr && SameName(name, readerName_))
        return;
    ReleaseReader();
    if (factory_ == nullptr)
        return;
    const int32_t mode = DriverMode();
    IUnknown* reader = nullptr;
    HRESULT hr =
        functionFamily
            ? (factory_->CheckReaderFor(name, mode, 0, platformName_) == S_OK
                   ? factory_->CreateReaderFor(name, registry_, 0, -1, mode, 0, platformName_, &reader)
                   : E_FAIL)
            : (factory_->CheckReader(name, mode, 0) == S_OK
                   ? factory_->CreateReader(name, registry_, 0, -1, mode, 0, &reader)
                   : E_FAIL);
    if (Succeeded(hr) && reader != nullptr) {
        reader_ = reader;
        readerName_ = name;
    }
}

void TargetConnection::ReleaseReader()
{
    GiveBack(reader_);
}

void TargetConnection::ForgetNames()
{
    platformName_.clear();
    readerName_.clear();
}

bool TargetConnection::IsFunctionPlatform(const std::string& platform) const
{
    return platforms_ != nullptr && platforms_->IsFunctionPlatform(platform) == S_OK;
}

bool TargetConnection::IsAlwaysConnectedPlatform(const std::string& platform) const
{
    uint32_t always = 0;
    return platforms_ != nullptr && Succeeded(platforms_->GetPlatformProperty(platform, 1, always)) &&
           always != 0;
}

std::string TargetConnection::SpellReader(const std::string& name) const
{
    std::string spelled = name;
    int32_t index = -1;
    if (platforms_ != nullptr && Succeeded(platforms_->FindReader(name, index)))
        platforms_->GetReaderName(index, spelled);
    return spelled;
}

std::vector<std::string> TargetConnection::ListReaders(const std::string& platform) const
{
    std::vector<std::string> list;
    if (platforms_ == nullptr)
        return list;
    const bool named = !NamesNothing(platform);
    std::string name;
    for (int32_t i = 0; Succeeded(platforms_->GetReaderName(i, name)); ++i) {
        if (std::find(list.begin(), list.end(), name) != list.end())
            continue;
        std::string owner;
        // A reader of one platform is listed for that platform alone; the
        // general readers for the platforms of the rich kind.
        if (named && platforms_->GetReaderPlatform(i, owner) == S_OK) {
            if (IsFunctionPlatform(platform) && owner == platform)
                list.push_back(name);
        } else if (!IsFunctionPlatform(platform)) {
            list.push_back(name);
        }
    }
    return list;
}

bool TargetConnection::CanDisconnect(bool runnerIdle) const
{
    return control_ != nullptr ? control_->CanDisconnect() == S_OK : runnerIdle;
}

HRESULT TargetConnection::GetTargetNames(std::string& a, std::string& b) const
{
    auto* names = QueryAs<IQTargetNames>(target_, Ids::TargetNames);
    return names != nullptr && names->GetTargetNames(a, b) == S_OK ? S_OK : S_FALSE;
}

HRESULT TargetConnection::GetTargetKind() const
{
    if (!IsConnected())
        return E_FAIL;
    return kind_ != nullptr && kind_->GetKind() == S_OK ? S_OK : S_FALSE;
}

HRESULT TargetConnection::LimitDisassemblyDefault() const
{
    return cpuOptions_ != nullptr ? cpuOptions_->GetLimitDisassemblyDefault() : 1;
}

void TargetConnection::SetStopAddress(uint32_t address)
{
    std::lock_guard<std::mutex> lock(pendingLock_);
    pendingStop_ = address;
    pendingValid_ = true;
}

uint32_t TargetConnection::TakeStopAddress(uint32_t reported)
{
    std::lock_guard<std::mutex> lock(pendingLock_);
    if (!pendingValid_)
        return reported;
    pendingValid_ = false;
    return pendingStop_;
}
