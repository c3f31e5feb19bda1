#pragma once
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "workbench/store/WorkspaceRecords.h"

class Database;

// The key of the session being worked on, names as first given.
struct ActiveSession {
    std::string workspace;
    std::string project;
    std::string configuration;
    std::string session;

    friend bool operator==(const ActiveSession&, const ActiveSession&) = default;
};

// A workspace is a folder; its name is the folder's name and its store is
// <folder>/.tessel/workspace.db. It holds projects, each with configurations
// and sessions, and one active choice of the three. Names compare without
// regard to case (NameRules) and keep the spelling they were added with;
// lists are in order of addition.
//
// A workspace that holds no project gets project "default" with configuration
// "Debug" and session "default", and that becomes active; a project added
// later starts with the same configuration and session, so any project can be
// made active. A stored active choice that names something missing falls back
// to the first project's first configuration and session.
class WorkspaceModel
{
public:
    // An unnamed workspace in memory with the defaults, until Open.
    WorkspaceModel();
    ~WorkspaceModel();
    WorkspaceModel(const WorkspaceModel&) = delete;
    WorkspaceModel& operator=(const WorkspaceModel&) = delete;

    // Creates the folder and .tessel/ as needed. False, with the reason, when
    // the store cannot be used: the workspace then runs in memory, with the
    // defaults, and nothing is saved. Rows the store holds that break the
    // naming rules are left out, and named in the reason, without failing.
    bool Open(const std::filesystem::path& folder, std::string& error);

    const std::string& Name() const { return name_; }
    const std::filesystem::path& Folder() const { return folder_; }
    bool InMemory() const;
    // For the settings store of this workspace: one connection serves both.
    std::shared_ptr<Database> SharedDatabase() const { return db_; }

    bool AddProject(const std::string& name, std::string& error);
    bool AddConfiguration(const std::string& project, const std::string& name, std::string& error);
    bool AddSession(const std::string& project, const std::string& name, std::string& error);

    std::vector<std::string> Projects() const;
    // Empty for a project that is not there.
    std::vector<std::string> Configurations(const std::string& project) const;
    std::vector<std::string> Sessions(const std::string& project) const;

    bool SetActive(const std::string& project, const std::string& configuration, const std::string& session,
                   std::string& error);
    ActiveSession Active() const;

    static std::filesystem::path StoreFileOf(const std::filesystem::path& folder);

private:
    bool Load(std::string& error);
    bool EnsureActive(std::string& error);
    const ProjectRecord* FindProject(const std::string& name) const;
    ProjectRecord* FindProject(const std::string& name);

    std::filesystem::path folder_;
    std::string name_;
    std::shared_ptr<Database> db_;
    // Declared after the database it refers to, so it goes first.
    std::unique_ptr<WorkspaceRecords> records_;
    std::vector<ProjectRecord> projects_;
    ActiveRecord active_;
};
