#include "workbench/store/Transaction.h"

#include "workbench/store/Database.h"

Transaction::Transaction(Database& db) : db_(db)
{
    open_ = db_.Execute("BEGIN IMMEDIATE", beginError_);
}

Transaction::~Transaction()
{
    std::string ignored;
    if (open_)
        db_.Execute("ROLLBACK", ignored);
}

bool Transaction::Begun(std::string& error) const
{
    if (!open_)
        error = beginError_;
    return open_;
}

bool Transaction::Commit(std::string& error)
{
    if (!Begun(error))
        return false;
    if (!db_.Execute("COMMIT", error))
        return false; // still open: the destructor rolls back
    open_ = false;
    return true;
}

bool Transaction::Run(Database& db, const std::function<bool(std::string&)>& work, std::string& error)
{
    Transaction transaction(db);
    return transaction.Begun(error) && work(error) && transaction.Commit(error);
}
