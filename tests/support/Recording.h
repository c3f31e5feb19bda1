#pragma once
#include <map>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "boundary/Ids.h"
#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/Platform.h"
#include "boundary/interfaces/Workbench.h"
#include "support/RecordingEvaluator.h"
#include "workbench/ServiceRegistry.h"

// Readable name of a known identifier, or its text.
std::string IdName(const Guid& id);

// A call log shared by the fakes, so an order across services is one list.
using CallLog = std::vector<std::string>;

// QueryInterface of a fake that answers IUnknown alone.
inline HRESULT AnswerUnknown(const Guid& iid, void* self, void** out)
{
    return AnswerFrom({Ids::IUnknown}, iid, self, out);
}

// The IUnknown part of a fake reached only through the pointer it was handed as.
#define FAKE_WITHOUT_INTERFACES                                                                              \
    HRESULT QueryInterface(const Guid&, void** out) override                                                 \
    {                                                                                                        \
        *out = nullptr;                                                                                      \
        return E_NOINTERFACE;                                                                                \
    }                                                                                                        \
    TESSEL_NOT_REFCOUNTED

// The workbench's own registry with every call logged before it is made, so
// that an order across services is one list.
class RecordingRegistry : public IQServiceRegistry
{
public:
    explicit RecordingRegistry(CallLog& log) : log_(log) {}

    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return Note("QueryInterface", iid).QueryInterface(iid, out);
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT Broadcast(const Event& event) override;
    HRESULT GetProviders(const Guid& id, int32_t& count, IUnknown**& array) override
    {
        return Note("GetProviders", id).GetProviders(id, count, array);
    }
    HRESULT GetService(const Guid& id, IUnknown** out) override
    {
        return Note("GetService", id).GetService(id, out);
    }
    HRESULT RegisterProvider(const Guid& id, IUnknown* provider) override
    {
        return Note("RegisterProvider", id).RegisterProvider(id, provider);
    }
    HRESULT RegisterService(const Guid& id, IUnknown* service) override
    {
        return Note("RegisterService", id).RegisterService(id, service);
    }
    HRESULT UnregisterProvider(const Guid& id, IUnknown* provider) override
    {
        return Note("UnregisterProvider", id).UnregisterProvider(id, provider);
    }
    HRESULT UnregisterService(const Guid& id, IUnknown* service) override
    {
        return Note("UnregisterService", id).UnregisterService(id, service);
    }
    HRESULT IsBusy(const Guid& id) override { return Note("IsBusy", id).IsBusy(id); }
    HRESULT SetBusy(const Guid& id) override { return Note("SetBusy", id).SetBusy(id); }
    HRESULT ClearBusy(const Guid& id) override { return Note("ClearBusy", id).ClearBusy(id); }

    // A component that broadcasts reach, as the workbench delivers them.
    IQComponent* deliverTo = nullptr;
    // Puts a service in place, or takes it away, without logging it.
    void Provide(const Guid& id, IUnknown* service);
    IUnknown* Service(const Guid& id);
    // Services and providers held, over every identifier this registry was asked to hold.
    size_t ServiceCount();
    size_t ProviderCount();

private:
    ServiceRegistry& Note(const char* call, const Guid& id)
    {
        log_.push_back(std::string(call) + " " + IdName(id));
        ids_.insert(id);
        return real_;
    }
    CallLog& log_;
    ServiceRegistry real_;
    std::unordered_set<Guid> ids_;
};

class RecordingPromptTable : public IQUserPromptTable
{
public:
    explicit RecordingPromptTable(CallLog& log) : log_(log) {}
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerUnknown(iid, static_cast<IQUserPromptTable*>(this), out);
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT AddPrompt(const Guid& owner, const std::string& name, VariantBool defaultEnabled,
                      Guid& key) override;
    HRESULT DeletePrompt(Guid key) override;
    HRESULT IsPromptEnabled(Guid) override { return enabled ? 1 : 0; }
    HRESULT AskYesNo(Guid key, const std::string& question, VariantBool& answer) override;
    HRESULT SetPromptEnabled(Guid, int32_t) override { return S_OK; }
    HRESULT AskYesNoReload(Guid key, const std::string& question, VariantBool& answer) override
    {
        return AskYesNo(key, question, answer);
    }
    HRESULT ShowWarning(Guid key, const std::string& text) override
    {
        if (!enabled)
            return S_FALSE;
        log_.push_back("ShowWarning '" + names[key.bytes[15]] + "' " + text);
        return S_OK;
    }
    // Key number n (1-based) names the n-th prompt added.
    std::map<int, std::string> names;
    bool enabled = true;
    bool answerYes = true;

private:
    CallLog& log_;
    int next_ = 0;
};

// Records every message and question; a question gets `reply`, or its default when none is set.
class RecordingMessageBox : public IQMessageBox
{
public:
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerUnknown(iid, static_cast<IQMessageBox*>(this), out);
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT ShowMessage(const std::string& text, MessageIcon) override
    {
        shown.push_back(text);
        return S_OK;
    }
    HRESULT AskYesNo(const std::string& text, VariantBool defaultAnswer, VariantBool& answer) override
    {
        shown.push_back(text);
        defaults.push_back(defaultAnswer);
        answer = reply.value_or(defaultAnswer);
        return S_OK;
    }
    std::vector<std::string> shown;
    std::vector<VariantBool> defaults;
    std::optional<VariantBool> reply;
};

// Folder of the test program, where the build puts every binary.
std::string BinaryDirectory();
