#include "platform/catalog/DriverFactory.h"

#include <algorithm>
#include <strings.h>

#include "boundary/Ids.h"

DriverFactory::~DriverFactory()
{
    // Targets first: a target may still use its CPU while it stops.
    while (!drivers_.empty())
        drivers_.pop_back();
}

HRESULT DriverFactory::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::DriverFactory}, iid, static_cast<IQDriverFactory*>(this), out);
}

HRESULT DriverFactory::Keep(std::unique_ptr<PlatformDriver> driver, IUnknown** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (!driver || driver->Object() == nullptr)
        return E_FAIL;
    *out = driver->Object();
    drivers_.push_back(std::move(driver));
    return S_OK;
}

HRESULT DriverFactory::ReleaseDriver(IUnknown* object, int32_t)
{
    auto it =
        std::find_if(drivers_.begin(), drivers_.end(), [&](const auto& d) { return d->Object() == object; });
    if (object == nullptr || it == drivers_.end())
        return E_FAIL;
    drivers_.erase(it);
    return S_OK;
}

HRESULT DriverFactory::CheckCpuDriver(const std::string& name, int32_t, int32_t)
{
    const PlatformEntry* entry = table_.FindByCpu(name);
    return entry != nullptr && entry->makeCpu ? S_OK : E_FAIL;
}

HRESULT DriverFactory::CheckTargetDriver(const std::string& platform, int32_t, int32_t)
{
    const PlatformEntry* entry = table_.Find(platform);
    return entry != nullptr && entry->makeTarget ? S_OK : E_FAIL;
}

HRESULT DriverFactory::CheckReader(const std::string& name, int32_t, int32_t)
{
    const ReaderEntry* entry = table_.FindReader(name);
    return entry != nullptr && entry->make ? S_OK : E_FAIL;
}

HRESULT DriverFactory::CheckCpuDriverFor(const std::string& name, int32_t mode, int32_t a,
                                         const std::string& platform)
{
    const PlatformEntry* entry = table_.Find(platform);
    if (entry == nullptr || strcasecmp(entry->cpuDriver.c_str(), name.c_str()) != 0)
        return E_FAIL;
    return CheckCpuDriver(name, mode, a);
}

HRESULT DriverFactory::CheckReaderFor(const std::string& name, int32_t mode, int32_t a,
                                      const std::string& platform)
{
    const ReaderEntry* entry = table_.FindReader(name);
    if (entry == nullptr ||
        (!entry->platform.empty() && strcasecmp(entry->platform.c_str(), platform.c_str()) != 0))
        return E_FAIL;
    return CheckReader(name, mode, a);
}

HRESULT DriverFactory::CreateCpuDriver(const std::string& name, IQServiceRegistry* registry, int32_t, int32_t,
                                       int32_t, IUnknown** out)
{
    const PlatformEntry* entry = table_.FindByCpu(name);
    if (entry == nullptr || !entry->makeCpu) {
        if (out)
            *out = nullptr;
        return E_FAIL;
    }
    return Keep(entry->makeCpu(registry), out);
}

HRESULT DriverFactory::CreateCpuDriverFor(const std::string& name, IQServiceRegistry* registry, int32_t a,
                                          int32_t mode, int32_t b, const std::string& platform,
                                          IUnknown** out)
{
    if (Failed(CheckCpuDriverFor(name, mode, a, platform))) {
        if (out)
            *out = nullptr;
        return E_FAIL;
    }
    return CreateCpuDriver(name, registry, a, mode, b, out);
}

HRESULT DriverFactory::CreateTargetDriver(const std::string& platform, IQServiceRegistry* registry, int32_t,
                                          int32_t, int32_t, IUnknown** out)
{
    const PlatformEntry* entry = table_.Find(platform);
    if (entry == nullptr || !entry->makeTarget) {
        if (out)
            *out = nullptr;
        return E_FAIL;
    }
    return Keep(entry->makeTarget(registry), out);
}

HRESULT DriverFactory::CreateReader(const std::string& name, IQServiceRegistry* registry, int32_t, int32_t,
                                    int32_t, int32_t, IUnknown** out)
{
    const ReaderEntry* entry = table_.FindReader(name);
    if (entry == nullptr || !entry->make) {
        if (out)
            *out = nullptr;
        return E_FAIL;
    }
    return Keep(entry->make(registry), out);
}

HRESULT DriverFactory::CreateReaderFor(const std::string& name, IQServiceRegistry* registry, int32_t a,
                                       int32_t b, int32_t mode, int32_t c, const std::string& platform,
                                       IUnknown** out)
{
    if (Failed(CheckReaderFor(name, mode, a, platform))) {
        if (out)
            *out = nullptr;
        return E_FAIL;
    }
    return CreateReader(name, registry, a, b, mode, c, out);
}
