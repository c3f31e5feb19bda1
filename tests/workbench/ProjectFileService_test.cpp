#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/TempFolder.h"
#include "workbench/ProjectFileService.h"

namespace
{

using List = IQProjectFileService::List;

std::string Bytes(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

TEST(ProjectFileService, AFileListReadsBackAsWritten)
{
    TempFolder folder;
    ProjectFileService service;
    auto path = (folder / "app_files.qdd").string();
    const List located{"0000000100000002", "/w/mod", "/w/mod/a b.c", ""};
    const List searched{"/w/mod1", "/w/inc0"};
    ASSERT_EQ(service.WriteFileList(path, located, searched, {}), S_OK);
    List l{"old"}, s, n{"old"};
    ASSERT_EQ(service.ReadFileList(path, l, s, n), S_OK);
    EXPECT_EQ(l, located);
    EXPECT_EQ(s, searched);
    EXPECT_TRUE(n.empty());
}

TEST(ProjectFileService, ABadListIsRefusedAndChangesNothing)
{
    TempFolder folder;
    ProjectFileService service;
    auto path = (folder / "app_files.qdd").string();
    ASSERT_EQ(service.WriteFileList(path, {"kept"}, {}, {}), S_OK);
    const std::string written = Bytes(path);
    // An entry that can't be one line.
    EXPECT_EQ(service.WriteFileList(path, {"a\nb"}, {}, {}), E_INVALIDARG);
    EXPECT_EQ(Bytes(path), written);

    for (const std::string& damaged : {std::string("located 2\nonly one\n"),
                                       std::string("located 0\nsearched x\n"), std::string("junk")}) {
        SCOPED_TRACE(damaged);
        folder.WriteFile("bad_files.qdd", damaged);
        List l{"old"}, s{"old"}, n{"old"};
        EXPECT_EQ(service.ReadFileList((folder / "bad_files.qdd").string(), l, s, n), E_FAIL);
        EXPECT_TRUE(l.empty() && s.empty() && n.empty());
    }
    List l, s, n;
    EXPECT_EQ(service.ReadFileList((folder / "none_files.qdd").string(), l, s, n), E_FAIL);
    // A folder that isn't there can't take a list.
    EXPECT_EQ(service.WriteFileList((folder / "no/such_files.qdd").string(), {}, {}, {}), E_FAIL);
}

TEST(ProjectFileService, KeepsEachProjectsFilesByName)
{
    ProjectFileService service;
    std::string first, again, other;
    ASSERT_EQ(service.AddProjectFile("Demo", "/w/main.c", first), S_OK);
    EXPECT_EQ(service.AddProjectFile("DEMO", "/W/MAIN.C", again), S_FALSE);
    EXPECT_EQ(again, first);
    ASSERT_EQ(service.AddProjectFile("Demo", "/w/util.c", other), S_OK);
    EXPECT_EQ(service.AddProjectFile("Demo", "", other), E_INVALIDARG);

    std::vector<std::pair<std::string, std::string>> files;
    ASSERT_EQ(service.GetProjectFiles("demo", files), S_OK);
    EXPECT_EQ(files, (decltype(files){{first, "/w/main.c"}, {other, "/w/util.c"}}));

    EXPECT_EQ(service.RemoveProjectFile("Demo", first), S_OK);
    EXPECT_EQ(service.RemoveProjectFile("Demo", first), E_FAIL);
    EXPECT_EQ(service.RemoveProjectFile("Other", other), E_FAIL);
    service.GetProjectFiles("Demo", files);
    EXPECT_EQ(files, (decltype(files){{other, "/w/util.c"}}));
    service.GetProjectFiles("Other", files);
    EXPECT_TRUE(files.empty());
}

} // namespace
