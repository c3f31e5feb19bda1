#include "workbench/store/WorkspaceModel.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "workbench/store/Database.h"
#include "workbench/store/NameRules.h"

namespace fs = std::filesystem;

namespace
{

const char* const kDefaultProject = "default";
const char* const kDefaultConfiguration = "Debug";
const char* const kDefaultSession = "default";

const std::string* FindName(const std::vector<std::string>& names, const std::string& name)
{
    const std::string key = NameRules::FoldCase(name);
    auto it = std::find_if(names.begin(), names.end(),
                           [&](const std::string& n) { return NameRules::FoldCase(n) == key; });
    return it == names.end() ? nullptr : &*it;
}

void Append(std::string& error, const std::string& more)
{
    error += (error.empty() ? "" : "\n") + more;
}

std::string Quoted(const std::string& name)
{
    return "'" + name + "'";
}

} // namespace

WorkspaceModel::WorkspaceModel()
{
    std::string ignored;
    db_ = Database::OpenInMemory(ignored);
    Load(ignored);
}

WorkspaceModel::~WorkspaceModel() = default;

fs::path WorkspaceModel::StoreFileOf(const fs::path& folder)
{
    return folder / ".tessel" / "workspace.db";
}

bool WorkspaceModel::InMemory() const
{
    return !db_ || db_->InMemory();
}

bool WorkspaceModel::Open(const fs::path& folder, std::string& error)
{
    error.clear();
    std::error_code ec;
    fs::path absolute = fs::absolute(folder, ec).lexically_normal();
    if (ec)
        absolute = folder.lexically_normal();
    if (absolute.has_parent_path() && absolute.filename().empty())
        absolute = absolute.parent_path(); // a trailing separator
    folder_ = absolute;
    name_ = absolute.filename().string();
    if (name_.empty())
        name_ = absolute.string();

    records_.reset();
    std::string why;
    db_ = Database::Open(StoreFileOf(folder_), why);
    if (db_ && !Load(why)) {
        why = "Cannot read the workspace store " + Quoted(StoreFileOf(folder_).string()) + ": " + why;
        records_.reset();
        db_.reset();
    }
    if (!db_) {
        error = why + ". The workspace is kept in memory and will not be saved.";
        db_ = Database::OpenInMemory(why);
        if (!db_ || !Load(why))
            Append(error, why);
        return false;
    }
    if (!why.empty())
        error = why;
    return true;
}

bool WorkspaceModel::Load(std::string& error)
{
    projects_.clear();
    active_ = {};
    if (!db_)
        return false;
    records_ = std::make_unique<WorkspaceRecords>(*db_);
    std::optional<ActiveRecord> stored;
    std::vector<std::string> skipped;
    std::string why;
    if (!records_->Read(projects_, stored, skipped, why)) {
        error = why;
        return false;
    }
    error.clear();
    for (const std::string& s : skipped)
        Append(error, "Left out of the workspace, its name is not usable: " + s);
    if (stored)
        active_ = *stored;
    EnsureActive(error);
    return true;
}

// Writes that fail here are told, not fatal: the choice still holds for this run.
bool WorkspaceModel::EnsureActive(std::string& error)
{
    std::string why;
    bool written = true;
    if (projects_.empty()) {
        ProjectRecord project{kDefaultProject, {kDefaultConfiguration}, {kDefaultSession}};
        written = records_->AddProject(project, why);
        projects_.push_back(std::move(project));
    }
    if (const ProjectRecord* p = FindProject(active_.project)) {
        const std::string* c = FindName(p->configurations, active_.configuration);
        const std::string* s = FindName(p->sessions, active_.session);
        if (c != nullptr && s != nullptr) {
            active_ = {p->name, *c, *s};
            return written;
        }
    }
    ProjectRecord& first = projects_.front();
    if (first.configurations.empty()) {
        written = records_->AddConfiguration(first.name, kDefaultConfiguration, why) && written;
        first.configurations.push_back(kDefaultConfiguration);
    }
    if (first.sessions.empty()) {
        written = records_->AddSession(first.name, kDefaultSession, why) && written;
        first.sessions.push_back(kDefaultSession);
    }
    active_ = {first.name, first.configurations.front(), first.sessions.front()};
    written = records_->SaveActive(active_, why) && written;
    if (!written)
        Append(error, "Cannot save the workspace's defaults: " + why);
    return written;
}

const ProjectRecord* WorkspaceModel::FindProject(const std::string& name) const
{
    const std::string key = NameRules::FoldCase(name);
    for (const ProjectRecord& p : projects_)
        if (NameRules::FoldCase(p.name) == key)
            return &p;
    return nullptr;
}

ProjectRecord* WorkspaceModel::FindProject(const std::string& name)
{
    return const_cast<ProjectRecord*>(std::as_const(*this).FindProject(name));
}

bool WorkspaceModel::AddProject(const std::string& name, std::string& error)
{
    if (!NameRules::Check("project", name, error))
        return false;
    if (FindProject(name) != nullptr) {
        error = "There is a project named " + Quoted(name) + " already";
        return false;
    }
    ProjectRecord project{name, {kDefaultConfiguration}, {kDefaultSession}};
    std::string why;
    if (!records_->AddProject(project, why)) {
        error = "Cannot add the project " + Quoted(name) + ": " + why;
        return false;
    }
    projects_.push_back(std::move(project));
    return true;
}

bool WorkspaceModel::AddConfiguration(const std::string& project, const std::string& name, std::string& error)
{
    if (!NameRules::Check("configuration", name, error))
        return false;
    ProjectRecord* p = FindProject(project);
    if (p == nullptr) {
        error = "There is no project named " + Quoted(project);
        return false;
    }
    if (FindName(p->configurations, name) != nullptr) {
        error = "The project " + Quoted(p->name) + " has a configuration named " + Quoted(name) + " already";
        return false;
    }
    std::string why;
    if (!records_->AddConfiguration(p->name, name, why)) {
        error = "Cannot add the configuration " + Quoted(name) + ": " + why;
        return false;
    }
    p->configurations.push_back(name);
    return true;
}

bool WorkspaceModel::AddSession(const std::string& project, const std::string& name, std::string& error)
{
    if (!NameRules::Check("session", name, error))
        return false;
    ProjectRecord* p = FindProject(project);
    if (p == nullptr) {
        error = "There is no project named " + Quoted(project);
        return false;
    }
    if (FindName(p->sessions, name) != nullptr) {
        error = "The project " + Quoted(p->name) + " has a session named " + Quoted(name) + " already";
        return false;
    }
    std::string why;
    if (!records_->AddSession(p->name, name, why)) {
        error = "Cannot add the session " + Quoted(name) + ": " + why;
        return false;
    }
    p->sessions.push_back(name);
    return true;
}

std::vector<std::string> WorkspaceModel::Projects() const
{
    std::vector<std::string> names;
    for (const ProjectRecord& p : projects_)
        names.push_back(p.name);
    return names;
}

std::vector<std::string> WorkspaceModel::Configurations(const std::string& project) const
{
    const ProjectRecord* p = FindProject(project);
    return p == nullptr ? std::vector<std::string>{} : p->configurations;
}

std::vector<std::string> WorkspaceModel::Sessions(const std::string& project) const
{
    const ProjectRecord* p = FindProject(project);
    return p == nullptr ? std::vector<std::string>{} : p->sessions;
}

bool WorkspaceModel::SetActive(const std::string& project, const std::string& configuration,
                               const std::string& session, std::string& error)
{
    const ProjectRecord* p = FindProject(project);
    if (p == nullptr) {
        error = "There is no project named " + Quoted(project);
        return false;
    }
    const std::string* c = FindName(p->configurations, configuration);
    const std::string* s = FindName(p->sessions, session);
    if (c == nullptr || s == nullptr) {
        error = "The project " + Quoted(p->name) + " has no " + (c == nullptr ? "configuration" : "session") +
                " named " + Quoted(c == nullptr ? configuration : session);
        return false;
    }
    ActiveRecord chosen{p->name, *c, *s};
    std::string why;
    if (!records_->SaveActive(chosen, why)) {
        error = "Cannot save the active session: " + why;
        return false;
    }
    active_ = std::move(chosen);
    return true;
}

ActiveSession WorkspaceModel::Active() const
{
    return {name_, active_.project, active_.configuration, active_.session};
}
