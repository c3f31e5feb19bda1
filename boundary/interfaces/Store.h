#pragma once
#include <cstdint>
#include <string>

#include "boundary/Flags.h"
#include "boundary/Unknown.h"
#include "boundary/Variant.h"

// The workbench's stores, as the component sees them. Every session value is
// keyed by workspace, project and session name, in that order; the
// configuration name is not part of a stored key.

// Per-session debug settings. Two forms of truth value are kept as they are:
// form A is a 16-bit VariantBool (only 0xFFFF reads as true), form B a 32-bit
// number (only 1 reads as true).
struct IQDebugSettingsStore : IUnknown {
    using Key = const std::string&;
    virtual HRESULT GetModules(Key ws, Key project, Key session, Variant& modules) = 0;              // 3
    virtual HRESULT SetModules(Key ws, Key project, Key session, const Variant& modules) = 0;        // 4
    virtual HRESULT SetSessionText(Key ws, Key project, Key session, const std::string& v) = 0;      // 5
    virtual HRESULT GetSessionText(Key ws, Key project, Key session, std::string& v) = 0;            // 6
    virtual HRESULT GetPlatform(Key ws, Key project, Key session, std::string& name) = 0;            // 7
    virtual HRESULT SetPlatform(Key ws, Key project, Key session, const std::string& name) = 0;      // 8
    virtual HRESULT GetNoAutoConnect(Key ws, Key project, Key session, VariantBool& v) = 0;          // 9
    virtual HRESULT SetNoAutoConnect(Key ws, Key project, Key session, VariantBool v) = 0;           // 10
    virtual HRESULT GetCommandFiles(Key ws, Key project, Key session, Variant& files) = 0;           // 11
    virtual HRESULT SetCommandFiles(Key ws, Key project, Key session, const Variant& files) = 0;     // 12
    virtual HRESULT GetDefaultReader(Key ws, Key project, Key session, std::string& name) = 0;       // 13
    virtual HRESULT SetDefaultReader(Key ws, Key project, Key session, const std::string& name) = 0; // 14
    virtual HRESULT GetDownloadAfterBuild(Key ws, Key project, Key session, VariantBool& v) = 0;     // 23
    virtual HRESULT SetDownloadAfterBuild(Key ws, Key project, Key session, VariantBool v) = 0;      // 24
    virtual HRESULT GetRemoveBreaksOnDownload(Key ws, Key project, Key session, VariantBool& v) = 0; // 50
    virtual HRESULT SetRemoveBreaksOnDownload(Key ws, Key project, Key session, VariantBool v) = 0;  // 51
    virtual HRESULT SetDisableMemoryUntilBatch(Key ws, Key project, Key session, int32_t v) = 0;     // 52
    virtual HRESULT GetDisableMemoryUntilBatch(Key ws, Key project, Key session, int32_t& v) = 0;    // 53
    virtual HRESULT SetLimitDisassemblyAccess(Key ws, Key project, Key session, int32_t v) = 0;      // 54
    virtual HRESULT GetLimitDisassemblyAccess(Key ws, Key project, Key session, int32_t& v) = 0;     // 55
};

// Named values of a session that other parts keep (breakpoints among them).
struct IQSessionData : IUnknown {
    virtual HRESULT SaveValue(const std::string& ws, const std::string& project, const std::string& session,
                              const Variant& value) = 0;
    virtual HRESULT LoadValue(const std::string& ws, const std::string& project, const std::string& session,
                              Variant& value) = 0;
};

// Settings by key: global numbers and strings, and string properties of a session.
struct IQTargetRegistry : IUnknown {
    virtual HRESULT SetNumber(const std::string& key, int32_t value) = 0;            // 5
    virtual HRESULT SetString(const std::string& key, const std::string& value) = 0; // 6
    virtual HRESULT GetNumber(const std::string& key, int32_t& value) = 0;           // 9
    virtual HRESULT GetString(const std::string& key, std::string& value) = 0;       // 10
    virtual HRESULT SetProperty(const std::string& key, const std::string& value, const std::string& ws,
                                const std::string& project, const std::string& session) = 0; // 129
    virtual HRESULT GetProperty(const std::string& key, const std::string& ws, const std::string& project,
                                const std::string& session, std::string& value) = 0; // 132
};
