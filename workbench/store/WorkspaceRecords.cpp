#include "workbench/store/WorkspaceRecords.h"

#include <algorithm>

#include "workbench/store/Database.h"
#include "workbench/store/NameRules.h"
#include "workbench/store/Transaction.h"

namespace
{

bool Run(Statement& statement, std::string& error)
{
    if (statement.Next() == Statement::Step::Done)
        return true;
    error = statement.Error();
    return false;
}

bool Holds(const std::vector<std::string>& names, const std::string& name)
{
    const std::string key = NameRules::FoldCase(name);
    return std::any_of(names.begin(), names.end(),
                       [&](const std::string& n) { return NameRules::FoldCase(n) == key; });
}

ProjectRecord* Find(std::vector<ProjectRecord>& projects, const std::string& name)
{
    const std::string key = NameRules::FoldCase(name);
    for (ProjectRecord& p : projects)
        if (NameRules::FoldCase(p.name) == key)
            return &p;
    return nullptr;
}

} // namespace

bool WorkspaceRecords::Read(std::vector<ProjectRecord>& projects, std::optional<ActiveRecord>& active,
                            std::vector<std::string>& skipped, std::string& error)
{
    projects.clear();
    active.reset();
    auto list = db_.Prepare("SELECT name FROM project ORDER BY rowid", error);
    if (!list)
        return false;
    Statement::Step step;
    std::string why;
    while ((step = list->Next()) == Statement::Step::Row) {
        std::string name = list->Text(0);
        if (!NameRules::Check("project", name, why) || Find(projects, name) != nullptr)
            skipped.push_back("project '" + name + "'");
        else
            projects.push_back({name, {}, {}});
    }
    if (step == Statement::Step::Failed) {
        error = list->Error();
        return false;
    }
    if (!ReadItems("configuration", projects, skipped, error) ||
        !ReadItems("session", projects, skipped, error))
        return false;
    auto read = db_.Prepare("SELECT project, configuration, session FROM active WHERE slot = 1", error);
    if (!read)
        return false;
    if ((step = read->Next()) == Statement::Step::Row)
        active = ActiveRecord{read->Text(0), read->Text(1), read->Text(2)};
    if (step == Statement::Step::Failed) {
        error = read->Error();
        return false;
    }
    return true;
}

bool WorkspaceRecords::ReadItems(const char* table, std::vector<ProjectRecord>& projects,
                                 std::vector<std::string>& skipped, std::string& error)
{
    const bool configurations = std::string_view(table) == "configuration";
    auto list = db_.Prepare(std::string("SELECT project, name FROM ") + table + " ORDER BY rowid", error);
    if (!list)
        return false;
    Statement::Step step;
    std::string why;
    while ((step = list->Next()) == Statement::Step::Row) {
        std::string name = list->Text(1);
        ProjectRecord* project = Find(projects, list->Text(0));
        auto* names = project == nullptr ? nullptr
                      : configurations   ? &project->configurations
                                         : &project->sessions;
        if (names == nullptr || !NameRules::Check(table, name, why) || Holds(*names, name))
            skipped.push_back(std::string(table) + " '" + name + "' of project '" + list->Text(0) + "'");
        else
            names->push_back(name);
    }
    if (step == Statement::Step::Failed) {
        error = list->Error();
        return false;
    }
    return true;
}

bool WorkspaceRecords::InsertItem(const char* table, const std::string& project, const std::string& name,
                                  std::string& error)
{
    // Another process on the same workspace may have added it a moment ago.
    auto insert = db_.Prepare(
        std::string("INSERT OR IGNORE INTO ") + table + " (project, key, name) VALUES (?1, ?2, ?3)", error);
    if (!insert)
        return false;
    if (!insert->BindText(1, NameRules::FoldCase(project)) ||
        !insert->BindText(2, NameRules::FoldCase(name)) || !insert->BindText(3, name)) {
        error = insert->Error();
        return false;
    }
    return Run(*insert, error);
}

bool WorkspaceRecords::AddProject(const ProjectRecord& project, std::string& error)
{
    return Transaction::Run(
        db_,
        [&](std::string& why) {
            auto insert = db_.Prepare("INSERT OR IGNORE INTO project (key, name) VALUES (?1, ?2)", why);
            if (!insert)
                return false;
            if (!insert->BindText(1, NameRules::FoldCase(project.name)) ||
                !insert->BindText(2, project.name)) {
                why = insert->Error();
                return false;
            }
            if (!Run(*insert, why))
                return false;
            for (const std::string& c : project.configurations)
                if (!InsertItem("configuration", project.name, c, why))
                    return false;
            for (const std::string& s : project.sessions)
                if (!InsertItem("session", project.name, s, why))
                    return false;
            return true;
        },
        error);
}

bool WorkspaceRecords::AddConfiguration(const std::string& project, const std::string& name,
                                        std::string& error)
{
    return Transaction::Run(
        db_, [&](std::string& why) { return InsertItem("configuration", project, name, why); }, error);
}

bool WorkspaceRecords::AddSession(const std::string& project, const std::string& name, std::string& error)
{
    return Transaction::Run(
        db_, [&](std::string& why) { return InsertItem("session", project, name, why); }, error);
}

bool WorkspaceRecords::SaveActive(const ActiveRecord& active, std::string& error)
{
    return Transaction::Run(
        db_,
        [&](std::string& why) {
            auto save = db_.Prepare("INSERT OR REPLACE INTO active (slot, project, configuration, session) "
                                    "VALUES (1, ?1, ?2, ?3)",
                                    why);
            if (!save)
                return false;
            if (!save->BindText(1, active.project) || !save->BindText(2, active.configuration) ||
                !save->BindText(3, active.session)) {
                why = save->Error();
                return false;
            }
            return Run(*save, why);
        },
        error);
}
