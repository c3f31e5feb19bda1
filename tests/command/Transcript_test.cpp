// Batch files in, the command window's text out: the framework's messages as
// a user reads them.
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "../component/support/FakeEvaluator.h"
#include "component/frame/CDebuggerState.h"
#include "support/CommandFakes.h"
#include "support/TestCommands.h"
#include "support/TranscriptCommands.h"
#include "workbench/Workbench.h"

namespace fs = std::filesystem;

namespace
{

struct Transcript : ::testing::Test {
    std::ostringstream out;
    Workbench workbench{out, nullptr, false};
    FakeEvaluator evaluator;
    CDebuggerState state;
    FakeManager manager;
    std::unique_ptr<ProbeCommand> probe;
    std::unique_ptr<TokensCommand> tokens;
    std::unique_ptr<PickCommand> pick;
    std::unique_ptr<EditCommand> edit;
    std::unique_ptr<WaitCommand> wait;
    fs::path dir;

    void SetUp() override
    {
        IQServiceRegistry* host = &workbench.Registry();
        host->RegisterService(Ids::IQEvaluator2, &evaluator);
        ASSERT_EQ(state.Initialise(host, 1), S_OK);
        workbench.Registry().AddComponent(&state);
        probe = std::make_unique<ProbeCommand>(host, manager, CCmdBaseTiming::TimingCheck::NotAfterReset);
        tokens = std::make_unique<TokensCommand>(host);
        pick = std::make_unique<PickCommand>(host);
        edit = std::make_unique<EditCommand>(host);
        wait = std::make_unique<WaitCommand>(host, state);
        char pattern[] = "/tmp/tessel-transcript-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        dir = pattern;
    }
    void TearDown() override
    {
        probe.reset();
        tokens.reset();
        pick.reset();
        edit.reset();
        wait.reset();
        workbench.Registry().RemoveComponent(&state);
        state.Terminate(1);
        fs::remove_all(dir);
    }
    std::string Path(const std::string& name) { return (dir / name).string(); }
    // Runs a batch file and gives the window's text.
    std::string Run(const std::string& lines)
    {
        std::ofstream(Path("t.qdc")) << lines;
        out.str("");
        EXPECT_TRUE(workbench.Commands().SubmitBatchFile(Path("t.qdc")));
        workbench.Loop().RunUntilIdle();
        return out.str();
    }
};

TEST_F(Transcript, TokensKeepQuotesLoseBracesAndKeepTabs)
{
    workbench.Commands().SetEcho(true);
    EXPECT_EQ(Run("tokens \"a\"\"b\" {a b} {a{b}c plain\ttab\n"
                  "tokens \"unclosed quote\n"
                  "tokens {unclosed brace\n"
                  "tokens\n"
                  "tokens\tafter-tab\n"),
              "> tokens \"a\"\"b\" {a b} {a{b}c plain\ttab\n"
              "[\"a\"b\"]1 [a b]0 [a{b]0 [c]0 [plain\ttab]0\n"
              "> tokens \"unclosed quote\n"
              "[\"unclosed quote]1\n"
              "> tokens {unclosed brace\n"
              "[unclosed brace]0\n"
              "> tokens\n"
              "no tokens\n"
              "> tokens\tafter-tab\n"
              "no tokens\n");
}

TEST_F(Transcript, EveryArgumentMessageWithItsExactText)
{
    workbench.Commands().SetEcho(true);
    // Each failing line stops its batch, so every case is a batch of its own.
    const std::pair<const char*, const char*> cases[] = {
        {"probe_fill", "Error: Parameter '<start>' is empty"},
        {"probe_fill \"100\" 200", "Error: Parameter '<start>' is empty"},
        {"probe_fill zz 200", "Error: Parameter '<start>' is invalid"},
        {"probe_fill 100", "Error: Parameter '<end>' is empty"},
        {"probe_fill 0 100000000",
         "Error: Parameter '<end>' must be in range H'0 (0) to H'FFFFFFFF (4294967295)"},
        {"probe_fill 0 FFFFFFFFFFFFFFFF",
         "Error: Parameter '<end>' must be in range H'0 (0) to H'FFFFFFFF (4294967295)"},
        {"probe_fill 0 1FFFFFFFFFFFFFFFF", "Error: Parameter '<end>' is invalid"},
        {"probe_fill 0 10 101", "Error: Parameter '<count>' must be in range H'1 (1) to H'100 (256)"},
        {"probe_fill 0 10 4 long extra", "Error: Too many parameters"},
        {"probe_fill 0 10 quadword", "Error: Too many parameters"},
        {"pick", "Error: Parameter '<mode>' is empty"},
        {"pick dword x y", "Error: Parameter 'dword' is not found. Input keyword(byte,word,long)"},
        {"pick w", "Error: Parameter '<name>' is empty"},
        {"pick w n", "Error: Parameter '<expression>' is empty"},
        {"pick w n \"quoted\"", "Error: Parameter '<expression>' is empty"},
    };
    for (const auto& [line, message] : cases) {
        std::string text = Run(std::string(line) + "\n");
        EXPECT_EQ(text, "> " + std::string(line) + "\n" + message + "\nError: Batch file " + Path("t.qdc") +
                            " stopped; 0 line(s) not run\n")
            << line;
    }
    EXPECT_TRUE(manager.calls.empty()) << "no failing line reaches the manager";
    EXPECT_EQ(Run("probe_fill 10 20 4 l\npick W n {1 + 2}\n"), "> probe_fill 10 20 4 l\n> pick W n {1 + 2}\n"
                                                               "picked word n 1 + 2\n");
    EXPECT_EQ(manager.calls, (std::vector<std::string>{"16..32 x4 long"}))
        << "numbers in the session radix, hex";
}

TEST_F(Transcript, ManagerFailureShowsTheManagersOwnText)
{
    workbench.Commands().SetEcho(true);
    manager.result = static_cast<HRESULT>(0x80043092u);
    manager.texts[manager.result] = "Can not read memory";
    EXPECT_EQ(Run("probe_fill 0 10\n"), "> probe_fill 0 10\nError: Can not read memory\nError: Batch file " +
                                            Path("t.qdc") + " stopped; 0 line(s) not run\n");
    manager.reports = false;
    EXPECT_EQ(Run("probe_fill 0 10\n"),
              "> probe_fill 0 10\nError: Unknown error code -2147209070\nError: Batch file " + Path("t.qdc") +
                  " stopped; 0 line(s) not run\n");
}

TEST_F(Transcript, TimingRefusalWarnsAndTheBatchGoesOn)
{
    workbench.Commands().SetEcho(true);
    std::ofstream(Path("reset.qdc")) << "probe_fill 0 10\ntokens still running\n";
    state.SetCommandFiles({{Path("reset.qdc"), 3}});
    out.str("");
    state.StartBatchFiles(3);
    workbench.Loop().RunUntilIdle();
    EXPECT_EQ(out.str(), "> probe_fill 0 10\n"
                         "WARNING: 'probe_fill' skipped. Command cannot be used on the 'After reset' timing\n"
                         "> tokens still running\n"
                         "[still]0 [running]0\n");
    EXPECT_EQ(state.GetBatchRunning(), 0) << "the batch's end was counted";
    EXPECT_TRUE(manager.calls.empty());
    EXPECT_EQ(workbench.Commands().Failures(), 0);
}

TEST_F(Transcript, ContinuationTakesLinesUntilItsTerminator)
{
    workbench.Commands().SetEcho(true);
    EXPECT_EQ(Run("edit\nfirst line\n  tokens is data here\n.\ntokens after\n"),
              "> edit\nediting\nedit> first line\ngot first line\nedit> tokens is data here\n"
              "got tokens is data here\nedit> .\nedit done\n> tokens after\n[after]0\n");
}

TEST_F(Transcript, PendingCommandIsCompletedByTheStopEvent)
{
    workbench.Commands().SetEcho(true);
    std::string text = Run("wait\ntokens next\n");
    EXPECT_EQ(text, "> wait\n");
    EXPECT_TRUE(workbench.Commands().Pending());
    out.str("");
    state.SetStopAddress(0x08000124);
    workbench.Registry().Broadcast(Event{Ids::EVENT_TARGET_STOPPED, 0});
    workbench.Loop().RunUntilIdle();
    EXPECT_EQ(out.str(), "Stopped at H'08000124\n> tokens next\n[next]0\n");
    EXPECT_TRUE(workbench.Commands().Idle());
}

TEST_F(Transcript, HelpShowsEachRegisteredCommandWithItsParameters)
{
    workbench.Commands().SetEcho(true);
    EXPECT_EQ(Run("help probe_fill\nhelp pf\nhelp edit\n"),
              "> help probe_fill\nprobe_fill <start> <end> [<count>] [<mode>]\n"
              "> help pf\npf <start> <end> [<count>] [<mode>]\n"
              "> help edit\nedit <no parameters>\n");
    probe.reset();
    EXPECT_EQ(Run("help pf\n"), "> help pf\nError: No help for: pf\nError: Batch file " + Path("t.qdc") +
                                    " stopped; 0 line(s) not run\n")
        << "a command that goes takes its help along";
}

} // namespace
