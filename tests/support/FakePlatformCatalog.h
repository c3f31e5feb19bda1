#pragma once
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "boundary/Ids.h"
#include "boundary/interfaces/Platform.h"
#include "support/Recording.h"

// A platform catalogue and driver factory that log every driver made and let
// go. Platforms: "sim" (rich family, CPU "cm3"), "pdsim" (function family, CPU
// "pdcpu"), "halfsim" (its target driver cannot be made), "ghostcpu" (its CPU
// driver cannot be made). Readers: "elf" for all, which saves and verifies;
// "pdobj" for "pdsim" only, which does neither.
// No test connects to a function platform: its own driver calls are not offered.
class FakePlatformCatalog : public IQPlatformList, public IQDriverFactory
{
public:
    explicit FakePlatformCatalog(CallLog& log);
    ~FakePlatformCatalog();

    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerUnknown(iid, static_cast<IQPlatformList*>(this), out);
    }
    TESSEL_NOT_REFCOUNTED

    HRESULT GetPlatformName(int32_t index, std::string& name) override;
    HRESULT GetCpuDriverName(const std::string& platform, std::string& driver) override;
    HRESULT GetPlatformProperty(const std::string&, int32_t, uint32_t&) override { return E_NOTIMPL; }
    HRESULT GetReaderAttribute(int32_t index, int32_t attribute, VariantBool& flag) override;
    HRESULT GetReaderName(int32_t index, std::string& name) override;
    HRESULT FindReader(const std::string& name, int32_t& index) override;
    HRESULT IsFunctionPlatform(const std::string& name) override;
    HRESULT GetReaderPlatform(int32_t index, std::string& platform) override;

    HRESULT ReleaseDriver(IUnknown* object, int32_t flag) override;
    using In = const std::string&;
    using Reg = IQServiceRegistry*;
    using I = int32_t;
    // clang-format off
    HRESULT CreateCpuDriver(In n, Reg, I, I, I, IUnknown** out) override { return Make("cpu", n, out); }
    HRESULT CreateTargetDriver(In n, Reg, I, I, I, IUnknown** out) override { return Make("target", n, out); }
    HRESULT CreateReader(In n, Reg, I, I, I, I, IUnknown** out) override { return Make("reader", n, out); }
    HRESULT CheckCpuDriver(In name, I, I) override { return name == "ghost" ? E_FAIL : S_OK; }
    HRESULT CheckTargetDriver(In platform, I, I) override { return platform == "halfsim" ? E_FAIL : S_OK; }
    HRESULT CheckReader(In, I, I) override { return S_OK; }
    // No test reaches the operations that name a variant.
    HRESULT CreateCpuDriverFor(In, Reg, I, I, I, In, IUnknown**) override { return E_NOTIMPL; }
    HRESULT CreateReaderFor(In, Reg, I, I, I, I, In, IUnknown**) override { return E_NOTIMPL; }
    HRESULT CheckCpuDriverFor(In, I, I, In) override { return E_NOTIMPL; }
    HRESULT CheckReaderFor(In, I, I, In) override { return E_NOTIMPL; }
    // clang-format on

    // What the next drivers describe themselves as.
    std::string cpuText = "ARM\nCortex-M3";
    std::string targetText = "Simulator\nCortex-M3 board\nflash 1 MiB";
    // The CPU's default for limiting disassembly access; no options face when absent.
    std::optional<HRESULT> limitDefault;
    bool targetHasControl = false;
    size_t Alive() const { return objects_.size(); }

private:
    struct Driver;
    HRESULT Make(const std::string& kind, const std::string& name, IUnknown** out);

    CallLog& log_;
    std::vector<std::unique_ptr<Driver>> objects_;
};
