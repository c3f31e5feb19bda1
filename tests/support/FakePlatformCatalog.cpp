#include "support/FakePlatformCatalog.h"

#include <strings.h>

#include <algorithm>

namespace
{

const std::vector<std::string> kPlatforms = {"sim", "pdsim", "halfsim", "ghostcpu"};
const std::vector<std::pair<std::string, std::string>> kReaders = {{"elf", ""}, {"pdobj", "pdsim"}};

} // namespace

// One driver object: CPU details and options, or a target's core and control.
struct FakePlatformCatalog::Driver : IQCpuDetails, IQCpuOptions, IQTargetCore, IQTargetControl {
    Driver(FakePlatformCatalog& owner, std::string kind, std::string name)
        : owner(owner), kind(std::move(kind)), name(std::move(name))
    {
    }
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        *out = nullptr;
        if (kind == "cpu" && (iid == Ids::IUnknown || iid == Ids::CpuDetails))
            *out = static_cast<IQCpuDetails*>(this);
        else if (kind == "cpu" && iid == Ids::CpuOptions && owner.limitDefault)
            *out = static_cast<IQCpuOptions*>(this);
        else if (kind == "target" && (iid == Ids::IUnknown || iid == Ids::TargetCore))
            *out = static_cast<IQTargetCore*>(this);
        else if (kind == "target" && iid == Ids::TargetControl && owner.targetHasControl)
            *out = static_cast<IQTargetControl*>(this);
        else if (kind == "reader" && iid == Ids::IUnknown)
            *out = static_cast<IQCpuDetails*>(this);
        return *out ? S_OK : E_NOINTERFACE;
    }
    uint32_t AddRef() override { return 1; }
    uint32_t Release() override { return 0; }
    HRESULT GetIdentity(uint32_t& a, uint32_t& b) override
    {
        a = 3;
        b = 7;
        return S_OK;
    }
    HRESULT GetDescription(std::string& text) override
    {
        text = kind == "cpu" ? owner.cpuText : owner.targetText;
        return S_OK;
    }
    HRESULT GetLimitDisassemblyDefault() override { return *owner.limitDefault; }
    HRESULT Goodbye() override
    {
        owner.log_.push_back(std::string(kind == "target" && owner.targetHasControl ? "control" : "core") +
                             " goodbye");
        return S_OK;
    }
    HRESULT SetCpuIdentity(uint32_t a, uint32_t b) override
    {
        owner.log_.push_back("SetCpuIdentity " + std::to_string(a) + " " + std::to_string(b));
        return S_OK;
    }
    HRESULT CanDisconnect() override { return S_OK; }
    HRESULT TakeOverDownload() override { return E_FAIL; }

    FakePlatformCatalog& owner;
    std::string kind, name;
};

FakePlatformCatalog::FakePlatformCatalog(CallLog& log) : log_(log) {}
FakePlatformCatalog::~FakePlatformCatalog() = default;

HRESULT FakePlatformCatalog::Make(const std::string& kind, const std::string& name, IUnknown** out)
{
    objects_.push_back(std::make_unique<Driver>(*this, kind, name));
    log_.push_back("Create " + kind + " " + name);
    *out = static_cast<IQCpuDetails*>(objects_.back().get());
    return S_OK;
}

HRESULT FakePlatformCatalog::GetPlatformName(int32_t index, std::string& name)
{
    if (index < 0 || index >= static_cast<int32_t>(kPlatforms.size()))
        return E_FAIL;
    name = kPlatforms[static_cast<size_t>(index)];
    return S_OK;
}

HRESULT FakePlatformCatalog::GetCpuDriverName(const std::string& platform, std::string& driver)
{
    if (std::find(kPlatforms.begin(), kPlatforms.end(), platform) == kPlatforms.end())
        return E_FAIL;
    driver = platform == "pdsim" ? "pdcpu" : platform == "ghostcpu" ? "ghost" : "cm3";
    return S_OK;
}

HRESULT FakePlatformCatalog::GetReaderAttribute(int32_t index, int32_t, VariantBool& flag)
{
    flag = index == 0 ? VARIANT_TRUE : VARIANT_FALSE;
    return index < 0 || index >= static_cast<int32_t>(kReaders.size()) ? E_FAIL : S_OK;
}

HRESULT FakePlatformCatalog::GetReaderName(int32_t index, std::string& name)
{
    if (index < 0 || index >= static_cast<int32_t>(kReaders.size()))
        return E_FAIL;
    name = kReaders[static_cast<size_t>(index)].first;
    return S_OK;
}

HRESULT FakePlatformCatalog::FindReader(const std::string& name, int32_t& index)
{
    for (size_t i = 0; i < kReaders.size(); ++i)
        if (strcasecmp(kReaders[i].first.c_str(), name.c_str()) == 0) {
            index = static_cast<int32_t>(i);
            return S_OK;
        }
    return E_FAIL;
}

HRESULT FakePlatformCatalog::IsFunctionPlatform(const std::string& name)
{
    log_.push_back("IsFunctionPlatform " + name);
    return name.rfind("pd", 0) == 0 ? S_OK : S_FALSE;
}

HRESULT FakePlatformCatalog::GetReaderPlatform(int32_t index, std::string& platform)
{
    if (index < 0 || index >= static_cast<int32_t>(kReaders.size()))
        return E_FAIL;
    platform = kReaders[static_cast<size_t>(index)].second;
    return platform.empty() ? S_FALSE : S_OK;
}

HRESULT FakePlatformCatalog::ReleaseDriver(IUnknown* object, int32_t)
{
    auto it = std::find_if(objects_.begin(), objects_.end(), [&](const auto& d) {
        return static_cast<IUnknown*>(static_cast<IQCpuDetails*>(d.get())) == object;
    });
    if (it == objects_.end()) {
        log_.push_back("ReleaseDriver unknown object");
        return E_FAIL;
    }
    log_.push_back("Release " + (*it)->kind + " " + (*it)->name);
    objects_.erase(it);
    return S_OK;
}
