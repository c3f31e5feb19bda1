#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "component/program/CDownloadModuleFileManager.h"
#include "component/program/FileManagerSearch.h"
#include "support/Recording.h"
#include "support/TempFolder.h"
#include "workbench/ProjectFileService.h"

namespace fs = std::filesystem;

namespace
{

class FakeOwner : public FileManagerOwner
{
public:
    std::vector<std::string> ModuleSourceFiles(int32_t) override
    {
        ++sourceCalls;
        return sources;
    }
    std::string ExpandedModulePath(int32_t) override { return modulePath; }
    void ShowMessage(const std::string& text) override { box.ShowMessage(text, MessageIcon::Information); }
    bool AskYesNo(const std::string& question) override
    {
        VariantBool answer = VARIANT_FALSE;
        box.AskYesNo(question, VARIANT_TRUE, answer);
        return answer != 0;
    }
    void DebugText(const std::string& text) override { debug.push_back(text); }

    RecordingMessageBox box;
    std::vector<std::string> sources;
    std::string modulePath;
    std::vector<std::string> debug;
    int sourceCalls = 0;
};

class FakeChooser : public FileManagerChooser
{
public:
    std::optional<std::string> ChooseFile(const std::string& title, const std::string& filter,
                                          const std::string& start) override
    {
        asked.push_back(title + " " + filter + " in " + start);
        return answer;
    }
    std::optional<std::string> ChooseDirectory(const std::string& title, const std::string& history) override
    {
        asked.push_back(title + " " + history);
        return answer;
    }
    std::optional<std::string> answer;
    std::vector<std::string> asked;
};

const char* const NotLocatedNote = "Please note, one or more files were not located.";

void SetTime(const std::string& path, time_t seconds)
{
    const timespec times[2] = {{seconds, 0}, {seconds, 0}};
    utimensat(AT_FDCWD, path.c_str(), times, 0);
}

// A session's file manager over the workbench's real project service and a
// temporary folder that holds the module "mod/app.elf".
struct Rig {
    Rig()
    {
        prompts.enabled = false;
        registry.Provide(Ids::UserPromptTable, static_cast<IQUserPromptTable*>(&prompts));
        registry.Provide(Ids::ProjectFileService, static_cast<IQProjectFileService*>(&files));
        owner.modulePath = module;
        Start();
    }
    // A new session: what it knows comes from the list beside the module.
    void Start(VariantBool reply = VARIANT_TRUE)
    {
        manager.reset();
        manager.emplace(owner, &registry);
        manager->SetDebugOnlyProjects({"Other", "Demo"});
        owner.box = RecordingMessageBox{};
        owner.box.reply = reply;
    }
    std::string Make(const std::string& relative) const
    {
        fs::create_directories((folder / relative).parent_path());
        return folder.WriteFile(relative, relative).string();
    }
    std::string At(const std::string& relative) const { return (folder / relative).string(); }
    // The module, built at `seconds`, downloaded with these source names.
    HRESULT Load(std::vector<std::string> sources, time_t seconds = 1000000, bool forced = false,
                 const std::string& relative = "mod/app.elf")
    {
        if (!fs::exists(At(relative)))
            Make(relative);
        SetTime(At(relative), seconds);
        owner.sources = std::move(sources);
        return manager->OnModuleDownloaded("Demo", At(relative), 0, forced);
    }
    std::vector<std::string> ProjectFiles()
    {
        std::vector<std::pair<std::string, std::string>> entries;
        files.GetProjectFiles("Demo", entries);
        std::vector<std::string> paths;
        for (const auto& [id, path] : entries)
            paths.push_back(path);
        std::sort(paths.begin(), paths.end());
        return paths;
    }
    std::map<std::string, int> States()
    {
        const auto* data = manager->Data("Demo");
        return data == nullptr ? std::map<std::string, int>{}
                               : std::map<std::string, int>(data->FileStates.begin(), data->FileStates.end());
    }
    std::vector<std::string> Shown() { return owner.box.shown; }

    TempFolder folder;
    std::string module = At("mod/app.elf");
    CallLog log;
    RecordingRegistry registry{log};
    RecordingPromptTable prompts{log};
    ProjectFileService files;
    FakeOwner owner;
    std::optional<CDownloadModuleFileManager> manager;
};

TEST(FileManager, RegistersItsThreePromptsAndRevokesThem)
{
    Rig rig;
    rig.manager.reset();
    EXPECT_EQ(rig.log,
              (CallLog{
                  "GetService UserPromptTable",
                  "AddPrompt Component 'Do not show Debug only workspace browse dialog on download' 0",
                  "AddPrompt Component 'Show message when cancelling directory browse dialog' 1",
                  "AddPrompt Component 'Show Dialog to search on OK for directory browse dialog' 1",
                  "DeletePrompt 'Do not show Debug only workspace browse dialog on download'",
                  "DeletePrompt 'Show message when cancelling directory browse dialog'",
                  "DeletePrompt 'Show Dialog to search on OK for directory browse dialog'",
              }));
}

TEST(FileManager, FirstScanSearchesTheModulesFolderAndItsSubfolders)
{
    for (bool browseSwitchedOff : {false, true}) {
        Rig rig;
        rig.prompts.enabled = browseSwitchedOff;
        auto main = rig.Make("mod/main.c"), a = rig.Make("mod/a/util.c"), b = rig.Make("mod/b/util.c");
        auto defs = rig.Make("inc/defs.h"), deep = rig.Make("mod/b/c/deep.c");
        ASSERT_EQ(rig.Load({"main.c", "util.c", "./util.c", "../inc/defs.h", "/nowhere/abs.c", "deep.c",
                            "gone.c", "GONE.C", "main.c"}),
                  S_OK);

        // "./util.c" means a file of its own, not the one "util.c" took; a name
        // given twice is one file, and one not found twice counts a duplicate.
        EXPECT_EQ(
            rig.States(),
            (std::map<std::string, int>{
                {main, 1}, {a, 1}, {b, 1}, {defs, 1}, {deep, 1}, {"/nowhere/abs.c", 0}, {"gone.c", 0}}));
        EXPECT_EQ(rig.manager->Data("Demo")->DuplicateCounts,
                  (decltype(CDownloadModuleData::DuplicateCounts){{"gone.c", 1}}));
        EXPECT_EQ(rig.ProjectFiles(), (std::vector<std::string>{defs, a, deep, b, main}));
        // Where the search dialog would be shown.
        EXPECT_EQ(rig.Shown().size(), browseSwitchedOff ? 0u : 1u);
        EXPECT_TRUE(fs::exists(rig.At("mod/app_files.qdd")));
    }
}

TEST(FileManager, SearchFindsANameByTheRulesOfItsKind)
{
    TempFolder folder;
    fs::create_directories(folder / "m/b");
    fs::create_directories(folder / "m/a/z");
    auto in = [&](const std::string& relative) { return (folder / relative).string(); };
    folder.WriteFile("m/b/x.c", "");
    folder.WriteFile("m/a/z/x.c", "");
    folder.WriteFile("m/top.c", "");
    struct Case {
        std::string name;
        bool subdirectories;
        std::string taken;
        std::string expected; // "" for not found
    };
    const Case cases[] = {
        {"top.c", false, "", in("m/top.c")},
        {"x.c", false, "", ""},
        {"x.c", true, "", in("m/a/z/x.c")}, // depth first, folders by name
        {"x.c", true, in("m/a/z/x.c"), in("m/b/x.c")},
        {"b\\..\\top.c", false, "", in("m/top.c")},
        {in("m/top.c"), true, "", in("m/top.c")},
        {in("m/top.c"), true, in("m/top.c"), ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name + (c.subdirectories ? " with subfolders" : "") + " taken " + c.taken);
        auto found = FileManagerSearch::Find(c.name, in("m"), c.subdirectories,
                                             [&](const std::string& path) { return path == c.taken; });
        EXPECT_EQ(found.value_or(""), c.expected);
    }
}

TEST(FileManager, ASourceNameIsMatchedInThreePasses)
{
    const std::vector<std::string> located = {"/w/a/util.c", "/w/b/util.c", "/w/src/main.c",
                                              "/w/x/src/main.c"};
    struct Case {
        std::string name;
        std::string expected; // "" for none
        bool ambiguous;
    };
    const Case cases[] = {
        {"/W/SRC/MAIN.C", "/w/src/main.c", false},        // whole path, any case
        {"../../b/util.c", "/w/b/util.c", false},         // tail without its ".."
        {"..\\x\\src\\main.c", "/w/x/src/main.c", false}, // the longer tail decides
        {"src/main.c", "/w/src/main.c", true},            // two tails: the first wins
        {"/elsewhere/util.c", "/w/a/util.c", true},       // file name alone
        {"/w/src/other.c", "", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        bool ambiguous = !c.ambiguous;
        EXPECT_EQ(FileManagerSearch::Match(c.name, located, ambiguous).value_or(""), c.expected);
        EXPECT_EQ(ambiguous, c.ambiguous);
    }
}

TEST(FileManager, AMovedModuleAsksOnceAndTakesTheNewPlaceOnlyOnYes)
{
    for (VariantBool reply : {VARIANT_FALSE, VARIANT_TRUE}) {
        SCOPED_TRACE(reply);
        Rig rig;
        auto oldMain = rig.Make("old/src/main.c");
        rig.Load({"src/main.c", "gone.c"}, 1000000, false, "old/app.elf");
        fs::copy(rig.At("old"), rig.At("new"), fs::copy_options::recursive);

        rig.Start(reply);
        ASSERT_EQ(rig.Load({"src/main.c", "gone.c"}, 1000000, false, "new/app.elf"), S_OK);
        EXPECT_EQ(rig.Shown(),
                  std::vector<std::string>{"Module " + rig.At("new/app.elf") +
                                           " has been moved.\nWould you like the module file paths "
                                           "to be modified to the new location?"});
        auto main = reply ? rig.At("new/src/main.c") : oldMain;
        EXPECT_EQ(rig.States(), (std::map<std::string, int>{{main, 1}, {"gone.c", 0}}));
        EXPECT_EQ(rig.owner.sourceCalls, 1);

        // What was answered is what the next session reads, without asking when it was yes.
        rig.Start(VARIANT_FALSE);
        rig.Load({}, 1000000, false, "new/app.elf");
        EXPECT_EQ(rig.Shown().size(), reply ? 0u : 1u);
        EXPECT_EQ(rig.States(), (std::map<std::string, int>{{main, 1}, {"gone.c", 0}}));
    }
}

TEST(FileManager, AListOfAnotherTimeIsSearchedAgainWhereItSays)
{
    Rig rig;
    rig.Load({"main.c"});
    auto main = rig.Make("mod/lib/main.c"), added = rig.Make("mod/lib/added.c");
    rig.Start();
    rig.Load({"main.c", "added.c"}, 2000000);
    EXPECT_EQ(rig.States(), (std::map<std::string, int>{{added, 1}, {main, 1}}));
    EXPECT_EQ(rig.ProjectFiles(), (std::vector<std::string>{added, main}));
}

TEST(FileManager, AChangedModuleIsScannedAgainAndAnUnchangedOneOnlyReentered)
{
    Rig rig;
    auto main = rig.Make("mod/main.c");
    rig.Load({"main.c"});
    rig.Load({"main.c"});
    EXPECT_EQ(rig.owner.sourceCalls, 1);
    rig.manager->ForgetModule("Demo", rig.module);
    EXPECT_TRUE(rig.ProjectFiles().empty());
    rig.Load({"main.c"});
    EXPECT_EQ(rig.owner.sourceCalls, 1);
    EXPECT_EQ(rig.ProjectFiles(), std::vector<std::string>{main});

    auto extra = rig.Make("mod/sub/extra.c");
    rig.Load({"main.c", "extra.c"}, 2000000);
    EXPECT_EQ(rig.owner.sourceCalls, 2);
    EXPECT_EQ(rig.ProjectFiles(), (std::vector<std::string>{main, extra}));
    EXPECT_EQ(rig.manager->Data("Demo")->ModuleTime, CFileTime::OfFile(rig.module, nullptr));

    // Forced: searched where the data searched before, and what is missing noted.
    rig.Load({"main.c", "gone.c"}, 3000000, true);
    EXPECT_EQ(rig.States(), (std::map<std::string, int>{{main, 1}, {"gone.c", 0}}));
    EXPECT_EQ(rig.Shown(), std::vector<std::string>{NotLocatedNote});
}

TEST(FileManager, AMissingModuleCountsAsChangedAndIsReported)
{
    Rig rig;
    rig.owner.sources = {"main.c"};
    rig.manager->OnModuleDownloaded("Demo", rig.module, 0, false);
    rig.manager->OnModuleDownloaded("Demo", rig.module, 0, false);
    EXPECT_EQ(rig.owner.sourceCalls, 2);
    ASSERT_EQ(rig.owner.debug.size(), 2u);
    EXPECT_EQ(rig.owner.debug[0], "Cannot access file " + rig.module + ",No such file or directory\n");
}

TEST(FileManager, AProjectThatIsntDebugOnlyIsLeftAlone)
{
    Rig rig;
    rig.Make("mod/app.elf");
    rig.Make("mod/main.c");
    rig.owner.sources = {"main.c"};
    FakeChooser chooser;
    rig.manager->SetChooser(&chooser);
    auto& m = *rig.manager;
    std::string path;
    std::vector<std::string> paths;
    EXPECT_EQ(m.OnModuleDownloaded("Built", rig.module, 0, true), S_FALSE);
    EXPECT_EQ(m.AddDownloadFile("Built", "main.c", path), S_FALSE);
    EXPECT_EQ(m.AddDownloadFiles("Built", {"main.c"}, paths), S_FALSE);
    EXPECT_EQ(m.RelocateModuleFiles("Built", 0), S_FALSE);
    m.SetDebugOnlyProjects({});
    EXPECT_EQ(m.OnModuleDownloaded("Demo", rig.module, 0, true), S_FALSE);
    EXPECT_EQ(m.Data("Built"), nullptr);
    EXPECT_EQ(m.Data("Demo"), nullptr);
    EXPECT_EQ(rig.owner.sourceCalls, 0);
    EXPECT_TRUE(chooser.asked.empty());
    EXPECT_FALSE(fs::exists(rig.At("mod/app_files.qdd")));
}

TEST(FileManager, AFileIsLocatedByHandThroughTheChooser)
{
    Rig rig;
    auto main = rig.Make("mod/main.c");
    auto moved = rig.Make("elsewhere/util.c");
    rig.Load({"main.c", "util.c"});
    rig.owner.box.shown.clear();
    std::string path;
    std::vector<std::string> paths;

    // No chooser: a message, and nothing changes.
    EXPECT_EQ(rig.manager->AddDownloadFile("Demo", "util.c", path), E_FAIL);
    EXPECT_EQ(rig.manager->RelocateModuleFiles("Demo", 0), E_FAIL);
    EXPECT_EQ(rig.Shown().size(), 2u);
    EXPECT_EQ(rig.States(), (std::map<std::string, int>{{main, 1}, {"util.c", 0}}));
    EXPECT_FALSE(rig.manager->IsProjectDirty());

    FakeChooser chooser;
    rig.manager->SetChooser(&chooser);
    rig.owner.box.shown.clear();
    chooser.answer = main;
    EXPECT_EQ(rig.manager->AddDownloadFile("Demo", "util.c", path), E_FAIL);
    EXPECT_EQ(rig.Shown(), std::vector<std::string>{"This file can not be located to " + main +
                                                    ", this file already exists in this project."});
    chooser.answer = rig.At("elsewhere/none.c");
    EXPECT_EQ(rig.manager->AddDownloadFile("Demo", "util.c", path), E_FAIL);
    EXPECT_EQ(rig.manager->AddDownloadFile("Demo", "other.c", path), E_INVALIDARG);
    EXPECT_EQ(rig.Shown().size(), 3u);
    EXPECT_EQ(rig.States(), (std::map<std::string, int>{{main, 1}, {"util.c", 0}}));
    chooser.answer = moved;
    EXPECT_EQ(rig.manager->AddDownloadFile("Demo", "util.c", path), S_OK);
    EXPECT_EQ(path, moved);
    EXPECT_EQ(chooser.asked.back(),
              "Please select new location of file (util.c)|util.c| in " + rig.At("mod"));
    EXPECT_EQ(rig.States(), (std::map<std::string, int>{{moved, 1}, {main, 1}}));
    EXPECT_EQ(rig.ProjectFiles(), (std::vector<std::string>{moved, main}));
    EXPECT_TRUE(rig.manager->IsProjectDirty());
    rig.manager->ClearChanged();
    EXPECT_FALSE(rig.manager->IsProjectDirty());

    // Several at once: one note for all that failed, the others taken.
    rig.owner.box.shown.clear();
    chooser.answer = main;
    EXPECT_EQ(rig.manager->AddDownloadFiles("Demo", {moved, main}, paths), S_FALSE);
    EXPECT_EQ(paths, std::vector<std::string>{main});
    EXPECT_EQ(rig.Shown(), std::vector<std::string>{"Please note one or more files could not be located.\n"
                                                    "These files may already exisit in the project."});
}

TEST(FileManager, RelocatingAModuleSearchesTheChosenFolderForAllItsFiles)
{
    Rig rig;
    rig.Make("mod/src/main.c");
    rig.Load({"src/main.c", "/build/gone.c"});
    auto main = rig.Make("copy/deep/main.c"), gone = rig.Make("copy/gone.c");
    // Another module of the project, taken out of it before, stays out.
    auto other = rig.At("lib/other.elf");
    rig.Load({}, 5000000, false, "lib/other.elf");
    rig.manager->ForgetModule("Demo", other);
    FakeChooser chooser;
    chooser.answer = rig.At("nowhere");
    rig.manager->SetChooser(&chooser);
    EXPECT_EQ(rig.manager->RelocateModuleFiles("Demo", 0), E_FAIL);
    EXPECT_EQ(rig.Shown().back(), "The directory " + rig.At("nowhere") + " can not be found.");
    chooser.answer = rig.At("copy");
    ASSERT_EQ(rig.manager->RelocateModuleFiles("Demo", 0), S_OK);
    EXPECT_EQ(chooser.asked.back(), "Please select new location of module files MRU_WORKSPACES");
    EXPECT_EQ(rig.States(), (std::map<std::string, int>{{main, 1}, {gone, 1}}));
    EXPECT_EQ(rig.ProjectFiles(), (std::vector<std::string>{main, gone}));
    EXPECT_FALSE(rig.manager->Data("Demo")->IsActive(other));
    bool ambiguous = false;
    EXPECT_EQ(rig.manager->FindSourceFile("gone.c", rig.module, ambiguous).value_or(""), gone);
}

TEST(FileManager, AModulesFilesAreAddedRemovedAndFound)
{
    Rig rig;
    auto a = rig.Make("mod/a/util.c"), b = rig.Make("mod/b/util.c");
    auto extra = rig.Make("other/extra.c");
    bool ambiguous = false;
    EXPECT_EQ(rig.manager->AddFileToModule(rig.module, extra), E_FAIL);
    EXPECT_FALSE(rig.manager->FindSourceFile("util.c", rig.module, ambiguous));
    rig.Load({"a/util.c", "b/util.c", "gone.c"});
    EXPECT_EQ(rig.manager->FindSourceFile("util.c", rig.module, ambiguous).value_or(""), a);
    EXPECT_TRUE(ambiguous);
    EXPECT_FALSE(rig.manager->FindSourceFile("gone.c", rig.module, ambiguous));
    EXPECT_FALSE(rig.manager->FindSourceFile("util.c", rig.At("mod/other.elf"), ambiguous));

    EXPECT_EQ(rig.manager->AddFileToModule(rig.module, extra), S_OK);
    EXPECT_EQ(rig.manager->RemoveFileFromModule(rig.module, a), S_OK);
    EXPECT_EQ(rig.manager->RemoveFileFromModule(rig.module, a), E_FAIL);
    EXPECT_EQ(rig.ProjectFiles(), (std::vector<std::string>{b, extra}));
    EXPECT_EQ(rig.manager->FindSourceFile("extra.c", rig.module, ambiguous).value_or(""), extra);
    EXPECT_EQ(rig.manager->FindSourceFile("util.c", rig.module, ambiguous).value_or(""), b);
    EXPECT_FALSE(ambiguous);

    rig.manager->ClearAll();
    EXPECT_EQ(rig.manager->Data("Demo"), nullptr);
    EXPECT_FALSE(rig.manager->IsDebugOnlyProject("Demo"));
}

} // namespace
