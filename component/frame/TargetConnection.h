#pragma once
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "boundary/interfaces/Platform.h"
#include "boundary/interfaces/Workbench.h"

// The session's hold on its platform: the CPU driver, the target driver and
// the object reader, each kept as the interface it was asked for, what the
// drivers say of themselves, and the one way a stop report comes into the
// component. It does what is asked of the drivers and the platform catalogue;
// what the session tells others about it (events, listeners, messages) is the
// debugger state's.
class TargetConnection
{
public:
    TargetConnection() = default;
    TargetConnection(const TargetConnection&) = delete;
    TargetConnection& operator=(const TargetConnection&) = delete;

    // What the state fetched at its initialisation, once.
    void Attach(IQServiceRegistry* registry, IQHostExtras* extras, IQPlatformList* platforms,
                IQDriverFactory* factory);
    void Detach();

    // Holding the core is what being connected means.
    bool IsConnected() const { return core_ != nullptr; }
    bool HasTarget() const { return target_ != nullptr; }

    // The CPU driver that serves an installed platform; false when the platform
    // is not installed or there is no catalogue or factory to ask.
    bool FindCpuDriver(const std::string& platform, std::string& cpuName) const;
    // Makes the CPU driver and the target driver, hands the CPU's identity to
    // the target and reads both descriptions; false with the message for the
    // user when one cannot be made, and then nothing is held.
    bool CreateDrivers(const std::string& platform, const std::string& cpuName, bool functionFamily,
                       std::string& error);
    // The driver's own goodbye; false when no target is held.
    bool SayGoodbye();
    // Gives the drivers back to the factory and forgets what they said.
    void ReleaseTarget();
    void ReleaseCpu();
    void ClearDescriptions();

    // The named reader, unless that reader is held already (names compared
    // without regard to case). A reader that cannot be made is no error.
    void OpenReader(const std::string& name, bool functionFamily);
    void ReleaseReader();
    bool HasReader() const { return reader_ != nullptr; }
    const std::string& ReaderName() const { return readerName_; }

    // An empty name or "<none>" names no platform (nor reader).
    static bool NamesNothing(const std::string& name);
    const std::string& PlatformName() const { return platformName_; }
    void SetPlatformName(const std::string& name) { platformName_ = name; }
    void ForgetNames();

    // Questions to the platform catalogue.
    bool IsFunctionPlatform(const std::string& platform) const;
    bool IsAlwaysConnectedPlatform(const std::string& platform) const;
    bool HasCatalogue() const { return platforms_ != nullptr; }
    // The reader's name as the catalogue spells it; the name itself when unknown.
    std::string SpellReader(const std::string& name) const;
    std::vector<std::string> ListReaders(const std::string& platform) const;

    // What the drivers said at connection.
    const std::string& CpuText(size_t line) const { return cpuText_[line]; }
    const std::string& TargetText(size_t line) const { return targetText_[line]; }
    bool IsAlwaysConnected() const { return alwaysConnected_; }
    // Whether the target driver lets go now; without a control face, whether the runner is idle.
    bool CanDisconnect(bool runnerIdle) const;
    HRESULT GetTargetNames(std::string& a, std::string& b) const;
    HRESULT GetTargetKind() const;
    // Whether the target driver takes over what follows a download, to do it at its next stop.
    bool TakesOverDownload() const { return control_ != nullptr && control_->TakeOverDownload() == S_OK; }
    // A face the target driver offers beyond the ones held; null without a target.
    template <class T> T* TargetFace(const Guid& iid) const
    {
        return target_ ? QueryAs<T>(target_, iid) : nullptr;
    }
    // The CPU's default for limiting disassembly memory access; 1 without an options face.
    HRESULT LimitDisassemblyDefault() const;

    // A stop address a platform hands over on a thread of its own; the stop
    // event that follows takes it in place of the event's own.
    void SetStopAddress(uint32_t address);
    uint32_t TakeStopAddress(uint32_t reported);

    // The workbench's mode for making drivers and readers.
    int32_t DriverMode() const;

private:
    // Hands a driver back to the factory that made it.
    void GiveBack(IUnknown*& driver);

    IQPlatformList* platforms_ = nullptr;
    IQDriverFactory* factory_ = nullptr;
    IQHostExtras* hostExtras_ = nullptr;
    IQServiceRegistry* registry_ = nullptr;

    IUnknown* cpuDriver_ = nullptr;
    IQCpuDetails* cpuDetails_ = nullptr;
    IQCpuOptions* cpuOptions_ = nullptr;
    IUnknown* target_ = nullptr;
    IQTargetCore* core_ = nullptr;
    IQTargetControl* control_ = nullptr;
    IQTargetKind* kind_ = nullptr;
    IUnknown* reader_ = nullptr;

    std::string platformName_, readerName_;
    bool alwaysConnected_ = false;
    std::string cpuText_[2], targetText_[3];

    std::mutex pendingLock_;
    uint32_t pendingStop_ = 0;
    bool pendingValid_ = false;
};
