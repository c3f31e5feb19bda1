#include "workbench/store/SettingsStore.h"

#include <limits>
#include <new>
#include <type_traits>
#include <utility>

#include "boundary/Ids.h"
#include "workbench/ServiceRegistry.h"
#include "workbench/store/Database.h"

namespace
{

// The names on disk: never rename one, or a value written before reads as missing.
constexpr std::string_view kSetting = "setting";
constexpr std::string_view kProperty = "property";
constexpr std::string_view kData = "data";

ValueAddress Setting(std::string_view ws, std::string_view project, std::string_view session,
                     std::string_view name)
{
    return {ws, project, session, kSetting, name, false};
}

ValueAddress Global(std::string_view kind, std::string_view name)
{
    return {{}, {}, {}, kind, name, true};
}

} // namespace

SettingsStore::SettingsStore()
{
    FallBackToMemory({});
}

SettingsStore::SettingsStore(const std::filesystem::path& file)
{
    std::string error;
    db_ = Database::Open(file, error);
    if (db_)
        values_ = std::make_unique<ValueTable>(*db_);
    else
        FallBackToMemory(std::move(error));
}

SettingsStore::SettingsStore(std::shared_ptr<Database> database) : db_(std::move(database))
{
    if (db_)
        values_ = std::make_unique<ValueTable>(*db_);
    else
        FallBackToMemory("No store database was given");
}

SettingsStore::~SettingsStore() = default;

void SettingsStore::FallBackToMemory(std::string reason)
{
    std::string error;
    values_.reset();
    db_ = Database::OpenInMemory(error);
    if (db_)
        values_ = std::make_unique<ValueTable>(*db_);
    lastError_ = std::move(reason);
    if (!lastError_.empty())
        lastError_ += ". Settings are kept in memory for this session and will not be saved.";
    if (!db_) {
        if (!lastError_.empty())
            lastError_ += ' ';
        lastError_.append("No store in memory either: ").append(error);
    }
}

bool SettingsStore::InMemory() const
{
    return !db_ || db_->InMemory();
}

HRESULT SettingsStore::QueryInterface(const Guid& iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    if (iid == Ids::IUnknown || iid == Ids::IQDebugSettingsStore)
        *out = static_cast<IQDebugSettingsStore*>(this);
    else if (iid == Ids::IQSessionData)
        *out = static_cast<IQSessionData*>(this);
    else if (iid == Ids::IQTargetRegistry)
        *out = static_cast<IQTargetRegistry*>(this);
    else
        *out = nullptr;
    return *out != nullptr ? S_OK : E_NOINTERFACE;
}

HRESULT SettingsStore::Register(ServiceRegistry& registry)
{
    HRESULT hr =
        registry.RegisterService(Ids::IQDebugSettingsStore, static_cast<IQDebugSettingsStore*>(this));
    if (Succeeded(hr))
        hr = registry.RegisterService(Ids::IQSessionData, static_cast<IQSessionData*>(this));
    if (Succeeded(hr))
        hr = registry.RegisterService(Ids::IQTargetRegistry, static_cast<IQTargetRegistry*>(this));
    if (Failed(hr))
        Unregister(registry);
    return hr;
}

HRESULT SettingsStore::Unregister(ServiceRegistry& registry)
{
    // Each face is taken down only where it is still the one held.
    HRESULT a =
        registry.UnregisterService(Ids::IQDebugSettingsStore, static_cast<IQDebugSettingsStore*>(this));
    HRESULT b = registry.UnregisterService(Ids::IQSessionData, static_cast<IQSessionData*>(this));
    HRESULT c = registry.UnregisterService(Ids::IQTargetRegistry, static_cast<IQTargetRegistry*>(this));
    return Succeeded(a) && Succeeded(b) && Succeeded(c) ? S_OK : S_FALSE;
}

// Nothing may throw across an interface: a failed allocation becomes a code.
template <class Work> HRESULT SettingsStore::Guarded(const ValueAddress& at, Work&& work)
{
    try {
        return work();
    } catch (const std::bad_alloc&) {
        try {
            lastError_ = "Out of memory at the " + at.Describe();
        } catch (const std::bad_alloc&) {
            lastError_.clear();
        }
        return E_OUTOFMEMORY;
    }
}

HRESULT SettingsStore::Load(const ValueAddress& at, Variant& value)
{
    value = Variant();
    if (!values_)
        return E_FAIL;
    HRESULT hr = Guarded(at, [&] {
        switch (values_->Load(at, value, lastError_)) {
        case ValueTable::Read::Found:
            return S_OK;
        case ValueTable::Read::Missing:
            return S_FALSE;
        default:
            return E_FAIL;
        }
    });
    if (hr == E_OUTOFMEMORY)
        value = Variant();
    return hr;
}

HRESULT SettingsStore::Save(const ValueAddress& at, const Variant& value)
{
    if (!values_)
        return E_FAIL;
    return Guarded(at, [&] { return values_->Save(at, value, lastError_) ? S_OK : E_FAIL; });
}

HRESULT SettingsStore::SaveText(const ValueAddress& at, const std::string& text)
{
    return Guarded(at, [&] { return Save(at, Variant::String(text)); });
}

HRESULT SettingsStore::SaveNumber(const ValueAddress& at, uint32_t number)
{
    return Save(at, Variant::UInt(number));
}

HRESULT SettingsStore::LoadText(const ValueAddress& at, std::string& text)
{
    text.clear();
    Variant stored;
    HRESULT hr = Load(at, stored);
    if (hr != S_OK)
        return hr;
    return Guarded(at, [&] {
        if (stored.Type() != VT_BSTR || !stored.Elements().empty()) {
            lastError_ = "The stored " + at.Describe() + " is not a text; it reads as empty";
            return E_FAIL;
        }
        text = stored.Text();
        return S_OK;
    });
}

HRESULT SettingsStore::LoadNumber(const ValueAddress& at, uint32_t limit, uint32_t& number)
{
    number = 0;
    Variant stored;
    HRESULT hr = Load(at, stored);
    if (hr != S_OK)
        return hr;
    if (stored.Type() != VT_UINT || !stored.Elements().empty() || stored.Number() > limit) {
        return Guarded(at, [&] {
            lastError_ = "The stored " + at.Describe() + " is not a number of its kind; it reads as zero";
            return E_FAIL;
        });
    }
    number = stored.Number();
    return S_OK;
}

// Numbers are kept as their unsigned bit pattern; a 16-bit truth value may
// not exceed 16 bits.
template <class T> HRESULT SettingsStore::LoadNumberAs(const ValueAddress& at, T& value)
{
    uint32_t number = 0;
    HRESULT hr = LoadNumber(at, std::numeric_limits<std::make_unsigned_t<T>>::max(), number);
    value = static_cast<T>(number);
    return hr;
}

HRESULT SettingsStore::GetModules(Key ws, Key project, Key session, Variant& modules)
{
    return Load(Setting(ws, project, session, "Modules"), modules);
}

HRESULT SettingsStore::SetModules(Key ws, Key project, Key session, const Variant& modules)
{
    return Save(Setting(ws, project, session, "Modules"), modules);
}

HRESULT SettingsStore::SetSessionText(Key ws, Key project, Key session, const std::string& v)
{
    return SaveText(Setting(ws, project, session, "SessionText"), v);
}

HRESULT SettingsStore::GetSessionText(Key ws, Key project, Key session, std::string& v)
{
    return LoadText(Setting(ws, project, session, "SessionText"), v);
}

HRESULT SettingsStore::GetPlatform(Key ws, Key project, Key session, std::string& name)
{
    return LoadText(Setting(ws, project, session, "Platform"), name);
}

HRESULT SettingsStore::SetPlatform(Key ws, Key project, Key session, const std::string& name)
{
    return SaveText(Setting(ws, project, session, "Platform"), name);
}

HRESULT SettingsStore::GetNoAutoConnect(Key ws, Key project, Key session, VariantBool& v)
{
    return LoadNumberAs(Setting(ws, project, session, "NoAutoConnect"), v);
}

HRESULT SettingsStore::SetNoAutoConnect(Key ws, Key project, Key session, VariantBool v)
{
    return SaveNumber(Setting(ws, project, session, "NoAutoConnect"), v);
}

HRESULT SettingsStore::GetCommandFiles(Key ws, Key project, Key session, Variant& files)
{
    return Load(Setting(ws, project, session, "CommandFiles"), files);
}

HRESULT SettingsStore::SetCommandFiles(Key ws, Key project, Key session, const Variant& files)
{
    return Save(Setting(ws, project, session, "CommandFiles"), files);
}

HRESULT SettingsStore::UpdateCommandFiles(Key ws, Key project, Key session,
                                          const std::function<void(Variant&)>& change)
{
    const ValueAddress at = Setting(ws, project, session, "CommandFiles");
    if (!values_)
        return E_FAIL;
    return Guarded(at, [&] { return values_->Update(at, change, lastError_) ? S_OK : E_FAIL; });
}

HRESULT SettingsStore::GetDefaultReader(Key ws, Key project, Key session, std::string& name)
{
    return LoadText(Setting(ws, project, session, "DefaultReader"), name);
}

HRESULT SettingsStore::SetDefaultReader(Key ws, Key project, Key session, const std::string& name)
{
    return SaveText(Setting(ws, project, session, "DefaultReader"), name);
}

HRESULT SettingsStore::GetDownloadAfterBuild(Key ws, Key project, Key session, VariantBool& v)
{
    return LoadNumberAs(Setting(ws, project, session, "DownloadAfterBuild"), v);
}

HRESULT SettingsStore::SetDownloadAfterBuild(Key ws, Key project, Key session, VariantBool v)
{
    return SaveNumber(Setting(ws, project, session, "DownloadAfterBuild"), v);
}

HRESULT SettingsStore::GetRemoveBreaksOnDownload(Key ws, Key project, Key session, VariantBool& v)
{
    return LoadNumberAs(Setting(ws, project, session, "RemoveBreaksOnDownload"), v);
}

HRESULT SettingsStore::SetRemoveBreaksOnDownload(Key ws, Key project, Key session, VariantBool v)
{
    return SaveNumber(Setting(ws, project, session, "RemoveBreaksOnDownload"), v);
}

HRESULT SettingsStore::SetDisableMemoryUntilBatch(Key ws, Key project, Key session, int32_t v)
{
    return SaveNumber(Setting(ws, project, session, "DisableMemoryUntilBatch"), static_cast<uint32_t>(v));
}

HRESULT SettingsStore::GetDisableMemoryUntilBatch(Key ws, Key project, Key session, int32_t& v)
{
    return LoadNumberAs(Setting(ws, project, session, "DisableMemoryUntilBatch"), v);
}

HRESULT SettingsStore::SetLimitDisassemblyAccess(Key ws, Key project, Key session, int32_t v)
{
    return SaveNumber(Setting(ws, project, session, "LimitDisassemblyAccess"), static_cast<uint32_t>(v));
}

HRESULT SettingsStore::GetLimitDisassemblyAccess(Key ws, Key project, Key session, int32_t& v)
{
    return LoadNumberAs(Setting(ws, project, session, "LimitDisassemblyAccess"), v);
}

HRESULT SettingsStore::SaveValue(const std::string& ws, const std::string& project,
                                 const std::string& session, const Variant& value)
{
    return Save({ws, project, session, kData, "SessionData", false}, value);
}

HRESULT SettingsStore::LoadValue(const std::string& ws, const std::string& project,
                                 const std::string& session, Variant& value)
{
    return Load({ws, project, session, kData, "SessionData", false}, value);
}

HRESULT SettingsStore::SetNumber(const std::string& key, int32_t value)
{
    return SaveNumber(Global("number", key), static_cast<uint32_t>(value));
}

HRESULT SettingsStore::SetString(const std::string& key, const std::string& value)
{
    return SaveText(Global("string", key), value);
}

HRESULT SettingsStore::GetNumber(const std::string& key, int32_t& value)
{
    return LoadNumberAs(Global("number", key), value);
}

HRESULT SettingsStore::GetString(const std::string& key, std::string& value)
{
    return LoadText(Global("string", key), value);
}

HRESULT SettingsStore::SetProperty(const std::string& key, const std::string& value, const std::string& ws,
                                   const std::string& project, const std::string& session)
{
    return SaveText({ws, project, session, kProperty, key, false}, value);
}

HRESULT SettingsStore::GetProperty(const std::string& key, const std::string& ws, const std::string& project,
                                   const std::string& session, std::string& value)
{
    return LoadText({ws, project, session, kProperty, key, false}, value);
}
