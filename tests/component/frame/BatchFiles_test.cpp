// The session's batch files: stored form, starting them per timing, the batch
// state a command inside one sees, and memory kept closed while a connection's
// batch files run.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "boundary/ComUtils.h"
#include "boundary/interfaces/Command.h"
#include "component/memory/CMemoryManager.h"
#include "support/StateFixture.h"
#include "support/TempFolder.h"

namespace fs = std::filesystem;

namespace
{

struct RecordingCommandLine : IQCommandLineService {
    FAKE_WITHOUT_INTERFACES
    HRESULT RunBatchFile(const std::string& path) override
    {
        started.push_back(fs::path(path).filename().string());
        return path.find("refused") != std::string::npos ? E_FAIL : S_OK;
    }
    // clang-format off
    HRESULT GetQuotingVersion(int32_t& v) override { v = 65535; return S_OK; }
    // clang-format on
    std::vector<std::string> started;
};

struct BatchFiles : StateFixture {
    RecordingCommandLine commandLine;
    TempFolder folder;
    const fs::path dir = folder.Path();
    fs::path startDir = fs::current_path();

    void SetUp() override
    {
        registry.Provide(Ids::CommandLineService, &commandLine);
        StartSession();
    }
    void TearDown() override
    {
        fs::current_path(startDir);
        state->Terminate(1);
    }
    std::string File(const std::string& name) { return folder.WriteFile(name, "help\n"); }
    int32_t BatchState()
    {
        int32_t v = -1;
        state->GetBatchState(v);
        return v;
    }
    void BatchFinished() { state->OnEvent(Event{Ids::EVENT_BATCH_FINISHED, 0}); }
    size_t MemoryChangedCount() const
    {
        return std::count(log.begin(), log.end(), Sent(Ids::EVENT_MEMORY_CHANGED));
    }
};

TEST_F(BatchFiles, StoredFormIsTwoStringsAnEntry)
{
    std::vector<CCommandFile> files{{"$(PD)/boot.qdc|$(PD)", 0}, {"after.qdc", 3}};
    Variant stored = CCommandFile::Write(files);
    EXPECT_EQ(CComUtils::VariantToStringList(stored),
              (std::vector<std::string>{"$(PD)/boot.qdc|$(PD)", "0", "after.qdc", "3"}));
    EXPECT_EQ(CCommandFile::Read(stored), files);
    EXPECT_TRUE(CCommandFile::Read(CComUtils::StringListToVariant({"a.qdc", "1", "b.qdc"})).empty());
    EXPECT_TRUE(CCommandFile::Read(Variant::String("a.qdc")).empty());
    // A timing that is no number reads as 0; one that no moment fires stays in the list.
    EXPECT_EQ(CCommandFile::Read(CComUtils::StringListToVariant({"a.qdc", "soon", "b.qdc", "7"})),
              (std::vector<CCommandFile>{{"a.qdc", 0}, {"b.qdc", 7}}));
}

TEST_F(BatchFiles, AllFilesOfATimingStartInARowAndBlockOtherTimings)
{
    state->SetCommandFiles(
        {{File("one.qdc"), 1}, {File("two.qdc"), 1}, {File("refused.qdc"), 2}, {File("three.qdc"), 2}});
    state->StartBatchFiles(1);
    EXPECT_EQ(commandLine.started, (std::vector<std::string>{"one.qdc", "two.qdc"}));
    EXPECT_EQ(state->GetBatchRunning(), 2);
    EXPECT_EQ(BatchState(), 2);
    state->StartBatchFiles(2);
    EXPECT_EQ(commandLine.started.size(), 2u) << "a start while a batch runs does nothing";
    BatchFinished();
    EXPECT_EQ(BatchState(), 2);
    BatchFinished();
    BatchFinished();
    EXPECT_EQ(state->GetBatchRunning(), 0) << "never below 0";
    state->StartBatchFiles(2);
    EXPECT_EQ(commandLine.started.back(), "three.qdc");
    EXPECT_EQ(state->GetBatchRunning(), 1) << "a refused file gives its count back";
    EXPECT_EQ(BatchState(), 3);
}

TEST_F(BatchFiles, EachTimingHasItsBatchState)
{
    const int32_t expected[] = {1, 2, 3, 5};
    for (int32_t timing = 0; timing < 4; ++timing) {
        state->SetCommandFiles({{File("t.qdc"), timing}});
        state->StartBatchFiles(timing);
        EXPECT_EQ(BatchState(), expected[timing]) << timing;
        BatchFinished();
    }
}

TEST_F(BatchFiles, MissingFileIsReportedOnceAndTheOthersRun)
{
    state->SetCommandFiles({{(dir / "gone.qdc").string(), 0}, {File("here.qdc"), 0}});
    state->StartBatchFiles(0);
    // The prompt table shows it, and offers to switch it off for good.
    EXPECT_EQ(std::count(log.begin(), log.end(),
                         "ShowWarning 'Command batch file does not exist' The command batch file '" +
                             (dir / "gone.qdc").string() + "' does not exist."),
              1);
    EXPECT_EQ(commandLine.started, (std::vector<std::string>{"here.qdc"}));
}

TEST_F(BatchFiles, DirectoryBehindTheBarBecomesTheCurrentOne)
{
    fs::create_directory(dir / "work");
    state->SetCommandFiles({{File("a.qdc") + "|" + (dir / "work").string(), 0}});
    state->StartBatchFiles(0);
    EXPECT_EQ(fs::current_path(), dir / "work");
    BatchFinished();

    fs::current_path(startDir);
    state->SetCommandFiles({{File("b.qdc") + "|", 0}, {File("c.qdc") + "|" + (dir / "nowhere").string(), 0}});
    state->StartBatchFiles(0);
    EXPECT_EQ(fs::current_path(), startDir) << "an empty or missing directory changes nothing";
    EXPECT_EQ(commandLine.started.size(), 3u);
}

TEST_F(BatchFiles, WithoutACommandLineNothingStarts)
{
    registry.Provide(Ids::CommandLineService, nullptr);
    state->SetCommandFiles({{File("a.qdc"), 0}});
    state->StartBatchFiles(0);
    EXPECT_EQ(state->GetBatchRunning(), 0);
    EXPECT_TRUE(messages.shown.empty());
}

// Views read 0xFF while the connection batch runs, the batch's own commands
// reach the target, and the views are told to read again only if one of them
// was turned away.
TEST_F(BatchFiles, MemoryIsClosedToViewsUntilTheConnectionBatchIsOver)
{
    store.number["disablemem"] = 1;
    for (bool viewReads : {true, false}) {
        SCOPED_TRACE(viewReads ? "a view read" : "no view read");
        state->SetCommandFiles({{File("boot.qdc"), 0}});
        ASSERT_EQ(state->Connect(), S_OK);
        CMemoryManager* memory = state->GetMemory();
        ASSERT_TRUE(memory->IsMemoryDisabled()) << "closed while the batch has not run";
        std::vector<uint8_t> bytes(4, 0x11);
        if (viewReads) {
            ASSERT_EQ(state->GetMemoryInterface()->ReadMemory(0x20000000, 0x20000003, 1, bytes.data()), S_OK);
            EXPECT_EQ(bytes, std::vector<uint8_t>(4, 0xFF));
        }
        // The batch's commands go round the closed state, for their own call only.
        void* commands = nullptr;
        ASSERT_EQ(memory->QueryInterface(Ids::IQMemoryManagerCmdLine5, &commands), S_OK);
        bytes.assign(4, 0x11);
        static_cast<IQMemoryManagerCmdLine5*>(commands)->ReadMemory(0x20000000, 0x20000003, 1, bytes.data());
        EXPECT_NE(bytes, std::vector<uint8_t>(4, 0xFF));
        EXPECT_TRUE(memory->IsMemoryDisabled());

        const size_t before = MemoryChangedCount();
        BatchFinished();
        EXPECT_FALSE(memory->IsMemoryDisabled());
        EXPECT_EQ(MemoryChangedCount(), before + (viewReads ? 1 : 0));
        state->Disconnect();
    }
}

TEST_F(BatchFiles, MemoryStaysOpenWithoutAConnectionFileOrAConnection)
{
    store.number["disablemem"] = 1;
    ASSERT_EQ(state->Connect(), S_OK);
    EXPECT_FALSE(state->GetMemory()->IsMemoryDisabled()) << "no connection file: nothing to wait for";
    state->Disconnect();
    store.text["platform"] = "nosuch";
    state->SetCommandFiles({{File("boot.qdc"), 0}});
    EXPECT_NE(state->Connect(), S_OK);
    EXPECT_FALSE(state->GetMemory()->IsMemoryDisabled()) << "no connection: no batch will open it";
}

} // namespace
