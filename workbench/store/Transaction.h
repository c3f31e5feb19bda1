#pragma once
#include <functional>
#include <string>

class Database;

// A write transaction: taken at once (so a second writer waits at the start,
// not halfway), rolled back unless committed.
class Transaction
{
public:
    explicit Transaction(Database& db);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    // False, with the reason, when the transaction could not be started.
    bool Begun(std::string& error) const;
    bool Commit(std::string& error);

    // Runs `work` inside a transaction and commits when it answers true; the
    // first failure, of the work or the engine, lands in `error`.
    static bool Run(Database& db, const std::function<bool(std::string&)>& work, std::string& error);

private:
    Database& db_;
    bool open_ = false;
    std::string beginError_;
};
