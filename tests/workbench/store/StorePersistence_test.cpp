#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "support/RawSql.h"
#include "support/StoreOps.h"
#include "support/TempFolder.h"
#include "workbench/store/Database.h"

namespace fs = std::filesystem;

namespace
{

// Every operation's value in a round: 0 gives each its own, awkward ones
// among them; 1 writes the empty ones over them; -1 is nothing stored.
std::string Text(const TextOp& op, int round)
{
    return round != 0 ? "" : "text of " + std::string(op.name) + std::string("\0\xc3\xa9|<none>", 11);
}
int64_t Number(bool flag, size_t i, int round)
{
    const int64_t flags[] = {0xFFFF, 0x8000, 1}, numbers[] = {INT32_MIN, INT32_MAX, -1};
    return round != 0 ? 0 : flag ? flags[i] : numbers[i];
}
Variant Value(size_t i, int round)
{
    if (round != 0)
        return round < 0 || i == 0 ? Variant() : Variant::Array(VT_ARRAY_BSTR);
    const Variant values[] = {
        StringList({"$PROJ_DIR$\\out\\a.elf", "-1", "elf", "0", "1", "4", "1"}),
        Variant::Array(VT_ARRAY | VT_VARIANT,
                       {StringList({"a"}), Variant::Array(VT_ARRAY_UINT, {Variant::UInt(0xFFFFFFFF)})}),
        Variant::String("x")};
    return values[i];
}

void WriteEverything(SettingsStore& store, int round = 0)
{
    for (auto& op : TextOps())
        ASSERT_EQ(op.set(store, kKey, Text(op, round)), S_OK) << store.LastError();
    for (bool flag : {true, false}) {
        auto ops = flag ? FlagOps() : IntOps();
        for (size_t i = 0; i < ops.size(); ++i)
            ASSERT_EQ(ops[i].set(store, kKey, Number(flag, i, round)), S_OK) << store.LastError();
    }
    auto variants = VariantOps();
    for (size_t i = 0; i < variants.size(); ++i)
        ASSERT_EQ(variants[i].set(store, kKey, Value(i, round)), S_OK) << store.LastError();
}

// Sessions are found without regard to case; `other` checks only the
// operations kept per session.
void CheckEverything(SettingsStore& store, int round = 0, const Names& key = kShouted, bool other = false)
{
    const HRESULT expected = round < 0 ? S_FALSE : S_OK;
    for (auto& op : TextOps()) {
        std::string out;
        if (!other || op.keyedBySession) {
            EXPECT_EQ(op.get(store, key, out), expected) << op.name;
            EXPECT_EQ(out, Text(op, round)) << op.name;
        }
    }
    for (bool flag : {true, false}) {
        auto ops = flag ? FlagOps() : IntOps();
        for (size_t i = 0; i < ops.size(); ++i) {
            int64_t out = 0;
            if (!other || ops[i].keyedBySession) {
                EXPECT_EQ(ops[i].get(store, key, out), expected) << ops[i].name;
                EXPECT_EQ(out, Number(flag, i, round)) << ops[i].name;
            }
        }
    }
    auto variants = VariantOps();
    for (size_t i = 0; i < variants.size(); ++i) {
        Variant out;
        EXPECT_EQ(variants[i].get(store, key, out), expected) << variants[i].name;
        EXPECT_EQ(out, Value(i, round)) << variants[i].name;
        EXPECT_EQ(out.Type(), Value(i, round).Type()) << variants[i].name;
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
        bool ok = store->SetPlatform("w", "p", "s", "sim") == S_OK &&
                  store->SaveValue("w", "p", "s", StringList({"break"})) == S_OK;
        kill(getpid(), ok ? SIGKILL : SIGTERM);
        _exit(1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "the child could not write";
    SettingsStore next(file);
    ASSERT_FALSE(next.InMemory()) << next.LastError();
    std::string platform;
    Variant breaks;
    EXPECT_EQ(next.GetPlatform("w", "p", "s", platform), S_OK);
    EXPECT_EQ(platform, "sim");
    EXPECT_EQ(next.LoadValue("w", "p", "s", breaks), S_OK);
    EXPECT_EQ(breaks, StringList({"break"}));
}

// Why a file is refused is the database's business; here, that the store goes on.
TEST(StorePersistence, AnUnusableFileGivesAClearMessageAndTheStoreWorksInMemory)
{
    TempFolder dir;
    const fs::path file = dir.WriteFile("workspace.db", "[settings]\n");
    SettingsStore store(file);
    EXPECT_TRUE(store.InMemory());
    const std::string& message = store.LastError();
    EXPECT_EQ(message.rfind("Cannot open the store '" + file.string() + "'", 0), 0u) << message;
    EXPECT_NE(message.find("kept in memory for this session"), std::string::npos) << message;
    WriteEverything(store);
    CheckEverything(store);
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
    VariantBool flag = VARIANT_TRUE;
    EXPECT_EQ(store.GetNoAutoConnect("w", "p", "s", flag), E_FAIL);
    EXPECT_EQ(flag, VARIANT_FALSE);
    flag = VARIANT_TRUE;
    EXPECT_EQ(store.GetDownloadAfterBuild("w", "p", "s", flag), E_FAIL);
    EXPECT_EQ(flag, VARIANT_FALSE);
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
