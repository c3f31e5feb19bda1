#pragma once
#include <memory>
#include <vector>

#include "boundary/interfaces/Platform.h"
#include "platform/catalog/PlatformTable.h"

// Makes and releases the drivers of the installed platforms. It owns every
// driver it made until the driver is released, or until it goes itself.
class DriverFactory final : public IQDriverFactory
{
public:
    explicit DriverFactory(const PlatformTable& table) : table_(table) {}
    ~DriverFactory();

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT ReleaseDriver(IUnknown* object, int32_t flag) override;
    HRESULT CreateCpuDriver(const std::string& name, IQServiceRegistry* registry, int32_t a, int32_t mode,
                            int32_t b, IUnknown** out) override;
    HRESULT CreateTargetDriver(const std::string& platform, IQServiceRegistry* registry, int32_t a,
                               int32_t mode, int32_t b, IUnknown** out) override;
    HRESULT CreateReader(const std::string& name, IQServiceRegistry* registry, int32_t a, int32_t b,
                         int32_t mode, int32_t c, IUnknown** out) override;
    HRESULT CheckCpuDriver(const std::string& name, int32_t mode, int32_t a) override;
    HRESULT CheckTargetDriver(const std::string& platform, int32_t mode, int32_t a) override;
    HRESULT CheckReader(const std::string& name, int32_t mode, int32_t a) override;
    HRESULT CreateCpuDriverFor(const std::string& name, IQServiceRegistry* registry, int32_t a, int32_t mode,
                               int32_t b, const std::string& platform, IUnknown** out) override;
    HRESULT CreateReaderFor(const std::string& name, IQServiceRegistry* registry, int32_t a, int32_t b,
                            int32_t mode, int32_t c, const std::string& platform, IUnknown** out) override;
    HRESULT CheckCpuDriverFor(const std::string& name, int32_t mode, int32_t a,
                              const std::string& platform) override;
    HRESULT CheckReaderFor(const std::string& name, int32_t mode, int32_t a,
                           const std::string& platform) override;

    size_t Alive() const { return drivers_.size(); }

private:
    HRESULT Keep(std::unique_ptr<PlatformDriver> driver, IUnknown** out);

    const PlatformTable& table_;
    std::vector<std::unique_ptr<PlatformDriver>> drivers_;
};
