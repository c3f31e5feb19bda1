#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "boundary/interfaces/Store.h"
#include "workbench/store/ValueTable.h"

class Database;
class ServiceRegistry;

// The workbench's settings and session store: one object with three faces.
// Values are kept exactly as given (a truth value of either form reads back
// as written; deciding what counts as true is the reader's business).
//
// Nothing stored: every Get answers S_FALSE with an empty string, an empty
// Variant (type 0) or zero. A value that cannot be read (damaged, or of
// another type than the operation keeps) answers E_FAIL with the same empty
// value and the reason in LastError(); other values are not affected. Every
// Set is committed to the file before it returns; a failed Set answers E_FAIL.
class SettingsStore final : public IQDebugSettingsStore, public IQSessionData, public IQTargetRegistry
{
public:
    // In memory only.
    SettingsStore();
    // The file, or, when it cannot be opened, memory with the reason in LastError().
    explicit SettingsStore(const std::filesystem::path& file);
    // Shares an open database (a workspace's); a null one means memory, as above.
    explicit SettingsStore(std::shared_ptr<Database> database);
    ~SettingsStore();
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    bool InMemory() const;
    // The last problem met: the reason a file was not opened, or a value that
    // could not be read or written. Empty when there was none.
    const std::string& LastError() const { return lastError_; }

    // Each face under its own identifier, so a caller's cast lands on the right one.
    HRESULT Register(ServiceRegistry& registry);
    HRESULT Unregister(ServiceRegistry& registry);

    // IQDebugSettingsStore
    HRESULT GetModules(Key ws, Key project, Key session, Variant& modules) override;
    HRESULT SetModules(Key ws, Key project, Key session, const Variant& modules) override;
    HRESULT SetSessionText(Key ws, Key project, Key session, const std::string& v) override;
    HRESULT GetSessionText(Key ws, Key project, Key session, std::string& v) override;
    HRESULT GetPlatform(Key ws, Key project, Key session, std::string& name) override;
    HRESULT SetPlatform(Key ws, Key project, Key session, const std::string& name) override;
    HRESULT GetNoAutoConnect(Key ws, Key project, Key session, VariantBool& v) override;
    HRESULT SetNoAutoConnect(Key ws, Key project, Key session, VariantBool v) override;
    HRESULT GetCommandFiles(Key ws, Key project, Key session, Variant& files) override;
    HRESULT SetCommandFiles(Key ws, Key project, Key session, const Variant& files) override;
    HRESULT GetDefaultReader(Key ws, Key project, Key session, std::string& name) override;
    HRESULT SetDefaultReader(Key ws, Key project, Key session, const std::string& name) override;
    HRESULT GetDownloadAfterBuild(Key ws, Key project, Key session, VariantBool& v) override;
    HRESULT SetDownloadAfterBuild(Key ws, Key project, Key session, VariantBool v) override;
    HRESULT GetRemoveBreaksOnDownload(Key ws, Key project, Key session, VariantBool& v) override;
    HRESULT SetRemoveBreaksOnDownload(Key ws, Key project, Key session, VariantBool v) override;
    HRESULT SetDisableMemoryUntilBatch(Key ws, Key project, Key session, int32_t v) override;
    HRESULT GetDisableMemoryUntilBatch(Key ws, Key project, Key session, int32_t& v) override;
    HRESULT SetLimitDisassemblyAccess(Key ws, Key project, Key session, int32_t v) override;
    HRESULT GetLimitDisassemblyAccess(Key ws, Key project, Key session, int32_t& v) override;

    // The batch file list read, changed and written back as one transaction.
    HRESULT UpdateCommandFiles(Key ws, Key project, Key session, const std::function<void(Variant&)>& change);

    // IQSessionData
    HRESULT SaveValue(const std::string& ws, const std::string& project, const std::string& session,
                      const Variant& value) override;
    HRESULT LoadValue(const std::string& ws, const std::string& project, const std::string& session,
                      Variant& value) override;

    // IQTargetRegistry
    HRESULT SetNumber(const std::string& key, int32_t value) override;
    HRESULT SetString(const std::string& key, const std::string& value) override;
    HRESULT GetNumber(const std::string& key, int32_t& value) override;
    HRESULT GetString(const std::string& key, std::string& value) override;
    HRESULT SetProperty(const std::string& key, const std::string& value, const std::string& ws,
                        const std::string& project, const std::string& session) override;
    HRESULT GetProperty(const std::string& key, const std::string& ws, const std::string& project,
                        const std::string& session, std::string& value) override;

private:
    void FallBackToMemory(std::string reason);

    HRESULT Load(const ValueAddress& at, Variant& value);
    HRESULT Save(const ValueAddress& at, const Variant& value);
    HRESULT SaveText(const ValueAddress& at, const std::string& text);
    HRESULT SaveNumber(const ValueAddress& at, uint32_t number);
    template <class Work> HRESULT Guarded(const ValueAddress& at, Work&& work);
    HRESULT LoadText(const ValueAddress& at, std::string& text);
    HRESULT LoadNumber(const ValueAddress& at, uint32_t limit, uint32_t& number);
    template <class T> HRESULT LoadNumberAs(const ValueAddress& at, T& value);

    std::shared_ptr<Database> db_;
    // Declared after the database it refers to, so it goes first.
    std::unique_ptr<ValueTable> values_;
    std::string lastError_;
};
