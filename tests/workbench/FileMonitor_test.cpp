// The file monitor tells its clients, on the main loop, of files that were
// written or replaced: once per path however many notices the kernel gave.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

#include "boundary/Ids.h"
#include "support/TempFolder.h"
#include "workbench/FileMonitorService.h"
#include "workbench/MessageLoop.h"
#include "workbench/ServiceRegistry.h"

namespace
{

using namespace std::chrono_literals;

class ChangeLog final : public IQFileMonitorClient
{
public:
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerFrom({Ids::IUnknown, Ids::IQFileMonitorClient}, iid,
                          static_cast<IQFileMonitorClient*>(this), out);
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT OnFileChanged(const std::string& path) override
    {
        paths.push_back(path);
        return S_OK;
    }
    std::vector<std::string> paths;
};

struct FileMonitor : ::testing::Test {
    MessageLoop loop;
    ServiceRegistry registry;
    FileMonitorService monitor{loop, registry};
    ChangeLog client;
    TempFolder folder;

    FileMonitor() { registry.RegisterProvider(Ids::IQFileMonitorClient, &client); }
    ~FileMonitor() override { registry.UnregisterProvider(Ids::IQFileMonitorClient, &client); }

    std::string Write(const std::string& name, const std::string& text = "x")
    {
        const std::string path = folder / name;
        std::ofstream(path) << text;
        return path;
    }
    // Waits for the next report, then for whatever else is already queued.
    std::vector<std::string> Reported()
    {
        loop.RunUntil([this] { return !client.paths.empty(); }, 5s);
        loop.RunUntilIdle();
        return std::exchange(client.paths, {});
    }
};

TEST_F(FileMonitor, WrittenAndReplacedFilesAreReportedOnceEach)
{
    ASSERT_EQ(monitor.IsActive(), S_OK);
    const std::string image = Write("firmware.elf");
    const std::string other = Write("other.elf");
    ASSERT_EQ(monitor.AddFile(image), S_OK);
    EXPECT_EQ(std::pair(monitor.IsWatching(image), monitor.IsWatching(other)), std::pair(S_OK, S_FALSE));

    Write("other.elf", "unwatched");
    Write("firmware.elf", "one");
    Write("firmware.elf", "two");
    EXPECT_EQ(Reported(), std::vector<std::string>{image}) << "two writes, one report; the neighbour is not";

    // A build writes a new file and renames it over the old one.
    const std::string fresh = Write("firmware.elf.tmp", "three");
    ASSERT_EQ(std::rename(fresh.c_str(), image.c_str()), 0);
    EXPECT_EQ(Reported(), std::vector<std::string>{image});

    ASSERT_EQ(monitor.RemoveFile(image), S_OK);
    EXPECT_EQ(monitor.RemoveFile(image), S_FALSE);
    Write("firmware.elf", "four");
    ASSERT_EQ(monitor.AddFile(other), S_OK);
    Write("other.elf", "five");
    EXPECT_EQ(Reported(), std::vector<std::string>{other}) << "a removed file is no longer reported";

    ASSERT_EQ(monitor.RemoveAllFiles(), S_OK);
    EXPECT_EQ(monitor.IsWatching(other), S_FALSE);
}

TEST_F(FileMonitor, PathsThatCannotBeWatchedAreRefused)
{
    EXPECT_EQ(monitor.AddFile(""), E_INVALIDARG);
    EXPECT_EQ(monitor.AddFile(folder.Path().string() + "/"), E_INVALIDARG);
    EXPECT_EQ(monitor.AddFile(folder / "missing/firmware.elf"), E_FAIL) << "its folder does not exist";
    EXPECT_EQ(monitor.IsWatching(folder / "missing/firmware.elf"), S_FALSE);
}

} // namespace
