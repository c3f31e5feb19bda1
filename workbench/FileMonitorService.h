#pragma once
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <utility>

#include "boundary/interfaces/Workbench.h"

class MessageLoop;

// Watches files with inotify. The kernel tells of changes on a thread of this
// service's own; the paths are handed to the main loop, which tells every
// registered IQFileMonitorClient once per path however many notices came.
// Folders are watched rather than files, so that a file a build replaces by a
// rename is still seen.
class FileMonitorService final : public IQFileMonitor
{
public:
    FileMonitorService(MessageLoop& loop, IQServiceRegistry& registry);
    ~FileMonitorService();
    FileMonitorService(const FileMonitorService&) = delete;
    FileMonitorService& operator=(const FileMonitorService&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT AddFile(const std::string& path) override;
    HRESULT RemoveFile(const std::string& path) override;
    HRESULT RemoveAllFiles() override;
    HRESULT IsWatching(const std::string& path) override;
    HRESULT IsActive() override;

private:
    // What the watching thread and the main thread share.
    struct Shared {
        std::mutex mutex;
        IQServiceRegistry* registry = nullptr;
        // Watch descriptor of a folder, to the names watched in it and the
        // paths, as given, that each name was added under.
        std::map<int, std::map<std::string, std::set<std::string>>> watched;
        std::map<std::string, int> folderOf; // path as given to its folder's descriptor
        std::set<std::string> changed;       // paths noticed, not yet told
        bool taskQueued = false;
    };

    void Watch();
    static void Deliver(const std::weak_ptr<Shared>& weak);

    MessageLoop& loop_;
    IQServiceRegistry& registry_;
    std::shared_ptr<Shared> shared_;
    int inotify_ = -1;
    int stop_ = -1;
    std::thread thread_;
};
