// The session's programs: one per download module of the settings, found by
// module key, brought into line when the settings change, and offered for
// reload when their file changes on disk.
#include <gtest/gtest.h>

#include <fstream>

#include "app/WorkspaceSession.h"
#include "boundary/ComUtils.h"
#include "boundary/interfaces/Command.h"
#include "component/program/DownloadModuleList.h"
#include "component/symbols/CLabelManager.h"
#include "support/FakeObjectReader.h"
#include "support/FakePlatformMemory.h"
#include "support/StateFixture.h"
#include "support/TempFolder.h"
#include "workbench/ProgressDisplayService.h"

namespace
{

struct RecordingPosts : IQPostMessageService {
    FAKE_WITHOUT_INTERFACES
    HRESULT Post(IQPostMessageClient*, uint32_t value) override { return posted.push_back(value), S_OK; }
    HRESULT SetTimer(IQTimerClient*, uint32_t, uint32_t) override { return S_OK; }
    HRESULT KillTimer(IQTimerClient*, uint32_t) override { return S_OK; }
    HRESULT ForgetClient(IUnknown*) override { return S_OK; }
    std::vector<uint32_t> posted;
};

CDownloadModule Module(const std::string& file, uint32_t offset = 0, int32_t verify = 0,
                       int32_t debugOnly = 0)
{
    return CDownloadModule(file, offset, "elf", debugOnly, verify, 4, 0);
}

struct Programs : StateFixture {
    RecordingPosts posts;

    void SetUp() override
    {
        registry.Provide(Ids::PostMessageService, &posts);
        StartSession();
        store.text["platform"] = "";
    }
    void TearDown() override { state->Terminate(1); }
    void StoreModules(const std::vector<CDownloadModule>& modules)
    {
        Variant stored;
        WriteModuleList(modules, stored);
        store.lists["modules"] = stored;
    }
    // The raw file names of the programs, in order.
    std::vector<std::string> Files()
    {
        std::vector<std::string> files;
        for (int32_t i = 0; i < state->GetProgramCountA(); ++i) {
            std::string name;
            state->GetPrograms().At(i)->GetRawFileName(name);
            files.push_back(name);
        }
        return files;
    }
    size_t ChangeEvents() const
    {
        return std::count(log.begin(), log.end(), Sent(Ids::EVENT_PROGRAMS_CHANGED));
    }
};

TEST_F(Programs, ASessionHasOneProgramPerModuleUntilItCloses)
{
    StoreModules({Module("/fw/boot.elf", 0x100, 1), Module("/fw/app.elf", 0, 0, 1)});
    ASSERT_EQ(state->OpenSession(true, false, false), S_OK);
    EXPECT_EQ(Files(), (std::vector<std::string>{"/fw/boot.elf", "/fw/app.elf"}));

    std::string file, format;
    uint32_t offset = 0;
    VariantBool debugOnly = 0, verify = 0;
    AccessSize size = 0;
    ASSERT_EQ(state->GetProgramDetails(0, file, offset, format, debugOnly, verify, size), S_OK);
    EXPECT_EQ(std::tuple(file, offset, format, debugOnly, verify, size),
              std::tuple("/fw/boot.elf", 0x100u, "elf", VARIANT_FALSE, VARIANT_TRUE, AccessSize{4}));
    ASSERT_EQ(state->GetProgramDetails(1, file, offset, format, debugOnly, verify, size), S_OK);
    EXPECT_EQ(std::tuple(debugOnly, verify), std::tuple(VARIANT_TRUE, VARIANT_FALSE));
    EXPECT_EQ(state->GetProgramDetails(2, file, offset, format, debugOnly, verify, size), E_FAIL);

    IUnknown* program = reinterpret_cast<IUnknown*>(1);
    EXPECT_EQ(state->GetProgram(2, &program), E_FAIL) << "an index equal to the count";
    EXPECT_EQ(program, nullptr);
    // A name is a whole module key, in any case.
    EXPECT_EQ(state->GetProgramByName("/FW/APP.ELF0ELF4", &program), S_OK);
    EXPECT_EQ(program, static_cast<IQProgram*>(state->GetPrograms().At(1)));
    EXPECT_EQ(state->GetProgramByName("/fw/app.elf", &program), E_FAIL);
    EXPECT_EQ(state->DownloadProgramByName("nothing"), E_FAIL);

    ASSERT_EQ(state->OpenSession(true, false, false), S_OK);
    EXPECT_EQ(state->GetProgramCountA(), 2) << "opening again replaces, never adds";
    state->CloseSession();
    EXPECT_EQ(state->GetProgramCountA(), 0);
}

TEST_F(Programs, ChangedSettingsKeepTheProgramsOfTheModulesThatStay)
{
    StoreModules({Module("a.elf"), Module("b.elf"), Module("c.elf")});
    ASSERT_EQ(state->OpenSession(true, false, false), S_OK);
    const CQProgram* c = state->GetPrograms().At(2);

    StoreModules({Module("a.elf"), Module("b.elf"), Module("c.elf")});
    EXPECT_FALSE(state->ApplyModuleList()) << "the same list";
    EXPECT_EQ(ChangeEvents(), 0u);

    // b goes, d comes, c moves to the front, A is a only in case, and a
    // repeat of d is dropped with one message.
    StoreModules({Module("c.elf", 0, 1), Module("A.elf"), Module("d.elf"), Module("D.ELF")});
    EXPECT_TRUE(state->ApplyModuleList());
    EXPECT_EQ(Files(), (std::vector<std::string>{"c.elf", "A.elf", "d.elf"}));
    EXPECT_EQ(state->GetPrograms().At(0), c) << "a program that stays is the same program";
    EXPECT_EQ(state->GetPrograms().At(0)->IsVerifyOff(), S_FALSE) << "its flags follow the module";
    EXPECT_EQ(messages.shown,
              (std::vector<std::string>{"Duplicate download modules found. They have not been added."}));
    EXPECT_EQ(ChangeEvents(), 1u);

    // Only a flag changes: the program takes it, but nothing counts as changed.
    StoreModules({Module("c.elf"), Module("A.elf"), Module("d.elf")});
    EXPECT_FALSE(state->ApplyModuleList());
    EXPECT_EQ(state->GetPrograms().At(0)->IsVerifyOff(), S_OK);
}

TEST_F(Programs, AChangedFileIsOfferedForReloadUnlessADownloadRuns)
{
    TempFolder folder;
    const std::string path = (folder / "app.elf").string();
    std::ofstream(path) << "x";
    StoreModules({Module(path), Module("other.elf"), Module(path, 0x1000)});
    ASSERT_EQ(state->OpenSession(true, false, false), S_OK);
    const std::string question = "Download module '" + path + "'\nhas changed. Do you want to reload it?";
    const auto asked = [&] {
        return std::count(log.begin(), log.end(),
                          "AskYesNo 'Reload out-of-date download modules' " + question);
    };

    registry.SetBusy(Ids::BusyLoad);
    state->OnFileChanged(path);
    EXPECT_EQ(asked(), 0) << "a running download notes the time itself";
    registry.ClearBusy(Ids::BusyLoad);
    state->OnFileChanged(path);
    EXPECT_EQ(asked(), 0) << "the time is the one noted";

    std::ofstream(path) << "rebuilt";
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + std::chrono::seconds(5));
    prompts.answerYes = false;
    state->OnFileChanged(path);
    EXPECT_EQ(asked(), 1);
    EXPECT_TRUE(state->GetReloadQueue().empty());
    state->OnFileChanged(path);
    EXPECT_EQ(asked(), 1) << "asked once for one change";

    // A path never seen has no time: it counts as changed.
    prompts.answerYes = true;
    state->OnFileChanged(path + "-new");
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + std::chrono::seconds(5));
    state->OnFileChanged(path);
    EXPECT_EQ(state->GetReloadQueue(), (std::vector<int32_t>{0, 2}));
    EXPECT_EQ(posts.posted, (std::vector<uint32_t>{0x447}));

    // A finished build notes the new times, so the notice that follows asks nothing.
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + std::chrono::seconds(5));
    store.text["platform"] = "sim";
    ASSERT_EQ(state->Connect(), S_OK);
    state->OnEvent(Event{Ids::EVENT_BUILD_FINISHED, 0});
    state->OnFileChanged(path);
    EXPECT_EQ(asked(), 2);
}

// Loads, saves and verifies through a scripted reader, connected to a target
// whose memory takes the download mode.
struct Downloads : Programs {
    CallLog loads;
    FakeObjectReaders readers{loads, registry};
    FakePlatformMemory memory{{{0, 0xFFFF}}};
    MessageLoop loop;
    ProgressDisplayService progress{loop, std::cout, false};

    void SetUp() override
    {
        Programs::SetUp();
        memory.RegisterIn(registry);
        registry.Provide(Ids::DriverFactory, nullptr);
        registry.Provide(Ids::DriverFactory, &readers);
        registry.Provide(Ids::ProgressDisplay, &progress);
        store.text["platform"] = "sim";
        StoreModules({Module("/fw/boot.elf"), Module("/fw/app.elf", 0x100, 0, 1)});
        ASSERT_EQ(state->OpenSession(true, false, false), S_OK);
        ASSERT_TRUE(state->IsConnected());
        log.clear();
        memory.log.clear();
    }
    bool HasLabel(const std::string& name)
    {
        LabelRecord record{name};
        return state->GetLabels()->FindLabelByName(record, 1) == S_OK;
    }
    bool Busy() { return registry.IsBusy(Ids::BusyLoad) != 0; }
    CQProgram& Program(int32_t index) { return *state->GetPrograms().At(index); }
};

TEST_F(Downloads, EveryEndOfALoadLeavesLabelsModeAndMarksInOrder)
{
    struct Case {
        const char* name;
        ReaderScript script;
        int32_t status;
        std::vector<std::string> shown;
    };
    ReaderScript failed, cancelled, mismatch;
    failed.status = cancelled.status = mismatch.status = TASK_FAILED;
    failed.code = MakeResult(0x80043010u);
    cancelled.userCancels = true;
    mismatch.mismatch = std::tuple(0x1004u, 7, 9);
    mismatch.code = failed.code;
    const Case cases[] = {
        {"done", ReaderScript{}, TASK_DONE, {}},
        {"failed", failed, TASK_FAILED, {"Checksum error in object module\r\n\r\nFile: /fw/boot.elf"}},
        {"cancelled", cancelled, TASK_CANCELLED, {"Download Aborted"}},
        {"mismatch", mismatch, TASK_FAILED, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        readers.script = c.script;
        messages.shown.clear();
        memory.log.clear();
        EXPECT_EQ(state->LoadProgram(Program(0), false, false, false), c.status);
        EXPECT_EQ(Program(0).IsLoaded() == S_OK, c.status == TASK_DONE);
        EXPECT_EQ(HasLabel("_main"), c.status == TASK_DONE) << "a failed load takes its labels away";
        EXPECT_EQ(memory.log, (std::vector<std::string>{"SetDownloadMode2 0xFFFFFFFF..0xFFFFFFFF",
                                                        "SetDownloadMode2 0x0..0x0"}));
        if (c.script.mismatch) {
            ASSERT_EQ(messages.shown.size(), 1u);
            EXPECT_NE(messages.shown[0].find("Address: 0x00001004\r\nValue in memory: 7\r\nValue in file: 9"),
                      std::string::npos);
        } else {
            EXPECT_EQ(messages.shown, c.shown);
        }
    }
}

TEST_F(Downloads, DownloadingAllLoadsEachProgramOnceAndLeavesTheMarkClear)
{
    ASSERT_EQ(state->DownloadPrograms(-1, false, false, false, true, true), S_OK);
    EXPECT_EQ(loads, (CallLog{"Load 3 /fw/boot.elf", "Load 1 /fw/app.elf"}))
        << "a debug-only module loads its data";
    EXPECT_TRUE(Program(0).IsLoaded() == S_OK && Program(1).IsLoaded() == S_OK);
    EXPECT_EQ(recorder.Lines().front(), "file_load_all");
    EXPECT_FALSE(Busy());

    // All again, without the reload flag: the first pass has made them not loaded.
    loads.clear();
    readers.script.status = TASK_FAILED;
    EXPECT_LT(state->DownloadPrograms(-1, false, false, false, true, true), 0);
    EXPECT_EQ(loads, (CallLog{"Load 3 /fw/boot.elf"})) << "a failed program ends the walk";
    EXPECT_FALSE(Busy());

    registry.SetBusy(Ids::BusyLoad);
    loads.clear();
    EXPECT_EQ(state->DownloadPrograms(0, true, false, false, true, true), E_FAIL);
    EXPECT_TRUE(loads.empty()) << "another load holds the mark";
    registry.ClearBusy(Ids::BusyLoad);
}

TEST_F(Downloads, UnloadingAsksForLoadedProgramsAndKeepsThemInTheList)
{
    ASSERT_EQ(state->DownloadPrograms(0, true, false, false, true, false), S_OK);
    ASSERT_TRUE(HasLabel("_main"));
    prompts.answerYes = false;
    EXPECT_EQ(state->UnloadPrograms(-1), S_OK);
    EXPECT_EQ(Program(0).IsLoaded(), S_OK) << "no to the question";
    prompts.answerYes = true;
    EXPECT_EQ(state->UnloadPrograms(-1), S_OK);
    EXPECT_NE(Program(0).IsLoaded(), S_OK);
    EXPECT_FALSE(HasLabel("_main"));
    EXPECT_EQ(state->GetProgramCountA(), 2);
    EXPECT_EQ(std::count_if(log.begin(), log.end(),
                            [](const std::string& line) {
                                return line.find("unload program '/fw/boot.elf'") != std::string::npos;
                            }),
              2)
        << "asked each time, for the loaded program only";

    state->Disconnect();
    EXPECT_EQ(state->UnloadPrograms(-1), E_FAIL);
    EXPECT_FALSE(Busy());
}

TEST_F(Downloads, SavesAndVerifiesGoThroughATemporaryProgram)
{
    EXPECT_EQ(state->SaveMemory(0x100, 0x1FF, "/tmp/out.elf", "elf", 4), TASK_DONE);
    EXPECT_EQ(loads, (CallLog{"Save /tmp/out.elf 0x100-0x1FF", "Release reader"}));
    EXPECT_EQ(recorder.Lines().back(), "file_save elf \"/tmp/out.elf\" 0x100 0x1FF long");
    ASSERT_EQ(state->GetRecentLists().MruProgramSave.Count(), 1u);
    EXPECT_EQ(state->GetRecentLists().MruProgramSave.At(0).AddressEnd, 0x1FFu);

    EXPECT_EQ(state->VerifyMemory("elf", "/tmp/out.elf", 0x100, 1, false), TASK_DONE);
    EXPECT_EQ(messages.shown.back(), "File verified ok '/tmp/out.elf'");
    readers.script.status = TASK_FAILED;
    readers.script.code = MakeResult(0x80043010u);
    readers.script.mismatch = std::tuple(0x104u, 1, 2);
    EXPECT_EQ(state->VerifyMemory("elf", "/tmp/out.elf", 0x100, 1, false), TASK_FAILED);
    EXPECT_NE(messages.shown.back().find("Address: 0x00000104"), std::string::npos);
    EXPECT_EQ(state->GetRecentLists().MruProgramVerify.Count(), 1u)
        << "only a verify that worked is remembered";
    EXPECT_EQ(state->SaveMemory(0, 1, "/tmp/x", "nosuch", 1), TASK_FAILED) << "no reader for the format";
}

// Another component's requests: one file in, at once, kept in the session or not.
TEST_F(Downloads, AddAndDownloadLeavesTheSessionAsItWasUnlessToldToKeep)
{
    std::string ranges = "untouched";
    EXPECT_EQ(state->AddAndDownloadProgram("/fw/x.elf", "elf", 0, 3, VARIANT_FALSE, VARIANT_FALSE, ranges),
              MakeResult(0x80043091u));
    EXPECT_EQ(ranges, "");
    readers.script.areas = {{0x1000, 0x1FFF}, {0x4000, 0x40FF}};
    EXPECT_EQ(state->AddAndDownloadProgram("/fw/x.elf", "elf", 0, 4, VARIANT_FALSE, VARIANT_FALSE, ranges),
              S_OK);
    EXPECT_EQ(ranges, "00001000 - 00001FFF\n00004000 - 000040FF");
    EXPECT_EQ(Files(), (std::vector<std::string>{"/fw/boot.elf", "/fw/app.elf"}));
    EXPECT_NE(std::find(loads.begin(), loads.end(), "Load 3 /fw/x.elf"), loads.end());

    EXPECT_EQ(state->AddAndDownloadProgram("/fw/x.elf", "elf", 0, 4, VARIANT_FALSE, VARIANT_TRUE, ranges),
              S_OK);
    EXPECT_EQ(Files(), (std::vector<std::string>{"/fw/x.elf"})) << "kept as the only module";
    EXPECT_EQ(state->ReadModules().size(), 1u);

    // AddProgram keeps a program only when its download works.
    readers.script.status = TASK_FAILED;
    EXPECT_EQ(state->AddProgram("/fw/bad.elf", "elf", 0, 4, 0, 0, 0), S_FALSE);
    EXPECT_EQ(Files(), (std::vector<std::string>{"/fw/x.elf"}));
    readers.script.status = TASK_DONE;
    EXPECT_EQ(state->AddProgram("/fw/good.elf", "elf", 0, 4, 0, 0, 0), S_OK);
    EXPECT_EQ(state->ReadModules().size(), 2u);
}

TEST_F(Downloads, AnApplicationNamesFilesByTheirNameAlone)
{
    store.text["reader"] = "elf";
    EXPECT_EQ(state->UnloadFile("nothing.elf"), MakeResult(0x80040216u));
    EXPECT_EQ(state->DownloadFile("/fw/new.elf"), S_OK);
    EXPECT_EQ(Files(), (std::vector<std::string>{"/fw/new.elf"})) << "the session's modules give way";
    EXPECT_EQ(Program(0).IsLoaded(), S_OK);
    EXPECT_EQ(state->UnloadFile("NEW.ELF"), S_OK);
    EXPECT_NE(Program(0).IsLoaded(), S_OK);
    EXPECT_EQ(state->StepIn(3, 1), MakeResult(0x80040201u));
    state->Disconnect();
    EXPECT_EQ(state->DownloadFile("/fw/new.elf"), MakeResult(0x80040218u));
}

TEST_F(Downloads, ChangedSettingsReconnectAndDownloadWhatIsMarkedForIt)
{
    ASSERT_EQ(state->DownloadPrograms(-1, false, false, false, true, false), S_OK);
    // The same platform: the programs stay loaded.
    state->ApplySessionSettings();
    EXPECT_EQ(Program(0).IsLoaded(), S_OK);

    CDownloadModule automatic = Module("/fw/boot.elf");
    automatic.AutoDownload = 1;
    StoreModules({automatic, Module("/fw/app.elf", 0x100, 0, 1)});
    store.text["platform"] = "pdsim-not-installed";
    state->ApplySessionSettings();
    EXPECT_FALSE(state->IsConnected());
    EXPECT_NE(Program(0).IsLoaded(), S_OK) << "a new platform has none of the programs";
    loads.clear();
    store.text["platform"] = "sim";
    state->ApplySessionSettings();
    EXPECT_TRUE(state->IsConnected());
    EXPECT_EQ(loads, (CallLog{"Load 3 /fw/boot.elf"})) << "only the module marked for it";
}

// The console stores a download timing's batch file by its name; a download
// hands it over, once for the request. The command line runs it later, so an
// after-download file waits in vain while a before-download one still runs.
TEST_F(Downloads, StoredBatchFilesOfTheDownloadTimingsRunAroundADownload)
{
    struct CommandLine : IQCommandLineService {
        FAKE_WITHOUT_INTERFACES
        HRESULT RunBatchFile(const std::string& path) override { return started.push_back(path), S_OK; }
        HRESULT GetQuotingVersion(int32_t& v) override { return v = 65535, S_OK; }
        std::vector<std::string> started;
    };
    TempFolder dir;
    const std::string before = dir.WriteFile("before.qdc", "help\n"), after = dir.WriteFile("after.qdc", "");
    const std::vector<std::pair<std::vector<std::string>, std::vector<std::string>>> cases = {
        {{"before-download"}, {before}},
        {{"after-download"}, {after}},
        {{"before-download", "after-download"}, {before}},
        {{"connection", "after-reset"}, {}},
    };
    for (const auto& [timings, started] : cases) {
        CommandLine commandLine;
        registry.Provide(Ids::CommandLineService, &commandLine);
        std::vector<std::vector<std::string>> records;
        for (const std::string& name : timings) {
            int32_t timing = -1;
            ASSERT_TRUE(WorkspaceSession::ParseTiming(name, timing)) << name;
            records.push_back({name == "before-download" ? before : after, std::to_string(timing)});
        }
        store.lists["batch"] = CComUtils::RecordsToVariant(records);
        ASSERT_EQ(state->OpenSession(true, false, false), S_OK);
        ASSERT_EQ(state->DownloadPrograms(-1, true, false, false, true, false), S_OK);
        EXPECT_EQ(commandLine.started, started) << timings.front();
        for (size_t i = 0; i < started.size(); ++i)
            state->OnEvent(Event{Ids::EVENT_BATCH_FINISHED, 0});
        registry.Provide(Ids::CommandLineService, nullptr);
    }
}

TEST_F(Downloads, AFinishedBuildOffersEveryProgramWhenOneWasRebuilt)
{
    TempFolder folder;
    const std::string path = (folder / "app.elf").string();
    std::ofstream(path) << "x";
    StoreModules({Module(path), Module("/fw/other.elf")});
    ASSERT_EQ(state->OpenSession(true, false, false), S_OK);
    ASSERT_EQ(state->DownloadPrograms(-1, false, false, false, true, false), S_OK);
    store.number["afterbuild"] = VARIANT_TRUE;
    loads.clear();
    state->OnEvent(Event{Ids::EVENT_BUILD_FINISHED, 0});
    EXPECT_TRUE(loads.empty()) << "nothing was rebuilt";

    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + std::chrono::seconds(5));
    prompts.answerYes = true;
    state->OnEvent(Event{Ids::EVENT_BUILD_FINISHED, 0});
    EXPECT_EQ(loads, (CallLog{"Load 3 " + path, "Load 3 /fw/other.elf"}));
    EXPECT_TRUE(Logged("AskYesNo 'Download modules after build' OK to download module: " + path));
}

} // namespace
