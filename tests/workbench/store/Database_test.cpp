#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>

#include "support/RawSql.h"
#include "support/TempFolder.h"
#include "workbench/store/Database.h"
#include "workbench/store/Schema.h"

namespace fs = std::filesystem;

namespace
{

std::string One(Database& db, const std::string& sql)
{
    std::string error;
    auto query = db.Prepare(sql, error);
    if (!query || query->Next() != Statement::Step::Row)
        return "<" + (query ? query->Error() : error) + ">";
    return query->Text(0);
}

std::string Bytes(const fs::path& file)
{
    std::ifstream in(file, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

// A store with enough rows to span many pages, closed so the log is folded in.
fs::path FilledStore(const TempFolder& dir)
{
    const fs::path file = dir / "workspace.db";
    std::string error;
    auto db = Database::Open(file, error);
    if (db)
        db->Execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 400) "
                    "INSERT INTO global_value SELECT 'string', 'key' || i, randomblob(200) FROM n",
                    error);
    return file;
}

// What is written reads back in the next run: the store's own persistence test.
TEST(Database, CreatesItsFolderAndFileAtTheCurrentVersionWritingThroughALog)
{
    TempFolder dir;
    std::string error;
    auto db = Database::Open(dir / "deep/er/workspace.db", error);
    ASSERT_TRUE(db) << error;
    EXPECT_FALSE(db->InMemory());
    EXPECT_EQ(One(*db, "PRAGMA journal_mode"), "wal");
    EXPECT_EQ(One(*db, "PRAGMA synchronous"), "2"); // full
    EXPECT_EQ(One(*db, "SELECT version FROM schema_version"), std::to_string(Schema::kCurrentVersion));
}

TEST(Database, BringsAVersionOneFileUpToDateKeepingItsValues)
{
    TempFolder dir;
    const fs::path file = dir / "workspace.db";
    // What the first release left behind.
    ASSERT_TRUE(RawSql(file,
                       "CREATE TABLE schema_version (version INTEGER NOT NULL);"
                       "INSERT INTO schema_version VALUES (1);"
                       "CREATE TABLE session_value (workspace TEXT NOT NULL, project TEXT NOT NULL,"
                       " session TEXT NOT NULL, kind TEXT NOT NULL, name TEXT NOT NULL, value BLOB NOT NULL,"
                       " PRIMARY KEY (workspace, project, session, kind, name)) WITHOUT ROWID;"
                       "CREATE TABLE global_value (kind TEXT NOT NULL, name TEXT NOT NULL,"
                       " value BLOB NOT NULL, PRIMARY KEY (kind, name)) WITHOUT ROWID;"
                       "INSERT INTO session_value VALUES ('w', 'p', 's', 'setting', 'Platform', x'aa');"));
    std::string error;
    auto db = Database::Open(file, error);
    ASSERT_TRUE(db) << error;
    EXPECT_EQ(One(*db, "SELECT version FROM schema_version"), "2");
    EXPECT_EQ(One(*db, "SELECT hex(value) FROM session_value"), "AA");
    EXPECT_EQ(One(*db, "SELECT count(*) FROM project"), "0");
}

TEST(Database, RefusalNamesTheFileAndTheReasonAndLeavesTheFileAlone)
{
    using Arrange = std::function<fs::path(const TempFolder&)>;
    auto filled = [](const char* sql) {
        return [sql](const TempFolder& d) {
            fs::path f = FilledStore(d);
            RawSql(f, sql);
            return f;
        };
    };
    const std::pair<Arrange, const char*> cases[] = {
        {[](const TempFolder& d) { return d.WriteFile("workspace.db", "my notes\n"); },
         "the file is not a database"},
        {[](const TempFolder& d) {
             fs::path f = FilledStore(d);
             fs::resize_file(f, fs::file_size(f) / 3);
             return f;
         },
         "the file is damaged"},
        {[](const TempFolder& d) {
             fs::path f = FilledStore(d);
             std::fstream(f, std::ios::binary | std::ios::in | std::ios::out).seekp(4096 * 3)
                 << std::string(4096 * 4, '\x5a');
             return f;
         },
         "the file is damaged"},
        {filled("UPDATE schema_version SET version = 99"),
         "newer version of Tessel (store version 99; this version reads up to 2)"},
        {filled("DROP TABLE session_value; DROP TABLE global_value; DROP TABLE schema_version"),
         "a database of another program"},
        {filled("DELETE FROM schema_version"), "version record is unreadable"},
        {filled("DROP TABLE session_value"), "the table session_value is missing"},
        {[](const TempFolder& d) {
             fs::create_directories(d / "workspace.db");
             return d / "workspace.db";
         },
         "it is a folder"},
        {[](const TempFolder& d) { return d.WriteFile("blocker", "x") / ".tessel" / "workspace.db"; },
         "cannot be created"},
    };
    for (const auto& [arrange, reason] : cases) {
        TempFolder dir;
        const fs::path file = arrange(dir);
        std::error_code ec;
        const std::string before = fs::is_regular_file(file, ec) ? Bytes(file) : "";
        std::string error;
        EXPECT_FALSE(Database::Open(file, error));
        EXPECT_EQ(error.rfind("Cannot open the store '" + file.string() + "': ", 0), 0u) << error;
        EXPECT_NE(error.find(reason), std::string::npos) << error;
        EXPECT_TRUE((fs::is_regular_file(file, ec) ? Bytes(file) : "") == before) << "the file was changed";
    }
}

// Permissions do not bind the superuser, so as root the attempt is made by a
// child that has given its rights up.
std::string OpenWithoutRights(const fs::path& file)
{
    auto attempt = [&file] {
        std::string error;
        return Database::Open(file, error) ? std::string("opened") : error;
    };
    if (geteuid() != 0)
        return attempt();
    int channel[2];
    if (pipe(channel) != 0)
        return "no pipe";
    pid_t child = fork();
    if (child == 0) {
        close(channel[0]);
        std::string answer = setgid(65534) == 0 && setuid(65534) == 0 ? attempt() : "rights kept";
        ssize_t written = write(channel[1], answer.data(), answer.size());
        _exit(written == static_cast<ssize_t>(answer.size()) ? 0 : 1);
    }
    close(channel[1]);
    std::string answer;
    char buffer[256];
    ssize_t n;
    while ((n = read(channel[0], buffer, sizeof buffer)) > 0)
        answer.append(buffer, static_cast<size_t>(n));
    close(channel[0]);
    waitpid(child, nullptr, 0);
    return answer;
}

TEST(Database, WithoutTheRightToWriteIsRefusedWithTheReason)
{
    TempFolder dir;
    fs::permissions(dir.Path(), fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                                    fs::perms::others_read | fs::perms::others_exec);
    const auto readOnly = fs::perms::owner_read | fs::perms::others_read;
    fs::create_directories(dir / "locked");
    fs::permissions(dir / "locked", readOnly | fs::perms::owner_exec | fs::perms::others_exec);
    {
        std::string ignored;
        Database::Open(dir / "ro.db", ignored);
    }
    fs::permissions(dir / "ro.db", readOnly);
    for (const auto& [file, reason] : {std::pair{dir / "locked/workspace.db", "unable to open"},
                                       std::pair{dir / "ro.db", "cannot be written"}}) {
        const std::string answer = OpenWithoutRights(file);
        EXPECT_EQ(answer.rfind("Cannot open the store '" + file.string() + "': ", 0), 0u) << answer;
        EXPECT_NE(answer.find(reason), std::string::npos) << answer;
    }
}

} // namespace
