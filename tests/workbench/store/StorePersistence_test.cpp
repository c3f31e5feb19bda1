#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

#include "support/RawSql.h"
#include "support/StoreOps.h"
#include "support/TempFolder.h"
#include "workbench/store/Database.h"

namespace fs = std::filesystem;

namespace
{
// A session key as the component hands it over.
struct Names {
    std::string ws, project, session;
};
const Names kKey{"Bench", "Blinky", "Flash Session"};
const Names kShouted{"BENCH", "blinky", "FLASH session"};
const Names kOtherSession{"Bench", "Blinky", "RAM Session"};

// Every stored value travels as one of these; numbers of every width as int64_t.
using Value = std::variant<std::string, int64_t, Variant>;
template <class T> using Wide = std::conditional_t<std::is_integral_v<T>, int64_t, T>;

// One setting: its set and get, a value of its own (awkward ones among them)
// and the empty one written over it in the second round.
struct Setting {
    const char* name;
    std::function<HRESULT(SettingsStore&, const Names&, const Value&)> set;
    std::function<HRESULT(SettingsStore&, const Names&, Value&)> get;
    Value own, empty;
    bool keyedBySession = true;
};

// The generic pair: `call` is handed the store, the key and the argument.
template <class T, class SetCall, class GetCall>
Setting Make(const char* name, SetCall setCall, GetCall getCall, Value own, Value empty, bool keyed = true)
{
    return {name,
            [setCall](SettingsStore& s, const Names& k, const Value& v) {
                return setCall(s, k, static_cast<T>(std::get<Wide<T>>(v)));
            },
            // The out value starts as the setting's own, so a Get that leaves it alone shows
            // wherever something else is expected.
            [getCall, own](SettingsStore& s, const Names& k, Value& v) {
                T out = static_cast<T>(std::get<Wide<T>>(own));
                HRESULT hr = getCall(s, k, out);
                v = static_cast<Wide<T>>(out);
                return hr;
            },
            std::move(own), std::move(empty), keyed};
}

using Key = const std::string&;
template <class T, class SetArg>
Setting Session(const char* name, HRESULT (SettingsStore::*set)(Key, Key, Key, SetArg),
                HRESULT (SettingsStore::*get)(Key, Key, Key, T&), Value own, Value empty)
{
    return Make<T>(
        name,
        [set](SettingsStore& s, const Names& k, SetArg v) { return (s.*set)(k.ws, k.project, k.session, v); },
        [get](SettingsStore& s, const Names& k, T& v) { return (s.*get)(k.ws, k.project, k.session, v); },
        std::move(own), std::move(empty));
}

std::string Awkward(const char* name)
{
    return "text of " + std::string(name) + std::string("\0\xc3\xa9|<none>", 11);
}

std::vector<Setting> Settings()
{
    using S = SettingsStore;
    using T = std::string;
    const Variant none;
    return {
        Session<T>("SessionText", &S::SetSessionText, &S::GetSessionText, Awkward("SessionText"), T()),
        Session<T>("Platform", &S::SetPlatform, &S::GetPlatform, Awkward("Platform"), T()),
        Session<T>("DefaultReader", &S::SetDefaultReader, &S::GetDefaultReader, Awkward("DefaultReader"),
                   T()),
        Make<T>(
            "FirstConnectionProperty",
            [](S& s, const Names& k, const T& v) {
                return s.SetProperty("FIRST_CONNECTION_TAG", v, k.ws, k.project, k.session);
            },
            [](S& s, const Names& k, T& v) {
                return s.GetProperty("FIRST_CONNECTION_TAG", k.ws, k.project, k.session, v);
            },
            Awkward("FirstConnectionProperty"), T()),
        Make<T>(
            "GlobalString", [](S& s, const Names&, const T& v) { return s.SetString("Recent", v); },
            [](S& s, const Names&, T& v) { return s.GetString("Recent", v); }, Awkward("GlobalString"), T(),
            false),
        // Truth values of form A, then of form B and plain numbers.
        Session<VariantBool>("NoAutoConnect", &S::SetNoAutoConnect, &S::GetNoAutoConnect, 0xFFFF, int64_t(0)),
        Session<VariantBool>("DownloadAfterBuild", &S::SetDownloadAfterBuild, &S::GetDownloadAfterBuild,
                             0x8000, int64_t(0)),
        Session<VariantBool>("RemoveBreaksOnDownload", &S::SetRemoveBreaksOnDownload,
                             &S::GetRemoveBreaksOnDownload, int64_t(1), int64_t(0)),
        Session<int32_t>("DisableMemoryUntilBatch", &S::SetDisableMemoryUntilBatch,
                         &S::GetDisableMemoryUntilBatch, int64_t(INT32_MIN), int64_t(0)),
        Session<int32_t>("LimitDisassemblyAccess", &S::SetLimitDisassemblyAccess,
                         &S::GetLimitDisassemblyAccess, int64_t(INT32_MAX), int64_t(0)),
        Make<int32_t>(
            "GlobalNumber", [](S& s, const Names&, int32_t v) { return s.SetNumber("Window", v); },
            [](S& s, const Names&, int32_t& v) { return s.GetNumber("Window", v); }, int64_t(-1), int64_t(0),
            false),
        Session<Variant>("Modules", &S::SetModules, &S::GetModules,
                         StringList({"$PROJ_DIR$\\out\\a.elf", "-1", "elf", "0", "1", "4", "1"}), none),
        Session<Variant>(
            "CommandFiles", &S::SetCommandFiles, &S::GetCommandFiles,
            Variant::Array(VT_ARRAY | VT_VARIANT,
                           {StringList({"a"}), Variant::Array(VT_ARRAY_UINT, {Variant::UInt(0xFFFFFFFF)})}),
            Variant::Array(VT_ARRAY_BSTR)),
        Session<Variant>("SessionData", &S::SaveValue, &S::LoadValue, Variant::String("x"),
                         Variant::Array(VT_ARRAY_BSTR)),
    };
}

// Round 0 is each setting's own value, 1 the empty one over it, -1 nothing stored.
Value Expected(const Setting& setting, int round)
{
    if (round >= 0)
        return round == 0 ? setting.own : setting.empty;
    return std::visit([](const auto& v) { return Value(std::decay_t<decltype(v)>{}); }, setting.own);
}

void WriteEverything(SettingsStore& store, int round = 0)
{
    for (const auto& setting : Settings())
        ASSERT_EQ(setting.set(store, kKey, Expected(setting, round)), S_OK)
            << setting.name << store.LastError();
}

// Sessions are found without regard to case; `other` checks only the
// settings kept per session.
void CheckEverything(SettingsStore& store, int round = 0, const Names& key = kShouted, bool other = false)
{
    for (const auto& setting : Settings()) {
        if (other && !setting.keyedBySession)
            continue;
        SCOPED_TRACE(setting.name);
        Value out;
        EXPECT_EQ(setting.get(store, key, out), round < 0 ? S_FALSE : S_OK);
        const Value expected = Expected(setting, round);
        EXPECT_TRUE(out == expected);
        if (const auto* v = std::get_if<Variant>(&out)) {
            EXPECT_EQ(v->Type(), std::get<Variant>(expected).Type());
        }
    }
}

TEST(StorePersistence, EveryValueReadsBackExactlyAndIsThereInTheNextRun)
{
    TempFolder dir;
    const fs::path file = dir / "ws/.tessel/workspace.db";
    for (int round : {0, 1}) {
        {
            SettingsStore store(file);
            ASSERT_FALSE(store.InMemory()) << store.LastError();
            if (round == 0)
                CheckEverything(store, -1, kKey);
            WriteEverything(store, round);
            CheckEverything(store, round);
        }
        SettingsStore next(file);
        ASSERT_FALSE(next.InMemory()) << next.LastError();
        CheckEverything(next, round);
        CheckEverything(next, -1, kOtherSession, true);
        EXPECT_EQ(next.LastError(), "");
    }
}

// Nothing runs after the kill: no destructor, no close, no checkpoint.
TEST(StorePersistence, AValueIsKeptWhenTheProgramIsKilledRightAfterTheSet)
{
    TempFolder dir;
    const fs::path file = dir / "workspace.db";
    pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        auto* store = new SettingsStore(file);
        kill(getpid(), store->SetPlatform("w", "p", "s", "sim") == S_OK ? SIGKILL : SIGTERM);
        _exit(1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "the child could not write";
    SettingsStore next(file);
    ASSERT_FALSE(next.InMemory()) << next.LastError();
    std::string platform;
    EXPECT_EQ(next.GetPlatform("w", "p", "s", platform), S_OK);
    EXPECT_EQ(platform, "sim");
}

// One bad row costs that value only: it reads as empty with a reason, and the
// values around it read as before. A text or a number is read back only as
// what it was written as; the lists keep whatever Variant they are given.
TEST(StorePersistence, ADamagedValueOrOneOfAnotherKindReadsAsEmptyAndLeavesTheRestAlone)
{
    TempFolder dir;
    const fs::path file = dir / "workspace.db";
    {
        SettingsStore store(file);
        ASSERT_EQ(store.SetModules("w", "p", "s", StringList({"a.elf"})), S_OK);
        ASSERT_EQ(store.SetNoAutoConnect("w", "p", "s", VARIANT_TRUE), S_OK);
        ASSERT_EQ(store.SetDownloadAfterBuild("w", "p", "s", VARIANT_TRUE), S_OK);
        ASSERT_EQ(store.SetPlatform("w", "p", "s", "sim"), S_OK);
        ASSERT_EQ(store.SetCommandFiles("w", "p", "s", StringList({"a.cmd", "1"})), S_OK);
        ASSERT_EQ(store.SetProperty("FIRST_CONNECTION_TAG", "NO", "w", "p", "s"), S_OK);
    }
    // Random bytes, a text for a blob, UInt(0x10000) for a flag, empty lists of strings.
    ASSERT_TRUE(RawSql(
        file, "UPDATE session_value SET value = x'00ff13a7' WHERE name = 'Modules';"
              "UPDATE session_value SET value = 'hello' WHERE name = 'NoAutoConnect';"
              "UPDATE session_value SET value = x'5456011702808004' WHERE name = 'DownloadAfterBuild';"
              "UPDATE session_value SET value = x'545601884000' WHERE name IN ('Platform', 'CommandFiles')"));
    SettingsStore store(file);
    ASSERT_FALSE(store.InMemory()) << store.LastError();
    Variant modules = StringList({"stale"});
    EXPECT_EQ(store.GetModules("w", "p", "s", modules), E_FAIL);
    EXPECT_EQ(modules, Variant());
    EXPECT_NE(store.LastError().find("setting 'Modules' of session w/p/s is damaged (not a stored value)"),
              std::string::npos)
        << store.LastError();
    VariantBool flags[2] = {VARIANT_TRUE, VARIANT_TRUE};
    EXPECT_EQ(store.GetNoAutoConnect("w", "p", "s", flags[0]), E_FAIL);
    EXPECT_EQ(store.GetDownloadAfterBuild("w", "p", "s", flags[1]), E_FAIL);
    EXPECT_EQ(std::pair(flags[0], flags[1]), std::pair(VARIANT_FALSE, VARIANT_FALSE));
    EXPECT_NE(store.LastError().find("not a number of its kind"), std::string::npos) << store.LastError();
    std::string text = "stale";
    EXPECT_EQ(store.GetPlatform("w", "p", "s", text), E_FAIL);
    EXPECT_EQ(text, "");
    EXPECT_NE(store.LastError().find("setting 'Platform' of session w/p/s is not a text"), std::string::npos)
        << store.LastError();
    Variant files;
    EXPECT_EQ(store.GetCommandFiles("w", "p", "s", files), S_OK);
    EXPECT_EQ(files, Variant::Array(VT_ARRAY_BSTR));
    EXPECT_EQ(store.GetProperty("FIRST_CONNECTION_TAG", "w", "p", "s", text), S_OK);
    EXPECT_EQ(text, "NO");
    // A damaged value is overwritten like any other.
    EXPECT_EQ(store.SetModules("w", "p", "s", Variant::Array(VT_ARRAY_BSTR)), S_OK);
    EXPECT_EQ(store.GetModules("w", "p", "s", modules), S_OK);
    EXPECT_EQ(modules, Variant::Array(VT_ARRAY_BSTR));
}

} // namespace
