#include "workbench/store/Statement.h"

#include <sqlite3.h>

#include <new>

std::unique_ptr<Statement> Statement::Prepare(sqlite3* db, std::string_view sql, std::string& error)
{
    sqlite3_stmt* raw = nullptr;
    int rc = sqlite3_prepare_v2(db, sql.data(), static_cast<int>(sql.size()), &raw, nullptr);
    if (rc != SQLITE_OK || raw == nullptr) {
        error = rc == SQLITE_OK ? "an empty statement" : sqlite3_errmsg(db);
        sqlite3_finalize(raw);
        return nullptr;
    }
    std::unique_ptr<Statement> statement(new (std::nothrow) Statement(raw));
    if (!statement) {
        sqlite3_finalize(raw);
        error = "out of memory";
    }
    return statement;
}

Statement::~Statement()
{
    sqlite3_finalize(statement_);
}

bool Statement::BindText(int index, std::string_view text)
{
    return sqlite3_bind_text64(statement_, index, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8) ==
           SQLITE_OK;
}

bool Statement::BindBlob(int index, std::span<const uint8_t> bytes)
{
    // A null pointer would bind NULL, not a zero-length blob.
    static const uint8_t none = 0;
    const void* data = bytes.empty() ? &none : bytes.data();
    return sqlite3_bind_blob64(statement_, index, data, bytes.size(), SQLITE_TRANSIENT) == SQLITE_OK;
}

bool Statement::BindInt(int index, int64_t value)
{
    return sqlite3_bind_int64(statement_, index, value) == SQLITE_OK;
}

Statement::Step Statement::Next()
{
    switch (sqlite3_step(statement_)) {
    case SQLITE_ROW:
        return Step::Row;
    case SQLITE_DONE:
        return Step::Done;
    default:
        return Step::Failed;
    }
}

std::string Statement::Error() const
{
    return sqlite3_errmsg(sqlite3_db_handle(statement_));
}

std::string Statement::Text(int column) const
{
    const unsigned char* text = sqlite3_column_text(statement_, column);
    if (text == nullptr)
        return {};
    return std::string(reinterpret_cast<const char*>(text),
                       static_cast<size_t>(sqlite3_column_bytes(statement_, column)));
}

std::span<const uint8_t> Statement::Blob(int column) const
{
    const void* data = sqlite3_column_blob(statement_, column);
    if (data == nullptr)
        return {};
    return {static_cast<const uint8_t*>(data), static_cast<size_t>(sqlite3_column_bytes(statement_, column))};
}

int64_t Statement::Int(int column) const
{
    return sqlite3_column_int64(statement_, column);
}
