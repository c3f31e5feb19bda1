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

    HRESULT GetText(const std::string& name, std::string& v)
    {
        auto it = text.find(name);
        v = it == text.end() ? std::string() : it->second;
        return it == text.end() ? S_FALSE : S_OK;
    }
    HRESULT SetText(const std::string& name, const std::string& v)
    {
        log_.push_back("store " + name + "=" + v);
        text[name] = v;
        return S_OK;
    }
    template <class T> HRESULT GetNumberAs(const std::string& name, T& v)
    {
        auto it = number.find(name);
        v = it == number.end() ? T{} : static_cast<T>(it->second);
        return it == number.end() ? S_FALSE : S_OK;
    }
    HRESULT SetNumberAs(const std::string& name, int32_t v)
    {
        log_.push_back("store " + name + "=" + std::to_string(v));
        number[name] = v;
        return S_OK;
    }

    // Each session setting as a pair of operations on its map entry.
    // clang-format off
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
    HRESULT GetList(const std::string& name, Variant& v)
    {
        auto it = lists.find(name);
        v = it == lists.end() ? Variant() : it->second;
        return S_OK;
    }
    HRESULT SetList(const std::string& name, const Variant& v)
    {
        log_.push_back("store " + name);
        lists[name] = v;
        return S_OK;
    }
    CallLog& log_;
};
