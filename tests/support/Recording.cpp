#include "support/Recording.h"

#include <unistd.h>

#include "boundary/Ids.h"

std::string IdName(const Guid& id)
{
#define NAMED(name) std::pair<Guid, const char*>(Ids::name, #name)
    // clang-format off
    static const std::vector<std::pair<Guid, const char*>> names = {
        NAMED(IQDebuggerState), NAMED(IQDebuggerState2), NAMED(IQDebuggerState3), NAMED(IQDebuggerState4),
        NAMED(IQDebuggerState5), NAMED(IQDebuggerState6), NAMED(IQDebuggerState7), NAMED(IQDebuggerState8),
        NAMED(IQDebuggerState9), NAMED(IQSourceManager), NAMED(IQDebuggerApplicationServer),
        NAMED(IQPostMessageClient), NAMED(IQFileMonitorClient), NAMED(IQPCBreakManager),
        NAMED(IQPCBreakManager2), NAMED(IQPCBreakManager3), NAMED(IQMemoryManager), NAMED(IQMemoryManager2),
        NAMED(IQMemoryManager3), NAMED(IQMemoryManager4), NAMED(IQMemoryManager5),
        NAMED(IQMemoryManagerCmdLine), NAMED(IQMemoryManagerCmdLine2), NAMED(IQMemoryManagerCmdLine3),
        NAMED(IQMemoryManagerCmdLine4), NAMED(IQMemoryManagerCmdLine5), NAMED(IQStatusClient),
        NAMED(IQRunner), NAMED(HostExtras), NAMED(ErrorTable), NAMED(PlatformList), NAMED(DriverFactory),
        NAMED(EditorService), NAMED(SourceViewer), NAMED(DisassemblyViewer), NAMED(UserPromptTable),
        NAMED(IQCommandRecorder), NAMED(IQEvaluator2), NAMED(Component), NAMED(SessionDataType)};
    // clang-format on
#undef NAMED
    for (const auto& [guid, name] : names)
        if (guid == id)
            return name;
    return id.ToText();
}

HRESULT RecordingRegistry::Broadcast(const Event& event)
{
    Note("Broadcast", event.id);
    if (deliverTo != nullptr)
        deliverTo->OnEvent(event);
    return S_OK;
}

void RecordingRegistry::Provide(const Guid& id, IUnknown* service)
{
    ids_.insert(id);
    if (service != nullptr)
        real_.RegisterService(id, service);
    else if (IUnknown* held = Service(id))
        real_.UnregisterService(id, held);
}

IUnknown* RecordingRegistry::Service(const Guid& id)
{
    IUnknown* service = nullptr;
    real_.GetService(id, &service);
    return service;
}

size_t RecordingRegistry::ServiceCount()
{
    size_t n = 0;
    for (const Guid& id : ids_)
        n += Service(id) != nullptr ? 1 : 0;
    return n;
}

size_t RecordingRegistry::ProviderCount()
{
    size_t n = 0;
    for (const Guid& id : ids_) {
        int32_t count = 0;
        IUnknown** array = nullptr;
        real_.GetProviders(id, count, array);
        n += static_cast<size_t>(count);
    }
    return n;
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
HRESULT RecordingPromptTable::AskYesNo(Guid key, const std::string& question, VariantBool& answer)
{
    log_.push_back("AskYesNo '" + names[key.bytes[15]] + "' " + question);
    answer = answerYes ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}
std::string BinaryDirectory()
{
    char buffer[4096];
    ssize_t n = readlink("/proc/self/exe", buffer, sizeof(buffer) - 1);
    std::string self = n > 0 ? std::string(buffer, static_cast<size_t>(n)) : std::string(".");
    return self.substr(0, self.find_last_of('/'));
}
