#include "workbench/FileMonitorService.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <cstdint>
#include <vector>

#include "boundary/Ids.h"
#include "boundary/interfaces/Component.h"
#include "workbench/MessageLoop.h"

namespace
{

// Writes that end and files moved into place: what a build or an editor does.
constexpr uint32_t kChangeMask = IN_CLOSE_WRITE | IN_MOVED_TO;

std::pair<std::string, std::string> FolderAndName(const std::string& path)
{
    const size_t slash = path.find_last_of('/');
    if (slash == std::string::npos)
        return {".", path};
    return {slash == 0 ? "/" : path.substr(0, slash), path.substr(slash + 1)};
}

} // namespace

FileMonitorService::FileMonitorService(MessageLoop& loop, IQServiceRegistry& registry)
    : loop_(loop), registry_(registry), shared_(std::make_shared<Shared>())
{
    shared_->registry = &registry_;
    inotify_ = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    stop_ = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (inotify_ < 0 || stop_ < 0)
        return;
    try {
        thread_ = std::thread([this] { Watch(); });
    } catch (const std::system_error&) {
    }
}

FileMonitorService::~FileMonitorService()
{
    if (thread_.joinable()) {
        const uint64_t one = 1;
        [[maybe_unused]] ssize_t n = write(stop_, &one, sizeof one);
        thread_.join();
    }
    if (inotify_ >= 0)
        close(inotify_);
    if (stop_ >= 0)
        close(stop_);
}

HRESULT FileMonitorService::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::FileMonitor}, iid, static_cast<IQFileMonitor*>(this), out);
}

HRESULT FileMonitorService::AddFile(const std::string& path)
{
    if (path.empty() || path.back() == '/')
        return E_INVALIDARG;
    if (!thread_.joinable())
        return E_FAIL;
    const auto [folder, name] = FolderAndName(path);
    std::lock_guard<std::mutex> lock(shared_->mutex);
    if (shared_->folderOf.count(path) != 0)
        return S_OK;
    // The kernel gives one descriptor per folder, however it is spelt.
    const int wd = inotify_add_watch(inotify_, folder.c_str(), kChangeMask | IN_ONLYDIR);
    if (wd < 0)
        return E_FAIL;
    shared_->watched[wd][name].insert(path);
    shared_->folderOf[path] = wd;
    return S_OK;
}

HRESULT FileMonitorService::RemoveFile(const std::string& path)
{
    std::lock_guard<std::mutex> lock(shared_->mutex);
    const auto found = shared_->folderOf.find(path);
    if (found == shared_->folderOf.end())
        return S_FALSE;
    const int wd = found->second;
    shared_->folderOf.erase(found);
    auto& names = shared_->watched[wd];
    const std::string name = FolderAndName(path).second;
    names[name].erase(path);
    if (names[name].empty())
        names.erase(name);
    if (names.empty()) {
        shared_->watched.erase(wd);
        inotify_rm_watch(inotify_, wd);
    }
    shared_->changed.erase(path);
    return S_OK;
}

HRESULT FileMonitorService::RemoveAllFiles()
{
    std::lock_guard<std::mutex> lock(shared_->mutex);
    for (const auto& [wd, names] : shared_->watched)
        inotify_rm_watch(inotify_, wd);
    shared_->watched.clear();
    shared_->folderOf.clear();
    shared_->changed.clear();
    return S_OK;
}

HRESULT FileMonitorService::IsWatching(const std::string& path)
{
    std::lock_guard<std::mutex> lock(shared_->mutex);
    return shared_->folderOf.count(path) != 0 ? S_OK : S_FALSE;
}

HRESULT FileMonitorService::IsActive()
{
    return thread_.joinable() ? S_OK : S_FALSE;
}

void FileMonitorService::Watch()
{
    alignas(inotify_event) char buffer[16 * 1024];
    for (;;) {
        pollfd fds[2] = {{inotify_, POLLIN, 0}, {stop_, POLLIN, 0}};
        if (poll(fds, 2, -1) < 0)
            continue;
        if (fds[1].revents != 0)
            return;
        const ssize_t length = read(inotify_, buffer, sizeof buffer);
        if (length <= 0)
            continue;
        std::lock_guard<std::mutex> lock(shared_->mutex);
        bool noticed = false;
        for (ssize_t at = 0; at < length;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            const auto folder = shared_->watched.find(event->wd);
            if (folder == shared_->watched.end() || event->len == 0)
                continue;
            const auto file = folder->second.find(event->name);
            if (file == folder->second.end())
                continue;
            shared_->changed.insert(file->second.begin(), file->second.end());
            noticed = true;
        }
        // One task for whatever piles up until the main loop gets to it.
        if (noticed && !shared_->taskQueued) {
            shared_->taskQueued = true;
            loop_.PostTask([weak = std::weak_ptr<Shared>(shared_)] { Deliver(weak); });
        }
    }
}

void FileMonitorService::Deliver(const std::weak_ptr<Shared>& weak)
{
    const auto shared = weak.lock();
    if (!shared)
        return;
    std::set<std::string> changed;
    IQServiceRegistry* registry = nullptr;
    {
        std::lock_guard<std::mutex> lock(shared->mutex);
        changed.swap(shared->changed);
        shared->taskQueued = false;
        registry = shared->registry;
    }
    for (const std::string& path : changed) {
        int32_t count = 0;
        IUnknown** array = nullptr;
        if (Failed(registry->GetProviders(Ids::IQFileMonitorClient, count, array)) || array == nullptr)
            return;
        // A client may go away while it is told; the list is taken afresh per path.
        const std::vector<IUnknown*> clients(array, array + count);
        for (IUnknown* client : clients)
            if (auto* monitor = QueryAs<IQFileMonitorClient>(client, Ids::IQFileMonitorClient))
                monitor->OnFileChanged(path);
    }
}
