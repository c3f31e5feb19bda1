#include "workbench/store/Schema.h"

#include <array>
#include <optional>
#include <set>

#include "workbench/store/Database.h"
#include "workbench/store/Transaction.h"

namespace Schema
{
namespace
{

// Index i takes a file from version i to version i + 1. Never edit a step that
// has shipped: files in the field were made by it.
constexpr std::array<const char*, kCurrentVersion> kMigrations = {
    R"sql(
CREATE TABLE schema_version (version INTEGER NOT NULL);
INSERT INTO schema_version VALUES (0);
CREATE TABLE session_value (
  workspace TEXT NOT NULL, project TEXT NOT NULL, session TEXT NOT NULL,
  kind TEXT NOT NULL, name TEXT NOT NULL, value BLOB NOT NULL,
  PRIMARY KEY (workspace, project, session, kind, name)) WITHOUT ROWID;
CREATE TABLE global_value (
  kind TEXT NOT NULL, name TEXT NOT NULL, value BLOB NOT NULL,
  PRIMARY KEY (kind, name)) WITHOUT ROWID;
)sql",
    R"sql(
CREATE TABLE project (key TEXT PRIMARY KEY, name TEXT NOT NULL);
CREATE TABLE configuration (
  project TEXT NOT NULL, key TEXT NOT NULL, name TEXT NOT NULL, PRIMARY KEY (project, key));
CREATE TABLE session (
  project TEXT NOT NULL, key TEXT NOT NULL, name TEXT NOT NULL, PRIMARY KEY (project, key));
CREATE TABLE active (
  slot INTEGER PRIMARY KEY CHECK (slot = 1), project TEXT NOT NULL,
  configuration TEXT NOT NULL, session TEXT NOT NULL);
)sql",
};

constexpr std::array<const char*, 7> kTables = {"schema_version", "session_value", "global_value", "project",
                                                "configuration",  "session",       "active"};

std::optional<std::set<std::string>> TableNames(Database& db, std::string& error)
{
    auto list = db.Prepare("SELECT name FROM sqlite_master WHERE type = 'table'", error);
    if (!list)
        return std::nullopt;
    std::set<std::string> names;
    Statement::Step step;
    while ((step = list->Next()) == Statement::Step::Row)
        names.insert(list->Text(0));
    if (step == Statement::Step::Failed) {
        error = list->Error();
        return std::nullopt;
    }
    return names;
}

std::optional<int> ReadVersion(Database& db, std::string& error)
{
    auto tables = TableNames(db, error);
    if (!tables)
        return std::nullopt;
    if (!tables->contains("schema_version")) {
        if (tables->empty())
            return 0;
        error = "the file is a database of another program";
        return std::nullopt;
    }
    auto read = db.Prepare("SELECT typeof(version), version FROM schema_version", error);
    if (!read)
        return std::nullopt;
    std::optional<int> version;
    int rows = 0;
    Statement::Step step;
    while ((step = read->Next()) == Statement::Step::Row) {
        ++rows;
        if (read->Text(0) == "integer" && read->Int(1) >= 0 && read->Int(1) <= 0x7FFFFFFF)
            version = static_cast<int>(read->Int(1));
    }
    if (step == Statement::Step::Failed) {
        error = read->Error();
        return std::nullopt;
    }
    if (rows != 1 || !version) {
        error = "the file is damaged (its version record is unreadable)";
        return std::nullopt;
    }
    return version;
}

bool CheckTables(Database& db, std::string& error)
{
    auto tables = TableNames(db, error);
    if (!tables)
        return false;
    for (const char* name : kTables) {
        if (!tables->contains(name)) {
            error = std::string("the file is damaged (the table ") + name + " is missing)";
            return false;
        }
    }
    return true;
}

} // namespace

std::optional<int> Version(Database& db, std::string& error)
{
    auto version = ReadVersion(db, error);
    if (version && *version > kCurrentVersion) {
        error = "it was written by a newer version of Tessel (store version " + std::to_string(*version) +
                "; this version reads up to " + std::to_string(kCurrentVersion) + ")";
        return std::nullopt;
    }
    return version;
}

bool Upgrade(Database& db, std::string& error)
{
    auto version = Version(db, error);
    if (!version)
        return false;
    if (*version < kCurrentVersion) {
        // Every step in one write transaction, the version read again inside
        // it: several processes opening a new store at once each find it
        // either untouched or finished, never halfway.
        int from = *version;
        bool done = Transaction::Run(
            db,
            [&](std::string& why) {
                auto now = Version(db, why);
                if (!now)
                    return false;
                for (from = *now; from < kCurrentVersion; ++from)
                    if (!db.Execute(kMigrations[static_cast<size_t>(from)], why) ||
                        !db.Execute("UPDATE schema_version SET version = " + std::to_string(from + 1), why))
                        return false;
                return true;
            },
            error);
        if (!done) {
            error = "it cannot be brought to store version " + std::to_string(from + 1) + " (" + error + ")";
            return false;
        }
    }
    return CheckTables(db, error);
}

} // namespace Schema
