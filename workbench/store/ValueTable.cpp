#include "workbench/store/ValueTable.h"

#include "workbench/store/Database.h"
#include "workbench/store/NameRules.h"
#include "workbench/store/Transaction.h"
#include "workbench/store/VariantCodec.h"

namespace
{

constexpr const char* kLoadSession = "SELECT value FROM session_value WHERE workspace = ?1 AND project = ?2 "
                                     "AND session = ?3 AND kind = ?4 AND name = ?5";
constexpr const char* kSaveSession = "INSERT OR REPLACE INTO session_value "
                                     "(workspace, project, session, kind, name, value) "
                                     "VALUES (?1, ?2, ?3, ?4, ?5, ?6)";
constexpr const char* kLoadGlobal = "SELECT value FROM global_value WHERE kind = ?4 AND name = ?5";
constexpr const char* kSaveGlobal =
    "INSERT OR REPLACE INTO global_value (kind, name, value) VALUES (?4, ?5, ?6)";

std::unique_ptr<Statement> PrepareAt(Database& db, const ValueAddress& at, const char* session,
                                     const char* global, std::string& error)
{
    auto statement = db.Prepare(at.global ? global : session, error);
    if (!statement)
        return nullptr;
    bool bound = statement->BindText(4, at.kind) && statement->BindText(5, at.name);
    if (!at.global)
        bound = bound && statement->BindText(1, NameRules::FoldCase(at.workspace)) &&
                statement->BindText(2, NameRules::FoldCase(at.project)) &&
                statement->BindText(3, NameRules::FoldCase(at.session));
    if (!bound) {
        error = statement->Error();
        return nullptr;
    }
    return statement;
}

} // namespace

std::string ValueAddress::Describe() const
{
    std::string text = std::string(kind) + " '" + std::string(name) + "'";
    if (global)
        return "global " + text;
    return text + " of session " + std::string(workspace) + "/" + std::string(project) + "/" +
           std::string(session);
}

ValueTable::Read ValueTable::Load(const ValueAddress& at, Variant& value, std::string& error)
{
    value = Variant();
    std::string why;
    auto load = PrepareAt(db_, at, kLoadSession, kLoadGlobal, why);
    Statement::Step step = load ? load->Next() : Statement::Step::Failed;
    if (step == Statement::Step::Done)
        return Read::Missing;
    if (step == Statement::Step::Failed) {
        error = "Cannot read the " + at.Describe() + ": " + (load ? load->Error() : why);
        return Read::Failed;
    }
    auto decoded = VariantCodec::Decode(load->Blob(0), why);
    if (!decoded) {
        error = "The stored " + at.Describe() + " is damaged (" + why + "); it reads as empty";
        return Read::Failed;
    }
    value = std::move(*decoded);
    return Read::Found;
}

bool ValueTable::Save(const ValueAddress& at, const Variant& value, std::string& error)
{
    std::string why;
    bool saved = Transaction::Run(
        db_, [&](std::string& e) { return Write(at, value, e); }, why);
    if (!saved)
        error = "Cannot store the " + at.Describe() + ": " + why;
    return saved;
}

bool ValueTable::Update(const ValueAddress& at, const std::function<void(Variant&)>& change,
                        std::string& error)
{
    std::string why;
    bool saved = Transaction::Run(
        db_,
        [&](std::string& e) {
            Variant value;
            std::string unreadable;
            Load(at, value, unreadable);
            change(value);
            return Write(at, value, e);
        },
        why);
    if (!saved)
        error = "Cannot store the " + at.Describe() + ": " + why;
    return saved;
}

bool ValueTable::Write(const ValueAddress& at, const Variant& value, std::string& error)
{
    auto blob = VariantCodec::Encode(value);
    if (!blob) {
        error = "its arrays are nested too deeply";
        return false;
    }
    auto save = PrepareAt(db_, at, kSaveSession, kSaveGlobal, error);
    if (!save)
        return false;
    if (!save->BindBlob(6, *blob) || save->Next() != Statement::Step::Done) {
        error = save->Error();
        return false;
    }
    return true;
}
