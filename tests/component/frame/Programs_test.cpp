// The session's programs: one per download module of the settings, found by
// module key, brought into line when the settings change, and offered for
// reload when their file changes on disk.
#include <gtest/gtest.h>

#include <fstream>

#include "component/program/DownloadModuleList.h"
#include "support/StateFixture.h"
#include "support/TempFolder.h"

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

} // namespace
