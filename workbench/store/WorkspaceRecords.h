#pragma once
#include <optional>
#include <string>
#include <vector>

class Database;

struct ProjectRecord {
    std::string name;
    std::vector<std::string> configurations;
    std::vector<std::string> sessions;
};

struct ActiveRecord {
    std::string project;
    std::string configuration;
    std::string session;
};

// The workspace's projects, configurations, sessions and active choice as
// rows of the store. Names are kept as given, keyed case-folded. Checking
// names and duplicates is the caller's; each write is one transaction.
class WorkspaceRecords
{
public:
    // The database must outlive the records.
    explicit WorkspaceRecords(Database& db) : db_(db) {}

    // In order of addition. A row whose name the rules refuse, that repeats a
    // name, or whose project is unknown is left out and named in `skipped`,
    // so one bad row costs nothing else.
    bool Read(std::vector<ProjectRecord>& projects, std::optional<ActiveRecord>& active,
              std::vector<std::string>& skipped, std::string& error);

    // The project together with its configurations and sessions.
    bool AddProject(const ProjectRecord& project, std::string& error);
    bool AddConfiguration(const std::string& project, const std::string& name, std::string& error);
    bool AddSession(const std::string& project, const std::string& name, std::string& error);
    bool SaveActive(const ActiveRecord& active, std::string& error);

private:
    bool ReadItems(const char* table, std::vector<ProjectRecord>& projects, std::vector<std::string>& skipped,
                   std::string& error);
    bool InsertItem(const char* table, const std::string& project, const std::string& name,
                    std::string& error);

    Database& db_;
};
