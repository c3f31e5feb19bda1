#pragma once
#include <functional>
#include <string>
#include <string_view>

#include "boundary/Variant.h"

class Database;

// Where one stored value lies. A session value is found by the three names,
// compared without regard to case, then kind and name, compared exactly; a
// global value by kind and name alone.
struct ValueAddress {
    std::string_view workspace;
    std::string_view project;
    std::string_view session;
    std::string_view kind;
    std::string_view name;
    bool global = false;

    // For messages: "setting Platform of session ws/project/session".
    std::string Describe() const;
};

// Encoded Variants in the store's two value tables. Every save is committed
// before it returns.
class ValueTable
{
public:
    enum class Read { Found, Missing, Failed };

    // The database must outlive the table.
    explicit ValueTable(Database& db) : db_(db) {}

    // Missing leaves an empty Variant; Failed too, with the reason in `error`,
    // for a row the engine cannot read or a value that does not decode.
    Read Load(const ValueAddress& at, Variant& value, std::string& error);
    bool Save(const ValueAddress& at, const Variant& value, std::string& error);
    // Reads, changes and writes one value in one transaction, so that another
    // process changing it at the same time cannot lose either change. A value
    // that cannot be read is changed from empty.
    bool Update(const ValueAddress& at, const std::function<void(Variant&)>& change, std::string& error);

private:
    bool Write(const ValueAddress& at, const Variant& value, std::string& error);

    Database& db_;
};
