// What the file and setup commands do where the simulator cannot take them: no
// connection, a target or format that cannot verify or write, a reader that
// cannot be made, and the events they post.
#include <algorithm>
#include <iterator>
#include <tuple>

#include "component/command/CCmdDefaultObjectReader.h"
#include "component/command/CCmdInitialise.h"
#include "component/command/file/CCmdFileLoad.h"
#include "component/command/file/CCmdFileSave.h"
#include "component/command/file/CCmdFileUnload.h"
#include "component/command/file/CCmdFileVerify.h"
#include "component/memory/CMemoryManager.h"
#include "component/program/DownloadModuleList.h"
#include "platform/catalog/DriverFactory.h"
#include "platform/objfile/ElfReader.h"
#include "support/FakePlatformMemory.h"
#include "support/StateFixture.h"

namespace
{

const std::string kSensors = std::string(TESSEL_FIRMWARE_DIR) + "/sensors.elf";

struct FileCommands : StateFixture {
    // Flash and RAM as the test firmware wants them.
    FakePlatformMemory memory{{{0x08000000, 0x080FFFFF}, {0x20000000, 0x2001FFFF}}};
    void SetUp() override
    {
        memory.RegisterIn(registry);
        StartSession();
    }
    void TearDown() override
    {
        state->Terminate(1);
        registry.deliverTo = nullptr;
    }
    // The command's message, "Error: " in front when it failed.
    template <class Command> std::string Run(const std::string& line)
    {
        Command command(&registry, *state);
        std::string message;
        bool continuing = false;
        const HRESULT hr = command.Run(line, message, continuing);
        return (hr == S_OK ? "" : "Error: ") + message;
    }
    void StoreModules(const std::vector<CDownloadModule>& modules)
    {
        WriteModuleList(modules, store.lists["modules"]);
    }
    std::vector<CDownloadModule> StoredModules()
    {
        std::vector<CDownloadModule> modules;
        ReadModuleList(store.lists["modules"], modules);
        return modules;
    }
};

TEST_F(FileCommands, WithoutAConnectionEachCommandSaysSo)
{
    const std::pair<std::string, std::string> rows[] = {
        {Run<CCmdFileLoad>("elf a.elf"), "Error: Cannot load. Not connected to target."},
        {Run<CCmdFileSave>("elf a.elf 0 1"), "Error: Cannot save. Not connected to target."},
        {Run<CCmdFileVerify>("elf a.elf"), "Error: Cannot verify. Not connected to target."},
        {Run<CCmdFileUnload>("elf a.elf"), "Error: Cannot unload. Not connected to target."},
        {Run<CCmdInitialise>(""), "Error: Command disabled. Target running or no workspace open."},
    };
    for (const auto& [said, expected] : rows)
        EXPECT_EQ(said, expected);
}

TEST_F(FileCommands, FormatsAndTargetsThatCannotDoTheWork)
{
    ASSERT_EQ(state->Connect(), S_OK);
    EXPECT_EQ(Run<CCmdFileSave>("pdobj a.x 0 1"),
              "Error: Object Format 'pdobj' does not support memory write");
    EXPECT_EQ(Run<CCmdFileVerify>("pdobj a.x"), "Error: Object format 'pdobj' does not support verify.");
    memory.offered &= ~(1u << 5);
    state->GetMemory()->AttachPlatform(&registry);
    EXPECT_EQ(Run<CCmdFileVerify>("elf a.x"), "Error: Target 'Simulator' does not support verify.");
}

TEST_F(FileCommands, ReplacingTheListEmptiesItEvenWhenTheFileCannotBeRead)
{
    std::vector<CDownloadModule> before{{"kept.elf", 0, "elf", 0, 1, 1, 0}};
    StoreModules(before);
    state->BuildPrograms();
    ASSERT_EQ(state->Connect(), S_OK);
    // The fake's readers make no module handle: no file can be read.
    for (const char* style : {"", " p"}) {
        SCOPED_TRACE(style);
        log.clear();
        EXPECT_EQ(Run<CCmdFileLoad>(std::string("elf a.elf 0 v") + style),
                  "Error: Object Format 'elf' does not exist");
        EXPECT_EQ(StoredModules(), before);
        EXPECT_EQ(state->GetPrograms().Count(), 1);
        EXPECT_FALSE(Logged(Sent(Ids::EVENT_MODULES_CHANGED)));
    }
    log.clear();
    EXPECT_EQ(Run<CCmdFileLoad>("elf a.elf 0 v r"), "Error: Object Format 'elf' does not exist");
    EXPECT_EQ(StoredModules(), std::vector<CDownloadModule>{});
    EXPECT_EQ(state->GetPrograms().Count(), 0);
    CallLog events;
    std::copy_if(log.begin(), log.end(), std::back_inserter(events),
                 [](const std::string& line) { return line.rfind("Broadcast", 0) == 0; });
    EXPECT_EQ(events, (CallLog{Sent(Ids::EVENT_PROGRAMS_CHANGED), Sent(Ids::EVENT_MODULES_CHANGED)}))
        << "the list's event last, after the error";
}

TEST_F(FileCommands, StyleDecidesWhatTheStoredListKeeps)
{
    ASSERT_EQ(state->Connect(), S_OK);
    // The real reader from here on, for the test firmware.
    PlatformTable readers{{},
                          {{"elf", "", [](IQServiceRegistry* services) -> std::unique_ptr<PlatformDriver> {
                                return std::make_unique<ElfReader>(services);
                            }}}};
    DriverFactory factory{readers};
    registry.Provide(Ids::DriverFactory, &factory);
    const CDownloadModule kept{"kept.elf", 0, "elf", 0, 1, 1, 0};
    const struct {
        std::string line;
        std::vector<CDownloadModule> after;
    } rows[] = {
        {"elf " + kSensors + " 0 n", {kept}},
        {"elf " + kSensors + " 0x10 n p word", {kept, {kSensors, 0x10, "elf", 0, 0, 2, 0}}},
        {"elf " + kSensors + " 0 v r long", {{kSensors, 0, "elf", 0, 1, 4, 0}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        state->RemoveAllPrograms();
        StoreModules({kept});
        state->BuildPrograms();
        EXPECT_EQ(Run<CCmdFileLoad>(row.line).rfind("Module name '" + kSensors + "'", 0), 0u);
        EXPECT_EQ(StoredModules(), row.after);
        EXPECT_EQ(state->GetPrograms().Count(), static_cast<int32_t>(row.after.size()));
    }
    state->RemoveAllPrograms();
}

TEST_F(FileCommands, DefaultFormatIsAnnouncedOnlyWhenItChanges)
{
    ASSERT_EQ(state->Connect(), S_OK);
    for (const auto& [line, expected, announced] :
         {std::tuple{"elf", "", true},
          {"ELF", "", false},
          {"nosuch", "Error: Object Format 'nosuch' does not exist", false},
          {"", "Object format \"elf\"", false}}) {
        SCOPED_TRACE(line);
        log.clear();
        EXPECT_EQ(Run<CCmdDefaultObjectReader>(line), expected);
        EXPECT_EQ(Logged(Sent(Ids::EVENT_PLATFORM_CHANGED)), announced);
    }
    EXPECT_EQ(store.text["reader"], "elf");
}

} // namespace
