#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "support/RawSql.h"
#include "support/TempFolder.h"
#include "workbench/store/SettingsStore.h"
#include "workbench/store/WorkspaceModel.h"

namespace fs = std::filesystem;

// Found by the test framework beside the type.
void PrintTo(const ActiveSession& a, std::ostream* out)
{
    *out << a.workspace << "/" << a.project << "/" << a.configuration << "/" << a.session;
}

namespace
{

using Names = std::vector<std::string>;

TEST(WorkspaceModel, ANewFolderGetsTheDefaultProjectConfigurationAndSession)
{
    TempFolder dir;
    WorkspaceModel model;
    std::string error;
    ASSERT_TRUE(model.Open(dir / "Motor Control", error)) << error;
    EXPECT_EQ(error, "");
    EXPECT_EQ(model.Name(), "Motor Control");
    EXPECT_FALSE(model.InMemory());
    EXPECT_TRUE(fs::is_regular_file(dir / "Motor Control/.tessel/workspace.db"));
    EXPECT_EQ(model.Projects(), Names{"default"});
    EXPECT_EQ(model.Configurations("default"), Names{"Debug"});
    EXPECT_EQ(model.Sessions("default"), Names{"default"});
    EXPECT_EQ(model.Active(), (ActiveSession{"Motor Control", "default", "Debug", "default"}));
}

TEST(WorkspaceModel, TakesItsNameFromTheFolderHoweverItIsWritten)
{
    TempFolder dir;
    fs::create_directories(dir / "ws/sub");
    for (const fs::path& spelling : {dir / "ws/", dir / "ws/sub/..", dir / "ws/./"}) {
        WorkspaceModel model;
        std::string error;
        ASSERT_TRUE(model.Open(spelling, error)) << error;
        EXPECT_EQ(model.Name(), "ws") << spelling;
        EXPECT_EQ(model.Folder(), dir / "ws");
    }
}

TEST(WorkspaceModel, ListsInOrderOfAdditionKeepingTheSpellingAndIgnoringCase)
{
    WorkspaceModel model;
    std::string error;
    ASSERT_TRUE(model.AddProject("Blinky", error)) << error;
    ASSERT_TRUE(model.AddConfiguration("BLINKY", "Release", error)) << error;
    ASSERT_TRUE(model.AddSession("blinky", "Flash", error)) << error;
    ASSERT_TRUE(model.AddSession("Blinky", "RAM", error)) << error;
    EXPECT_EQ(model.Projects(), (Names{"default", "Blinky"}));
    EXPECT_EQ(model.Configurations("bLiNkY"), (Names{"Debug", "Release"}));
    EXPECT_EQ(model.Sessions("blinky"), (Names{"default", "Flash", "RAM"}));
    EXPECT_EQ(model.Configurations("nowhere"), Names{});
    ASSERT_TRUE(model.SetActive("BLINKY", "release", "flash", error)) << error;
    EXPECT_EQ(model.Active(), (ActiveSession{"", "Blinky", "Release", "Flash"}));
}

struct RefusalCase {
    const char* name;
    std::function<bool(WorkspaceModel&, std::string&)> attempt;
    const char* message;
};

class Refused : public ::testing::TestWithParam<RefusalCase>
{
};

TEST_P(Refused, SaysWhyAndChangesNothing)
{
    WorkspaceModel model;
    std::string error;
    ASSERT_TRUE(model.AddProject("Blinky", error));
    const Names projects = model.Projects(), configurations = model.Configurations("Blinky"),
                sessions = model.Sessions("Blinky");
    const ActiveSession active = model.Active();
    error.clear();
    EXPECT_FALSE(GetParam().attempt(model, error));
    EXPECT_EQ(error, GetParam().message);
    EXPECT_EQ(model.Projects(), projects);
    EXPECT_EQ(model.Configurations("Blinky"), configurations);
    EXPECT_EQ(model.Sessions("Blinky"), sessions);
    EXPECT_EQ(model.Active(), active);
}

auto Project(std::string name)
{
    return [name](WorkspaceModel& m, std::string& e) { return m.AddProject(name, e); };
}
auto Configuration(std::string project, std::string name)
{
    return [=](WorkspaceModel& m, std::string& e) { return m.AddConfiguration(project, name, e); };
}
auto Session(std::string project, std::string name)
{
    return [=](WorkspaceModel& m, std::string& e) { return m.AddSession(project, name, e); };
}
auto Activate(std::string p, std::string c, std::string s)
{
    return [=](WorkspaceModel& m, std::string& e) { return m.SetActive(p, c, s, e); };
}

INSTANTIATE_TEST_SUITE_P(
    WorkspaceModel, Refused,
    ::testing::Values(
        RefusalCase{"EmptyProject", Project(""), "A project needs a name"},
        RefusalCase{"TabInProject", Project("a\tb"), "The project name may not hold control characters"},
        RefusalCase{"NewlineInProject", Project("a\n"), "The project name may not hold control characters"},
        RefusalCase{"DeleteInProject", Project("a\x7f"), "The project name may not hold control characters"},
        RefusalCase{"NextLineInProject", Project("a\xc2\x85"),
                    "The project name may not hold control characters"},
        RefusalCase{"SameProjectInCapitals", Project("BLINKY"), "There is a project named 'BLINKY' already"},
        RefusalCase{"EmptyConfiguration", Configuration("Blinky", ""), "A configuration needs a name"},
        RefusalCase{"ControlInSession", Session("Blinky", "\x01"),
                    "The session name may not hold control characters"},
        RefusalCase{"PathInSession", Session("Blinky", "../x"), "The session name may not hold '/' or '\\'"},
        RefusalCase{"BackslashInSession", Session("Blinky", "a\\b"),
                    "The session name may not hold '/' or '\\'"},
        RefusalCase{"DotsForSession", Session("Blinky", ".."), "The session name may not be '.' or '..'"},
        RefusalCase{"BrokenUtf8InSession", Session("Blinky", "caf\xc3"),
                    "The session name is not valid UTF-8"},
        RefusalCase{"OverlongUtf8InSession", Session("Blinky", "\xc0\xaf"),
                    "The session name is not valid UTF-8"},
        RefusalCase{"LongSession", Session("Blinky", std::string(5000, 's')),
                    "The session name is too long (5000 bytes, at most 200)"},
        RefusalCase{"SameConfiguration", Configuration("blinky", "debug"),
                    "The project 'Blinky' has a configuration named 'debug' already"},
        RefusalCase{"SameSession", Session("blinky", "DEFAULT"),
                    "The project 'Blinky' has a session named 'DEFAULT' already"},
        RefusalCase{"ConfigurationOfNoProject", Configuration("Nowhere", "Release"),
                    "There is no project named 'Nowhere'"},
        RefusalCase{"SessionOfNoProject", Session("Nowhere", "Flash"), "There is no project named 'Nowhere'"},
        RefusalCase{"ActiveInNoProject", Activate("Nowhere", "Debug", "default"),
                    "There is no project named 'Nowhere'"},
        RefusalCase{"ActiveWithNoConfiguration", Activate("Blinky", "Release", "default"),
                    "The project 'Blinky' has no configuration named 'Release'"},
        RefusalCase{"ActiveWithNoSession", Activate("Blinky", "Debug", "Flash"),
                    "The project 'Blinky' has no session named 'Flash'"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(WorkspaceModel, EverythingIsThereWhenTheFolderIsOpenedAgain)
{
    TempFolder dir;
    std::string error;
    {
        WorkspaceModel model;
        ASSERT_TRUE(model.Open(dir / "ws", error)) << error;
        ASSERT_TRUE(model.AddProject("Blinky", error)) << error;
        ASSERT_TRUE(model.AddConfiguration("Blinky", "Release", error)) << error;
        ASSERT_TRUE(model.AddSession("Blinky", "Flash", error)) << error;
        ASSERT_TRUE(model.SetActive("blinky", "RELEASE", "flash", error)) << error;
    }
    WorkspaceModel model;
    ASSERT_TRUE(model.Open(dir / "ws", error)) << error;
    EXPECT_EQ(model.Projects(), (Names{"default", "Blinky"}));
    EXPECT_EQ(model.Configurations("Blinky"), (Names{"Debug", "Release"}));
    EXPECT_EQ(model.Sessions("Blinky"), (Names{"default", "Flash"}));
    EXPECT_EQ(model.Active(), (ActiveSession{"ws", "Blinky", "Release", "Flash"}));
}

// The file is what it is: a hand edit or another release may leave rows the
// rules refuse, or a choice that names nothing.
TEST(WorkspaceModel, StoredTroubleIsMendedOrLeftOutAndTheRestKept)
{
    struct Case {
        const char* sql;
        Names projects;
        ActiveSession active;
        const char* note;
    };
    const ActiveSession fallback{"ws", "default", "Debug", "default"},
        kept{"ws", "Blinky", "Debug", "default"};
    const Case cases[] = {
        {"UPDATE active SET project = 'gone'", {"default", "Blinky"}, fallback, ""},
        {"INSERT INTO project VALUES ('bad' || char(9), 'bad' || char(9))",
         {"default", "Blinky"},
         kept,
         "Left out of the workspace, its name is not usable: project 'bad"},
        {"INSERT INTO project VALUES ('../x', '../x')", {"default", "Blinky"}, kept, "project '../x'"},
        {"INSERT INTO session VALUES ('nowhere', 'x', 'x')",
         {"default", "Blinky"},
         kept,
         "session 'x' of project 'nowhere'"},
        {"DELETE FROM session WHERE project = 'blinky'", {"default", "Blinky"}, fallback, ""},
        {"DELETE FROM project; DELETE FROM configuration; DELETE FROM session", {"default"}, fallback, ""},
        {"DELETE FROM configuration", {"default", "Blinky"}, fallback, ""},
    };
    for (const auto& c : cases) {
        TempFolder dir;
        std::string error;
        {
            WorkspaceModel model;
            ASSERT_TRUE(model.Open(dir / "ws", error)) << error;
            ASSERT_TRUE(model.AddProject("Blinky", error)) << error;
            ASSERT_TRUE(model.SetActive("Blinky", "Debug", "default", error)) << error;
        }
        ASSERT_TRUE(RawSql(WorkspaceModel::StoreFileOf(dir / "ws"), c.sql));
        WorkspaceModel model;
        EXPECT_TRUE(model.Open(dir / "ws", error));
        EXPECT_EQ(error.empty(), c.note[0] == '\0') << c.sql << ": " << error;
        EXPECT_NE(error.find(c.note), std::string::npos) << error;
        EXPECT_EQ(model.Projects(), c.projects) << c.sql;
        EXPECT_EQ(model.Active(), c.active) << c.sql;
    }
}

TEST(WorkspaceModel, AStoreThatCannotBeUsedLeavesAWorkingWorkspaceInMemory)
{
    TempFolder dir;
    fs::create_directories(dir / "ws");
    dir.WriteFile("ws/.tessel", "not a folder");
    WorkspaceModel model;
    std::string error;
    EXPECT_FALSE(model.Open(dir / "ws", error));
    EXPECT_EQ(error.rfind("Cannot open the store '" + (dir / "ws/.tessel/workspace.db").string() + "'", 0),
              0u)
        << error;
    EXPECT_NE(error.find("kept in memory and will not be saved"), std::string::npos) << error;
    EXPECT_TRUE(model.InMemory());
    EXPECT_EQ(model.Name(), "ws");
    EXPECT_EQ(model.Active(), (ActiveSession{"ws", "default", "Debug", "default"}));
    EXPECT_TRUE(model.AddProject("Blinky", error)) << error;
    EXPECT_TRUE(model.SetActive("Blinky", "Debug", "default", error)) << error;

    SettingsStore store(model.SharedDatabase());
    EXPECT_TRUE(store.InMemory());
    EXPECT_EQ(store.SetPlatform("ws", "Blinky", "default", "sim"), S_OK);
}

TEST(WorkspaceModel, ItsStoreKeepsTheSessionSettingsInTheSameFile)
{
    TempFolder dir;
    std::string error;
    {
        WorkspaceModel model;
        ASSERT_TRUE(model.Open(dir / "ws", error)) << error;
        SettingsStore store(model.SharedDatabase());
        ASSERT_FALSE(store.InMemory());
        const ActiveSession key = model.Active();
        ASSERT_EQ(store.SetPlatform(key.workspace, key.project, key.session, "sim"), S_OK);
    }
    SettingsStore store(WorkspaceModel::StoreFileOf(dir / "ws"));
    ASSERT_FALSE(store.InMemory()) << store.LastError();
    std::string platform;
    EXPECT_EQ(store.GetPlatform("WS", "Default", "Default", platform), S_OK);
    EXPECT_EQ(platform, "sim");
}

TEST(WorkspaceModel, BeforeAnyFolderIsOpenedItIsAnUnnamedWorkspaceInMemory)
{
    WorkspaceModel model;
    EXPECT_TRUE(model.InMemory());
    EXPECT_EQ(model.Active(), (ActiveSession{"", "default", "Debug", "default"}));
}

} // namespace
