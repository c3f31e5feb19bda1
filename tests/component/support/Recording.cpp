#include "support/Recording.h"

#include <unistd.h>

#include <algorithm>

#include "boundary/Ids.h"

namespace
{

HRESULT AnswerUnknown(const Guid& iid, void* self, void** out)
{
    *out = iid == Ids::IUnknown ? self : nullptr;
    return *out ? S_OK : E_NOINTERFACE;
}

} // namespace

std::string IdName(const Guid& id)
{
    static const std::vector<std::pair<Guid, const char*>> names = {
        {Ids::IQDebuggerState, "IQDebuggerState"},
        {Ids::IQDebuggerState2, "IQDebuggerState2"},
        {Ids::IQDebuggerState3, "IQDebuggerState3"},
        {Ids::IQDebuggerState4, "IQDebuggerState4"},
        {Ids::IQDebuggerState5, "IQDebuggerState5"},
        {Ids::IQDebuggerState6, "IQDebuggerState6"},
        {Ids::IQDebuggerState7, "IQDebuggerState7"},
        {Ids::IQDebuggerState8, "IQDebuggerState8"},
        {Ids::IQDebuggerState9, "IQDebuggerState9"},
        {Ids::IQSourceManager, "IQSourceManager"},
        {Ids::IQDebuggerApplicationServer, "IQDebuggerApplicationServer"},
        {Ids::IQPostMessageClient, "IQPostMessageClient"},
        {Ids::IQFileMonitorClient, "IQFileMonitorClient"},
        {Ids::IQPCBreakManager, "IQPCBreakManager"},
        {Ids::IQPCBreakManager2, "IQPCBreakManager2"},
        {Ids::IQPCBreakManager3, "IQPCBreakManager3"},
        {Ids::IQMemoryManager, "IQMemoryManager"},
        {Ids::IQMemoryManager2, "IQMemoryManager2"},
        {Ids::IQMemoryManager3, "IQMemoryManager3"},
        {Ids::IQMemoryManager4, "IQMemoryManager4"},
        {Ids::IQMemoryManager5, "IQMemoryManager5"},
        {Ids::IQMemoryManagerCmdLine, "IQMemoryManagerCmdLine"},
        {Ids::IQMemoryManagerCmdLine2, "IQMemoryManagerCmdLine2"},
        {Ids::IQMemoryManagerCmdLine3, "IQMemoryManagerCmdLine3"},
        {Ids::IQMemoryManagerCmdLine4, "IQMemoryManagerCmdLine4"},
        {Ids::IQMemoryManagerCmdLine5, "IQMemoryManagerCmdLine5"},
        {Ids::IQStatusClient, "IQStatusClient"},
        {Ids::IQRunner, "IQRunner"},
        {Ids::IQRunner2, "IQRunner2"},
        {Ids::IQRunner3, "IQRunner3"},
        {Ids::IQRunner4, "IQRunner4"},
        {Ids::IQRunner5, "IQRunner5"},
        {Ids::IQRunner6, "IQRunner6"},
        {Ids::HostExtras, "HostExtras"},
        {Ids::ErrorTable, "ErrorTable"},
        {Ids::PlatformList, "PlatformList"},
        {Ids::DriverFactory, "DriverFactory"},
        {Ids::EditorService, "EditorService"},
        {Ids::SourceViewer, "SourceViewer"},
        {Ids::DisassemblyViewer, "DisassemblyViewer"},
        {Ids::UserPromptTable, "UserPromptTable"},
        {Ids::IQCommandRecorder, "IQCommandRecorder"},
        {Ids::IQEvaluator2, "IQEvaluator2"},
        {Ids::MessageBoxService, "MessageBox"},
        {Ids::Component, "Component"},
        {Ids::SessionDataType, "SessionDataType"},
    };
    for (const auto& [guid, name] : names)
        if (guid == id)
            return name;
    return id.ToText();
}

HRESULT RecordingRegistry::QueryInterface(const Guid& iid, void** out)
{
    log_.push_back("QueryInterface " + IdName(iid));
    return AnswerUnknown(iid, static_cast<IQServiceRegistry*>(this), out);
}

HRESULT RecordingRegistry::Broadcast(const Event& event)
{
    log_.push_back("Broadcast " + IdName(event.id));
    if (deliverTo != nullptr)
        deliverTo->OnEvent(event);
    return S_OK;
}

HRESULT RecordingRegistry::GetProviders(const Guid& id, int32_t& count, IUnknown**& array)
{
    log_.push_back("GetProviders " + IdName(id));
    auto& list = providers_[id];
    count = static_cast<int32_t>(list.size());
    array = list.empty() ? nullptr : list.data();
    return S_OK;
}

HRESULT RecordingRegistry::GetService(const Guid& id, IUnknown** out)
{
    log_.push_back("GetService " + IdName(id));
    *out = Service(id);
    return *out ? S_OK : E_FAIL;
}

HRESULT RecordingRegistry::RegisterProvider(const Guid& id, IUnknown* provider)
{
    log_.push_back("RegisterProvider " + IdName(id));
    providers_[id].push_back(provider);
    return S_OK;
}

HRESULT RecordingRegistry::RegisterService(const Guid& id, IUnknown* service)
{
    log_.push_back("RegisterService " + IdName(id));
    services_[id] = service;
    return S_OK;
}

HRESULT RecordingRegistry::UnregisterProvider(const Guid& id, IUnknown* provider)
{
    log_.push_back("UnregisterProvider " + IdName(id));
    auto& list = providers_[id];
    auto it = std::find(list.begin(), list.end(), provider);
    if (it == list.end())
        return E_FAIL;
    list.erase(it);
    return S_OK;
}

HRESULT RecordingRegistry::UnregisterService(const Guid& id, IUnknown* service)
{
    log_.push_back("UnregisterService " + IdName(id));
    auto it = services_.find(id);
    if (it == services_.end() || it->second != service)
        return E_FAIL;
    services_.erase(it);
    return S_OK;
}

HRESULT RecordingRegistry::IsBusy(const Guid& id)
{
    log_.push_back("IsBusy " + IdName(id));
    return S_OK;
}
HRESULT RecordingRegistry::SetBusy(const Guid& id)
{
    log_.push_back("SetBusy " + IdName(id));
    return S_OK;
}
HRESULT RecordingRegistry::ClearBusy(const Guid& id)
{
    log_.push_back("ClearBusy " + IdName(id));
    return S_OK;
}

IUnknown* RecordingRegistry::Service(const Guid& id) const
{
    auto it = services_.find(id);
    return it == services_.end() ? nullptr : it->second;
}

size_t RecordingRegistry::ProviderCount() const
{
    size_t n = 0;
    for (const auto& [id, list] : providers_)
        n += list.size();
    return n;
}

HRESULT RecordingErrorTable::QueryInterface(const Guid& iid, void** out)
{
    return AnswerUnknown(iid, static_cast<IQErrorTable*>(this), out);
}
HRESULT RecordingErrorTable::GetText(HRESULT code, std::string& text)
{
    auto it = texts.find(code);
    if (it == texts.end())
        return E_FAIL;
    text = it->second;
    return S_OK;
}
HRESULT RecordingErrorTable::AddText(HRESULT code, const std::string& text)
{
    ++adds;
    texts[code] = text;
    return S_OK;
}
HRESULT RecordingErrorTable::RegisterErrorText(const std::string& text, HRESULT& code)
{
    HRESULT next = static_cast<HRESULT>(0x8004F000u);
    while (texts.count(next) != 0)
        ++next;
    texts[next] = text;
    code = next;
    return S_OK;
}
HRESULT RecordingErrorTable::RemoveText(HRESULT code)
{
    ++removes;
    return texts.erase(code) ? S_OK : E_FAIL;
}

HRESULT RecordingPromptTable::QueryInterface(const Guid& iid, void** out)
{
    return AnswerUnknown(iid, static_cast<IQUserPromptTable*>(this), out);
}
HRESULT RecordingPromptTable::AddPrompt(const Guid& owner, const std::string& name,
                                        VariantBool defaultEnabled, Guid& key)
{
    key = Guid{};
    key.bytes[15] = static_cast<uint8_t>(++next_);
    names[next_] = name;
    log_.push_back("AddPrompt " + IdName(owner) + " '" + name + "' " + (defaultEnabled ? "1" : "0"));
    return S_OK;
}
HRESULT RecordingPromptTable::DeletePrompt(Guid key)
{
    log_.push_back("DeletePrompt '" + names[key.bytes[15]] + "'");
    return S_OK;
}
HRESULT RecordingPromptTable::IsPromptEnabled(Guid)
{
    return enabled ? 1 : 0;
}
HRESULT RecordingPromptTable::AskYesNo(Guid key, const std::string& question, VariantBool& answer)
{
    log_.push_back("AskYesNo '" + names[key.bytes[15]] + "' " + question);
    answer = answerYes ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}
HRESULT RecordingPromptTable::SetPromptEnabled(Guid, int32_t)
{
    return S_OK;
}
HRESULT RecordingPromptTable::AskYesNoReload(Guid key, const std::string& question, VariantBool& answer)
{
    return AskYesNo(key, question, answer);
}

HRESULT RecordingMessageBox::QueryInterface(const Guid& iid, void** out)
{
    return AnswerUnknown(iid, static_cast<IQMessageBox*>(this), out);
}
HRESULT RecordingMessageBox::ShowMessage(const std::string& text, MessageIcon)
{
    shown.push_back(text);
    return S_OK;
}
HRESULT RecordingMessageBox::AskYesNo(const std::string& text, VariantBool defaultAnswer, VariantBool& answer)
{
    shown.push_back(text);
    answer = defaultAnswer;
    return S_OK;
}

HRESULT RecordingRecorder::QueryInterface(const Guid& iid, void** out)
{
    return AnswerUnknown(iid, static_cast<IQCommandRecorder*>(this), out);
}
HRESULT RecordingRecorder::LogCommand(const std::string& text)
{
    lines.push_back(text);
    return S_OK;
}

HRESULT RecordingRegistrar::QueryInterface(const Guid& iid, void** out)
{
    return AnswerUnknown(iid, static_cast<IQRegistrar*>(this), out);
}
HRESULT RecordingRegistrar::RegisterComponent(const std::string& name, int32_t count, const Guid* const* ids,
                                              int32_t a, int32_t b, int32_t c, const Guid& identity)
{
    std::string entry = "RegisterComponent '" + name + "' " + std::to_string(count) + " [";
    for (int32_t i = 0; i < count; ++i)
        entry += (i ? " " : "") + IdName(*ids[i]);
    entry +=
        "] " + std::to_string(a) + " " + std::to_string(b) + " " + std::to_string(c) + " " + IdName(identity);
    log.push_back(entry);
    return S_OK;
}
HRESULT RecordingRegistrar::RegisterDataType(const std::string& name, int32_t a, int32_t b, int32_t c,
                                             const Guid& id)
{
    log.push_back("RegisterDataType '" + name + "' " + std::to_string(a) + " " + std::to_string(b) + " " +
                  std::to_string(c) + " " + IdName(id));
    return S_OK;
}

std::string BinaryDirectory()
{
    char buffer[4096];
    ssize_t n = readlink("/proc/self/exe", buffer, sizeof(buffer) - 1);
    std::string self = n > 0 ? std::string(buffer, static_cast<size_t>(n)) : std::string(".");
    return self.substr(0, self.find_last_of('/'));
}
