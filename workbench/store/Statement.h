#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

// One prepared statement, finalized when it goes. Parameters are numbered
// from 1 and columns from 0, as the engine counts them.
class Statement
{
public:
    enum class Step { Row, Done, Failed };

    // Prepared statements cannot outlive their connection; the caller keeps
    // the Database alive for as long as this lives.
    static std::unique_ptr<Statement> Prepare(sqlite3* db, std::string_view sql, std::string& error);

    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    bool BindText(int index, std::string_view text);
    bool BindBlob(int index, std::span<const uint8_t> bytes);
    bool BindInt(int index, int64_t value);

    Step Next();
    // The engine's message for the last failure of this statement.
    std::string Error() const;

    // A NULL or missing column reads as empty or zero.
    std::string Text(int column) const;
    std::span<const uint8_t> Blob(int column) const;
    int64_t Int(int column) const;

private:
    explicit Statement(sqlite3_stmt* statement) : statement_(statement) {}

    sqlite3_stmt* statement_;
};
