#pragma once
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "workbench/store/Statement.h"

struct sqlite3;

// One connection to a store file, brought to the current schema when opened.
// Main thread only. A file is kept in write-ahead-log mode with full syncs, so
// a committed write survives the process being killed and the machine losing
// power.
class Database
{
public:
    // Nothing, and a message naming the file and the reason, for a folder that
    // cannot be made, a file that cannot be opened or written, a file that is
    // not a database or is damaged, a database of another program, or one of
    // a newer schema than this program knows. Creates the folder and the file.
    static std::unique_ptr<Database> Open(const std::filesystem::path& file, std::string& error);
    // A store that lives as long as the object and never touches the disk.
    static std::unique_ptr<Database> OpenInMemory(std::string& error);

    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    bool InMemory() const { return file_.empty(); }
    // Empty in memory.
    const std::filesystem::path& File() const { return file_; }

    // Statements without parameters or results: pragmas and schema changes.
    bool Execute(std::string_view sql, std::string& error);
    std::unique_ptr<Statement> Prepare(std::string_view sql, std::string& error);

private:
    Database(sqlite3* db, std::filesystem::path file) : db_(db), file_(std::move(file)) {}
    static std::unique_ptr<Database> Connect(const std::filesystem::path& file, std::string& error);
    bool Configure(std::string& error);
    // Checks the file, turns on the log and brings the schema up to date.
    bool MakeReady(std::string& reason);

    sqlite3* db_;
    std::filesystem::path file_;
};
