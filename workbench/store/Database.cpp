#include "workbench/store/Database.h"

#include <sqlite3.h>

#include <unistd.h>

#include <chrono>
#include <new>
#include <system_error>
#include <thread>

#include "workbench/store/Schema.h"

namespace fs = std::filesystem;

namespace
{

// Another process on the same workspace holds the store only for one write.
constexpr int kBusyWaitMs = 10000;

std::string Quoted(const fs::path& p)
{
    std::string text = "'";
    text.append(p.string()).append("'");
    return text;
}

// The first read of a file is where the engine finds out what it holds, so
// the check doubles as the test for "not a database".
bool CheckIntact(Database& db, sqlite3* raw, std::string& reason)
{
    std::string error;
    auto check = db.Prepare("PRAGMA quick_check", error);
    Statement::Step step = check ? check->Next() : Statement::Step::Failed;
    if (step == Statement::Step::Row) {
        std::string verdict = check->Text(0);
        if (verdict == "ok")
            return true;
        reason = "the file is damaged (" + verdict + ")";
        return false;
    }
    switch (sqlite3_errcode(raw) & 0xFF) {
    case SQLITE_NOTADB:
        reason = "the file is not a database";
        break;
    case SQLITE_CORRUPT:
        reason = "the file is damaged (" + std::string(sqlite3_errmsg(raw)) + ")";
        break;
    default:
        reason = check ? check->Error() : error;
    }
    return false;
}

} // namespace

std::unique_ptr<Database> Database::Open(const fs::path& file, std::string& error)
{
    const std::string prefix = "Cannot open the store " + Quoted(file) + ": ";
    std::error_code ec;
    if (file.empty()) {
        error = "Cannot open a store without a file name";
        return nullptr;
    }
    if (fs::is_directory(file, ec)) {
        error = prefix + "it is a folder";
        return nullptr;
    }
    const fs::path folder = file.parent_path();
    if (!folder.empty() && !fs::is_directory(folder, ec)) {
        fs::create_directories(folder, ec);
        if (ec) {
            error = prefix + "the folder " + Quoted(folder) + " cannot be created (" + ec.message() + ")";
            return nullptr;
        }
    }
    // The engine would open such a file read-only and say so only at the first write.
    if (fs::exists(file, ec) && access(file.c_str(), W_OK) != 0) {
        error = prefix + "the file cannot be written";
        return nullptr;
    }
    // Another process opening the same new store may hold it for a moment in
    // a way the engine does not wait for (while it switches the file to the
    // log); such an attempt is made again from the start.
    std::string reason;
    std::unique_ptr<Database> db;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(kBusyWaitMs);
    for (;;) {
        reason.clear();
        db = Connect(file, reason);
        if (!db || db->MakeReady(reason))
            break;
        const int code = sqlite3_errcode(db->db_) & 0xFF;
        db.reset();
        if ((code != SQLITE_BUSY && code != SQLITE_LOCKED) || std::chrono::steady_clock::now() > deadline)
            break;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    if (!db)
        error = prefix + reason;
    return db;
}

bool Database::MakeReady(std::string& reason)
{
    if (!CheckIntact(*this, db_, reason))
        return false;
    if (sqlite3_db_readonly(db_, "main") == 1) {
        reason = "the file cannot be written";
        return false;
    }
    // Switching to the log rewrites the header, so a file that is not ours
    // to change is turned away before that.
    return Schema::Version(*this, reason) && Configure(reason) && Schema::Upgrade(*this, reason);
}

std::unique_ptr<Database> Database::OpenInMemory(std::string& error)
{
    auto db = Connect({}, error);
    if (db && !Schema::Upgrade(*db, error))
        db.reset();
    return db;
}

std::unique_ptr<Database> Database::Connect(const fs::path& file, std::string& error)
{
    sqlite3* raw = nullptr;
    // A relative name starting with a colon could read as the engine's own
    // ":memory:"; a leading "./" keeps it a file.
    std::string name = file.empty() ? ":memory:" : file.string();
    if (!file.empty() && name.front() == ':')
        name = "./" + name;
    int rc = sqlite3_open_v2(name.c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    if (rc != SQLITE_OK) {
        error = raw != nullptr ? sqlite3_errmsg(raw) : "out of memory";
        sqlite3_close_v2(raw);
        return nullptr;
    }
    std::unique_ptr<Database> db(new (std::nothrow) Database(raw, file));
    if (!db) {
        sqlite3_close_v2(raw);
        error = "out of memory";
        return nullptr;
    }
    sqlite3_extended_result_codes(raw, 1);
    sqlite3_busy_timeout(raw, kBusyWaitMs);
    // A store file may come from anyone: keep its schema from running
    // functions with side effects, and SQL from writing around the engine.
    sqlite3_db_config(raw, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(raw, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    return db;
}

bool Database::Configure(std::string& error)
{
    std::string why;
    auto mode = Prepare("PRAGMA journal_mode=WAL", why);
    if (!mode || mode->Next() != Statement::Step::Row) {
        error = mode ? mode->Error() : why;
        return false;
    }
    // The folder must take the log and index files beside the store.
    if (mode->Text(0) != "wal") {
        error = "the folder does not allow a write-ahead log beside the file";
        return false;
    }
    return Execute("PRAGMA synchronous=FULL", error);
}

Database::~Database()
{
    sqlite3_close_v2(db_);
}

bool Database::Execute(std::string_view sql, std::string& error)
{
    const std::string text(sql);
    char* message = nullptr;
    if (sqlite3_exec(db_, text.c_str(), nullptr, nullptr, &message) == SQLITE_OK)
        return true;
    error = message != nullptr ? message : sqlite3_errmsg(db_);
    sqlite3_free(message);
    return false;
}

std::unique_ptr<Statement> Database::Prepare(std::string_view sql, std::string& error)
{
    return Statement::Prepare(db_, sql, error);
}
