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
#define FAKE_SETTING(Name, Type, Get, Set, entry)                                                            \
    HRESULT Get##Name(Key, Key, Key, Type& v) override                                                       \
    {                                                                                                        \
        return Get(entry, v);                                                                                \
    }                                                                                                        \
    HRESULT Set##Name(Key, Key, Key, const Type& v) override                                                 \
    {                                                                                                        \
        return Set(entry, v);                                                                                \
    }
#define FAKE_NUMBER(Name, Type, entry)                                                                       \
    HRESULT Get##Name(Key, Key, Key, Type& v) override                                                       \
    {                                                                                                        \
        return GetNumberAs(entry, v);                                                                        \
    }                                                                                                        \
    HRESULT Set##Name(Key, Key, Key, Type v) override                                                        \
    {                                                                                                        \
        return SetNumberAs(entry, v);                                                                        \
    }
    FAKE_SETTING(Modules, Variant, GetList, SetList, "modules")
    FAKE_SETTING(CommandFiles, Variant, GetList, SetList, "batch")
    FAKE_SETTING(SessionText, std::string, GetText, SetText, "session")
    FAKE_SETTING(Platform, std::string, GetText, SetText, "platform")
    FAKE_SETTING(DefaultReader, std::string, GetText, SetText, "reader")
    FAKE_NUMBER(NoAutoConnect, Flag, "noauto")
    FAKE_NUMBER(DownloadAfterBuild, Flag, "afterbuild")
    FAKE_NUMBER(RemoveBreaksOnDownload, Flag, "rmbreaks")
    FAKE_NUMBER(DisableMemoryUntilBatch, int32_t, "disablemem")
    FAKE_NUMBER(LimitDisassemblyAccess, int32_t, "limit")
#undef FAKE_SETTING
#undef FAKE_NUMBER

    HRESULT SetNumber(const std::string& key, int32_t v) override
    {
        return SetNumberAs(key, v);
    }
    HRESULT SetString(In key, In v) override
    {
        return SetText(key, v);
    }
    HRESULT GetNumber(const std::string& key, int32_t& v) override
    {
        return GetNumberAs(key, v);
    }
    HRESULT GetString(const std::string& key, std::string& v) override
    {
        return GetText(key, v);
    }
    HRESULT SetProperty(In key, In v, In, In, In) override
    {
        return SetText(key, v);
    }
    HRESULT GetProperty(In key, In, In, In, std::string& v) override
    {
        return GetText(key, v);
    }

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
