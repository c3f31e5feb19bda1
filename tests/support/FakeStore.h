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

    HRESULT GetModules(Key, Key, Key, Variant& v) override { return GetList("modules", v); }
    HRESULT SetModules(Key, Key, Key, const Variant& v) override { return SetList("modules", v); }
    HRESULT SetSessionText(Key, Key, Key, const std::string& v) override { return SetText("session", v); }
    HRESULT GetSessionText(Key, Key, Key, std::string& v) override { return GetText("session", v); }
    HRESULT GetPlatform(Key, Key, Key, std::string& v) override { return GetText("platform", v); }
    HRESULT SetPlatform(Key, Key, Key, const std::string& v) override { return SetText("platform", v); }
    HRESULT GetNoAutoConnect(Key, Key, Key, Flag& v) override { return GetNumberAs("noauto", v); }
    HRESULT SetNoAutoConnect(Key, Key, Key, Flag v) override { return SetNumberAs("noauto", v); }
    HRESULT GetCommandFiles(Key, Key, Key, Variant& v) override { return GetList("batch", v); }
    HRESULT SetCommandFiles(Key, Key, Key, const Variant& v) override { return SetList("batch", v); }
    HRESULT GetDefaultReader(Key, Key, Key, std::string& v) override { return GetText("reader", v); }
    HRESULT SetDefaultReader(Key, Key, Key, const std::string& v) override { return SetText("reader", v); }
    HRESULT GetDownloadAfterBuild(Key, Key, Key, Flag& v) override { return GetNumberAs("afterbuild", v); }
    HRESULT SetDownloadAfterBuild(Key, Key, Key, Flag v) override { return SetNumberAs("afterbuild", v); }
    HRESULT GetRemoveBreaksOnDownload(Key, Key, Key, Flag& v) override { return GetNumberAs("rmbreaks", v); }
    HRESULT SetRemoveBreaksOnDownload(Key, Key, Key, Flag v) override { return SetNumberAs("rmbreaks", v); }
    HRESULT SetDisableMemoryUntilBatch(Key, Key, Key, int32_t v) override
    {
        return SetNumberAs("disablemem", v);
    }
    HRESULT GetDisableMemoryUntilBatch(Key, Key, Key, int32_t& v) override
    {
        return GetNumberAs("disablemem", v);
    }
    HRESULT SetLimitDisassemblyAccess(Key, Key, Key, int32_t v) override { return SetNumberAs("limit", v); }
    HRESULT GetLimitDisassemblyAccess(Key, Key, Key, int32_t& v) override { return GetNumberAs("limit", v); }

    HRESULT SetNumber(const std::string& key, int32_t v) override { return SetNumberAs(key, v); }
    HRESULT SetString(In key, In v) override { return SetText(key, v); }
    HRESULT GetNumber(const std::string& key, int32_t& v) override { return GetNumberAs(key, v); }
    HRESULT GetString(const std::string& key, std::string& v) override { return GetText(key, v); }
    HRESULT SetProperty(In key, In v, In, In, In) override { return SetText(key, v); }
    HRESULT GetProperty(In key, In, In, In, std::string& v) override { return GetText(key, v); }

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
