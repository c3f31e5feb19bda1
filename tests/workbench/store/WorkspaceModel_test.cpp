#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "support/RawSql.h"
#include "support/TempFolder.h"
#include "workbench/store/NameRules.h"
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

// The default project, configuration and session of a new folder are checked
// where they are listed and restored.
TEST(WorkspaceModel, IsUnnamedInMemoryUntilAFolderIsOpenedHoweverItIsWritten)
{
    TempFolder dir;
    fs::create_directories(dir / "ws/sub");
    for (const fs::path& spelling : {dir / "ws/", dir / "ws/sub/..", dir / "ws/./"}) {
        WorkspaceModel model;
        EXPECT_TRUE(model.InMemory());
        EXPECT_EQ(model.Active(), (ActiveSession{"", "default", "Debug", "default"}));
        std::string error;
        ASSERT_TRUE(model.Open(spelling, error)) << error;
        EXPECT_EQ(error, "");
        EXPECT_FALSE(model.InMemory());
        EXPECT_EQ(model.Name(), "ws") << spelling;
        EXPECT_EQ(model.Folder(), dir / "ws");
    }
}

TEST(NameRules, RefuseNamesThatAreEmptyLongBrokenOrHoldControlsOrSeparators)
{
    const std::string controls = "The x name may not hold control characters",
                      separators = "The x name may not hold '/' or '\\'",
                      utf8 = "The x name is not valid UTF-8";
    const std::pair<std::string, std::string> cases[] = {
        {"", "A x needs a name"},
        {"a\tb", controls},
        {"a\n", controls},
        {"a\x7f", controls},
        {"a\xc2\x85", controls},
        {"\x01", controls},
        {"../x", separators},
        {"a\\b", separators},
        {"..", "The x name may not be '.' or '..'"},
        {"caf\xc3", utf8},
        {"\xc0\xaf", utf8},
        {"\xed\xa0\x80", utf8},
        {"\xf4\x90\x80\x80", utf8},
        {std::string(201, 's'), "The x name is too long (201 bytes, at most 200)"},
        {std::string(200, 's'), ""},
        {"Flash \xc3\xa9 \xf0\x9f\x94\xa5", ""},
        {"a.b", ""},
    };
    for (const auto& [name, message] : cases) {
        std::string error;
        EXPECT_EQ(NameRules::Check("x", name, error), message.empty()) << name;
        EXPECT_EQ(error, message) << name;
    }
}

TEST(WorkspaceModel, RefusalSaysWhyAndChangesNothing)
{
    using Attempt = std::function<bool(WorkspaceModel&, std::string&)>;
    const std::pair<Attempt, std::string> cases[] = {
        {[](auto& m, auto& e) { return m.AddProject("", e); }, "A project needs a name"},
        {[](auto& m, auto& e) { return m.AddProject("BLINKY", e); },
         "There is a project named 'BLINKY' already"},
        {[](auto& m, auto& e) { return m.AddConfiguration("Blinky", "a\x01", e); },
         "The configuration name may not hold control characters"},
        {[](auto& m, auto& e) { return m.AddSession("Blinky", "../x", e); },
         "The session name may not hold '/' or '\\'"},
        {[](auto& m, auto& e) { return m.AddConfiguration("blinky", "debug", e); },
         "The project 'Blinky' has a configuration named 'debug' already"},
        {[](auto& m, auto& e) { return m.AddSession("blinky", "DEFAULT", e); },
         "The project 'Blinky' has a session named 'DEFAULT' already"},
        {[](auto& m, auto& e) { return m.AddConfiguration("Nowhere", "Release", e); },
         "There is no project named 'Nowhere'"},
        {[](auto& m, auto& e) { return m.AddSession("Nowhere", "Flash", e); },
         "There is no project named 'Nowhere'"},
        {[](auto& m, auto& e) { return m.SetActive("Nowhere", "Debug", "default", e); },
         "There is no project named 'Nowhere'"},
        {[](auto& m, auto& e) { return m.SetActive("Blinky", "Release", "default", e); },
         "The project 'Blinky' has no configuration named 'Release'"},
        {[](auto& m, auto& e) { return m.SetActive("Blinky", "Debug", "Flash", e); },
         "The project 'Blinky' has no session named 'Flash'"},
    };
    for (const auto& [attempt, message] : cases) {
        WorkspaceModel model;
        std::string error;
        ASSERT_TRUE(model.AddProject("Blinky", error));
        const Names projects = model.Projects(), configurations = model.Configurations("Blinky"),
                    sessions = model.Sessions("Blinky");
        const ActiveSession active = model.Active();
        error.clear();
        EXPECT_FALSE(attempt(model, error));
        EXPECT_EQ(error, message);
        EXPECT_EQ(model.Projects(), projects);
        EXPECT_EQ(model.Configurations("Blinky"), configurations);
        EXPECT_EQ(model.Sessions("Blinky"), sessions);
        EXPECT_EQ(model.Active(), active);
    }
}

// Lists keep the order of addition and the first spelling; names are found
// without regard to case; all of it is there when the folder is opened again.
TEST(WorkspaceModel, ListsInOrderOfAdditionIgnoringCaseAndKeepsThemForTheNextOpening)
{
    TempFolder dir;
    std::string error;
    auto check = [](WorkspaceModel& model) {
        EXPECT_EQ(model.Projects(), (Names{"default", "Blinky"}));
        EXPECT_EQ(model.Configurations("bLiNkY"), (Names{"Debug", "Release"}));
        EXPECT_EQ(model.Sessions("blinky"), (Names{"default", "Flash", "RAM"}));
        EXPECT_EQ(model.Configurations("nowhere"), Names{});
        EXPECT_EQ(model.Active(), (ActiveSession{"ws", "Blinky", "Release", "Flash"}));
    };
    {
        WorkspaceModel model;
        ASSERT_TRUE(model.Open(dir / "ws", error)) << error;
        ASSERT_TRUE(model.AddProject("Blinky", error)) << error;
        ASSERT_TRUE(model.AddConfiguration("BLINKY", "Release", error)) << error;
        ASSERT_TRUE(model.AddSession("blinky", "Flash", error)) << error;
        ASSERT_TRUE(model.AddSession("Blinky", "RAM", error)) << error;
        ASSERT_TRUE(model.SetActive("BLINKY", "release", "flash", error)) << error;
        check(model);
    }
    WorkspaceModel model;
    ASSERT_TRUE(model.Open(dir / "ws", error)) << error;
    check(model);
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
    EXPECT_TRUE(model.InMemory());
    EXPECT_EQ(model.Name(), "ws");
    EXPECT_EQ(model.Active(), (ActiveSession{"ws", "default", "Debug", "default"}));
    EXPECT_TRUE(model.AddProject("Blinky", error)) << error;
    EXPECT_TRUE(model.SetActive("Blinky", "Debug", "default", error)) << error;

    SettingsStore store(model.SharedDatabase());
    EXPECT_TRUE(store.InMemory());
    EXPECT_EQ(store.SetPlatform("ws", "Blinky", "default", "sim"), S_OK);
}

} // namespace
