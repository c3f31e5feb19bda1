#pragma once
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "workbench/WorkspaceInfoService.h"
#include "workbench/store/SettingsStore.h"
#include "workbench/store/WorkspaceModel.h"

class ServiceRegistry;

// What the console's command line says of the session before it starts.
struct SessionOptions {
    std::string workspace;                                // folder; empty: the current directory
    std::string session;                                  // empty: the workspace's active one
    std::string platform;                                 // empty: as stored
    std::vector<std::pair<int32_t, std::string>> batches; // timing, file
    int32_t holdMemory = -1;                              // 1 or 0 to store; -1: as stored
    int32_t resetAfterDownload = -1;                      // 1 or 0 to store; -1: as stored
    std::optional<std::string> device;                    // the simulator's; "" forgets it
};

// The console's workspace: its folder, its store and the session it works on,
// offered to the component as the workbench's services.
class WorkspaceSession
{
public:
    WorkspaceSession(ServiceRegistry& registry, std::ostream& err);
    ~WorkspaceSession();
    WorkspaceSession(const WorkspaceSession&) = delete;
    WorkspaceSession& operator=(const WorkspaceSession&) = delete;

    // Opens the workspace and writes what the options say into its store. A
    // store that cannot be used is reported once and the session runs in
    // memory; a bad option value gives false with a message.
    bool Open(const SessionOptions& options, const std::string& installDirectory, std::string& error);
    ActiveSession Key() const { return model_.Active(); }
    // Problems reported while opening: a store that could not be used.
    int Problems() const { return problems_; }
    // Where the console keeps its history: in the workspace.
    std::string HistoryFile() const;

    // A timing given by number (0 to 3) or by name.
    static bool ParseTiming(const std::string& text, int32_t& timing);

private:
    ServiceRegistry& registry_;
    std::ostream& err_;
    WorkspaceModel model_;
    std::unique_ptr<SettingsStore> store_;
    std::unique_ptr<WorkspaceInfoService> info_;
    int problems_ = 0;
};
