#pragma once
#include <map>
#include <string>

#include "boundary/Ids.h"
#include "boundary/interfaces/Store.h"
#include "support/Recording.h"

// Session settings and properties kept in maps, keyed "name" alone: the tests
// use one session. Writes are logged.
class FakeStore : public IQDebugSettingsStore, public IQTargetRegistry
{
public:
    explicit FakeStore(CallLog& log) : log_(log) {}
    FAKE_WITHOUT_INTERFACES
    using In = const std::string&;
    using Flag = VariantBool;

    std::map<std::string, std::string> text;
    std::map<std::string, int32_t> number;
    std::map<std::string, Variant> lists;

    // clang-format off
    HRESULT GetText(In name, std::string& v) { return Get(text, name, v); }
    HRESULT SetText(In name, In v) { return Set(text, name, v, name + "=" + v); }
    template <class T> HRESULT GetNumberAs(In name, T& v) { return Get(number, name, v); }
    HRESULT SetNumberAs(In name, int32_t v) { return Set(number, name, v, name + "=" + std::to_string(v)); }
    HRESULT GetList(In name, Variant& v) { return Get(lists, name, v, S_OK); }
    HRESULT SetList(In name, const Variant& v) { return Set(lists, name, v, name); }

    // Each session setting as a pair of operations on its map entry.
#define FAKE_SETTING(Name, OutT, InT, Kind, entry)                                                       \
    HRESULT Get##Name(Key, Key, Key, OutT v) override { return Get##Kind(entry, v); }                    \
    HRESULT Set##Name(Key, Key, Key, InT v) override { return Set##Kind(entry, v); }
    FAKE_SETTING(Modules, Variant&, const Variant&, List, "modules")
    FAKE_SETTING(CommandFiles, Variant&, const Variant&, List, "batch")
    FAKE_SETTING(SessionText, std::string&, In, Text, "session")
    FAKE_SETTING(Platform, std::string&, In, Text, "platform")
    FAKE_SETTING(DefaultReader, std::string&, In, Text, "reader")
    FAKE_SETTING(NoAutoConnect, Flag&, Flag, NumberAs, "noauto")
    FAKE_SETTING(DownloadAfterBuild, Flag&, Flag, NumberAs, "afterbuild")
    FAKE_SETTING(RemoveBreaksOnDownload, Flag&, Flag, NumberAs, "rmbreaks")
    FAKE_SETTING(DisableMemoryUntilBatch, int32_t&, int32_t, NumberAs, "disablemem")
    FAKE_SETTING(LimitDisassemblyAccess, int32_t&, int32_t, NumberAs, "limit")
#undef FAKE_SETTING
    HRESULT SetNumber(In key, int32_t v) override { return SetNumberAs(key, v); }
    HRESULT SetString(In key, In v) override { return SetText(key, v); }
    HRESULT GetNumber(In key, int32_t& v) override { return GetNumberAs(key, v); }
    HRESULT GetString(In key, std::string& v) override { return GetText(key, v); }
    HRESULT SetProperty(In key, In v, In, In, In) override { return SetText(key, v); }
    HRESULT GetProperty(In key, In, In, In, std::string& v) override { return GetText(key, v); }
    // clang-format on

private:
    // An absent entry reads as the type's empty value.
    template <class M, class T> static HRESULT Get(const M& map, In name, T& v, HRESULT absent = S_FALSE)
    {
        auto it = map.find(name);
        v = it == map.end() ? T{} : static_cast<T>(it->second);
        return it == map.end() ? absent : S_OK;
    }
    template <class M, class V> HRESULT Set(M& map, In name, const V& v, const std::string& note)
    {
        log_.push_back("store " + note);
        map[name] = v;
        return S_OK;
    }
    CallLog& log_;
};
