#pragma once
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "boundary/Unknown.h"
#include "boundary/interfaces/Command.h"
#include "boundary/interfaces/Debugger.h"
#include "boundary/interfaces/Workbench.h"

// A registry that keeps services and providers and logs every registration
// change and help entry in order, so that a test reads one list.
class HelpRecordingRegistry : public IQServiceRegistry, public IQCommandHelpService
{
public:
    HelpRecordingRegistry(bool withHelp = true) : withHelp_(withHelp) {}

    HRESULT QueryInterface(const Guid& iid, void** out) override { return AnswerFrom({}, iid, this, out); }
    TESSEL_NOT_REFCOUNTED
    HRESULT Broadcast(const Event&) override { return S_OK; }
    HRESULT GetProviders(const Guid&, int32_t&, IUnknown**&) override { return E_NOTIMPL; }
    HRESULT GetService(const Guid& id, IUnknown** out) override;
    HRESULT RegisterProvider(const Guid& id, IUnknown* provider) override;
    HRESULT RegisterService(const Guid& id, IUnknown* service) override;
    HRESULT UnregisterProvider(const Guid& id, IUnknown* provider) override;
    HRESULT UnregisterService(const Guid& id, IUnknown* service) override;
    HRESULT IsBusy(const Guid&) override { return S_OK; }
    HRESULT SetBusy(const Guid&) override { return S_OK; }
    HRESULT ClearBusy(const Guid&) override { return S_OK; }

    HRESULT AddCommandHelp(const std::string& name, const std::string& parameterText,
                           int32_t isAlias) override;
    HRESULT RemoveCommandHelp(const std::string& name, const std::string& parameterText,
                              int32_t isAlias) override;

    std::vector<std::string> log;
    std::unordered_map<Guid, std::vector<IUnknown*>> providers;
    std::set<std::tuple<std::string, std::string, int32_t>> help;

private:
    bool withHelp_;
    std::unordered_map<Guid, IUnknown*> services_;
};

// The debugger state as far as a batch's timing goes: the timing service.
class FakeTimingService : public IQDebuggerState3
{
public:
    int32_t batchState = 0;
    HRESULT answer = S_OK;

    HRESULT QueryInterface(const Guid& iid, void** out) override { return AnswerFrom({}, iid, this, out); }
    TESSEL_NOT_REFCOUNTED
    HRESULT GetBatchState(int32_t& value) override
    {
        value = batchState;
        return answer;
    }
    HRESULT GetCpuText1(std::string&) override { return E_NOTIMPL; }
    HRESULT GetCpuText2(std::string&) override { return E_NOTIMPL; }
    HRESULT GetTargetText1(std::string&) override { return E_NOTIMPL; }
    HRESULT GetTargetText2(std::string&) override { return E_NOTIMPL; }
    HRESULT GetTargetText3(std::string&) override { return E_NOTIMPL; }
    int32_t GetProgramCountA() override { return 0; }
    HRESULT GetProgram(int32_t, IUnknown**) override { return E_NOTIMPL; }
    HRESULT DownloadProgramAt(int32_t) override { return E_NOTIMPL; }
    HRESULT UnloadProgramAt(int32_t) override { return E_NOTIMPL; }
    HRESULT FindProgramByFile(const std::string&, IUnknown**) override { return E_NOTIMPL; }
    HRESULT IsConnectedA() override { return E_NOTIMPL; }
    HRESULT SaveMemoryDialog(VariantBool, TargetAddress, TargetAddress) override { return E_NOTIMPL; }
    HRESULT IsConnectedB() override { return E_NOTIMPL; }
    HRESULT LoadMemoryDialog(VariantBool, TargetAddress) override { return E_NOTIMPL; }
    HRESULT CanVerifyMemory() override { return E_NOTIMPL; }
    HRESULT VerifyMemoryDialog(VariantBool, TargetAddress) override { return E_NOTIMPL; }
    HRESULT ShowSourceAt(TargetAddress) override { return E_NOTIMPL; }
    HRESULT Connect() override { return E_NOTIMPL; }
    HRESULT Disconnect() override { return E_NOTIMPL; }
    HRESULT GetProgramByName(const std::string&, IUnknown**) override { return E_NOTIMPL; }
    HRESULT DownloadProgramByName(const std::string&) override { return E_NOTIMPL; }
    HRESULT UnloadProgramByName(const std::string&) override { return E_NOTIMPL; }
};
