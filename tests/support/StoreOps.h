#pragma once
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <type_traits>
#include <vector>

#include "workbench/store/SettingsStore.h"

// A session key as the component hands it over.
struct Names {
    std::string ws, project, session;
};

inline const Names kKey{"Bench", "Blinky", "Flash Session"};
inline const Names kShouted{"BENCH", "blinky", "FLASH session"};
inline const Names kOtherSession{"Bench", "Blinky", "RAM Session"};

// One stored value's pair of operations, so alike values share one test.
// Numbers of every width travel as int64_t.
template <class T> struct StoreOp {
    const char* name;
    std::function<HRESULT(SettingsStore&, const Names&, const T&)> set;
    std::function<HRESULT(SettingsStore&, const Names&, T&)> get;
    bool keyedBySession = true;
};

using TextOp = StoreOp<std::string>;
using NumberOp = StoreOp<int64_t>;
using VariantOp = StoreOp<Variant>;

// What an out value holds before a Get, so a Get that leaves it alone shows.
template <class T> T Stale()
{
    if constexpr (std::is_same_v<T, std::string>)
        return "stale";
    else if constexpr (std::is_same_v<T, Variant>)
        return Variant::String("stale");
    else
        return T(0x1234);
}

using Key = const std::string&;

template <class Wide, class Stored, class SetArg>
StoreOp<Wide> SessionOp(const char* name, HRESULT (SettingsStore::*set)(Key, Key, Key, SetArg),
                        HRESULT (SettingsStore::*get)(Key, Key, Key, Stored&))
{
    return {name,
            [set](SettingsStore& s, const Names& k, const Wide& v) {
                return (s.*set)(k.ws, k.project, k.session, static_cast<Stored>(v));
            },
            [get](SettingsStore& s, const Names& k, Wide& v) {
                Stored out = Stale<Stored>();
                HRESULT hr = (s.*get)(k.ws, k.project, k.session, out);
                v = static_cast<Wide>(out);
                return hr;
            }};
}

inline std::vector<TextOp> TextOps()
{
    using S = SettingsStore;
    return {
        SessionOp<std::string>("SessionText", &S::SetSessionText, &S::GetSessionText),
        SessionOp<std::string>("Platform", &S::SetPlatform, &S::GetPlatform),
        SessionOp<std::string>("DefaultReader", &S::SetDefaultReader, &S::GetDefaultReader),
        TextOp{"FirstConnectionProperty",
               [](S& s, const Names& k, const std::string& v) {
                   return s.SetProperty("FIRST_CONNECTION_TAG", v, k.ws, k.project, k.session);
               },
               [](S& s, const Names& k, std::string& v) {
                   v = Stale<std::string>();
                   return s.GetProperty("FIRST_CONNECTION_TAG", k.ws, k.project, k.session, v);
               }},
        TextOp{"GlobalString",
               [](S& s, const Names&, const std::string& v) { return s.SetString("Recent", v); },
               [](S& s, const Names&, std::string& v) {
                   v = Stale<std::string>();
                   return s.GetString("Recent", v);
               },
               false},
    };
}

// Truth values of form A.
inline std::vector<NumberOp> FlagOps()
{
    using S = SettingsStore;
    return {SessionOp<int64_t>("NoAutoConnect", &S::SetNoAutoConnect, &S::GetNoAutoConnect),
            SessionOp<int64_t>("DownloadAfterBuild", &S::SetDownloadAfterBuild, &S::GetDownloadAfterBuild),
            SessionOp<int64_t>("RemoveBreaksOnDownload", &S::SetRemoveBreaksOnDownload,
                               &S::GetRemoveBreaksOnDownload)};
}

// Truth values of form B and plain numbers.
inline std::vector<NumberOp> IntOps()
{
    using S = SettingsStore;
    return {SessionOp<int64_t>("DisableMemoryUntilBatch", &S::SetDisableMemoryUntilBatch,
                               &S::GetDisableMemoryUntilBatch),
            SessionOp<int64_t>("LimitDisassemblyAccess", &S::SetLimitDisassemblyAccess,
                               &S::GetLimitDisassemblyAccess),
            NumberOp{"GlobalNumber",
                     [](S& s, const Names&, const int64_t& v) { return s.SetNumber("Window", int32_t(v)); },
                     [](S& s, const Names&, int64_t& v) {
                         int32_t n = Stale<int32_t>();
                         HRESULT hr = s.GetNumber("Window", n);
                         v = n;
                         return hr;
                     },
                     false}};
}

inline std::vector<VariantOp> VariantOps()
{
    using S = SettingsStore;
    return {SessionOp<Variant>("Modules", &S::SetModules, &S::GetModules),
            SessionOp<Variant>("CommandFiles", &S::SetCommandFiles, &S::GetCommandFiles),
            SessionOp<Variant>("SessionData", &S::SaveValue, &S::LoadValue)};
}

inline Variant StringList(std::initializer_list<const char*> texts)
{
    Variant v = Variant::Array(VT_ARRAY_BSTR);
    for (const char* t : texts)
        v.Elements().push_back(Variant::String(t));
    return v;
}
