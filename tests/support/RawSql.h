#pragma once
#include <sqlite3.h>

#include <filesystem>
#include <string>

// Reaches a store file behind the program's back: what another release, a
// crash or a hand edit would leave there.
inline bool RawSql(const std::filesystem::path& file, const std::string& sql)
{
    sqlite3* db = nullptr;
    bool ok = sqlite3_open(file.c_str(), &db) == SQLITE_OK &&
              sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
    sqlite3_close(db);
    return ok;
}
