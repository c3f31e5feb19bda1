// The command window: matching names, showing results, continuation, pending
// commands and batch files, as a person reading the window sees them.
#include <gtest/gtest.h>

#include <sstream>

#include "support/RecordingComponent.h"
#include "support/ScriptedCommand.h"
#include "support/TempFolder.h"
#include "workbench/Workbench.h"

namespace
{

struct CommandWindowTest : ::testing::Test {
    std::ostringstream out;
    Workbench workbench{out, nullptr, false};
    CommandWindow& window = workbench.Commands();
    ScriptedCommand display{workbench.Registry(), {"memory_display", "md"}};
    ScriptedCommand dump{workbench.Registry(), {"memory_dump"}};
    ScriptedCommand go{workbench.Registry(), {"go"}};
    std::vector<std::string> events;
    RecordingComponent listener{"batch", events};
    TempFolder folder;
    const std::string dir = folder.Path().string();

    void SetUp() override
    {
        window.SetEcho(true);
        workbench.Registry().AddComponent(&listener);
    }
    std::string Batch(const std::string& name, const std::string& text)
    {
        return folder.WriteFile(name, text);
    }
    std::string Run(const std::string& line)
    {
        out.str("");
        window.Submit(line);
        workbench.Loop().RunUntilIdle();
        return out.str();
    }
    // md goes on taking lines, showing a value, until one is ".".
    void Continuing()
    {
        display.answer = [](const std::string& line) {
            return ScriptedCommand::Answer{"", S_OK, line != ".", false, "20000000 FF"};
        };
    }
};

TEST_F(CommandWindowTest, NamesMatchExactlyThenByAliasThenByAnUnambiguousBeginning)
{
    dump.answer = [](const std::string&) { return ScriptedCommand::Answer{"", E_FAIL}; };
    const std::pair<std::string, std::string> cases[] = {
        {"memory_dump", "> memory_dump\nError: Command failed: 0x80004005\n"},
        {"memory_display 100", "> memory_display 100\nmemory_display ran\n"},
        {"MD 100", "> MD 100\nmemory_display ran\n"},
        {"memory_di 0", "> memory_di 0\nmemory_display ran\n"},
        {"memory_d 0", "> memory_d 0\nError: Ambiguous command: memory_d (memory_display, memory_dump)\n"},
        {"frobnicate", "> frobnicate\nError: Unknown command: frobnicate\n"},
        {"   \t ", ""},
        {"# a comment", ""},
    };
    for (const auto& [line, shown] : cases)
        EXPECT_EQ(Run(line), shown) << line;
    EXPECT_EQ(display.lines, (std::vector<std::string>{"memory_display 100", "MD 100", "memory_di 0"}))
        << "a command gets the line as typed";
    EXPECT_EQ(window.Failures(), 3);
}

TEST_F(CommandWindowTest, ContinuationSendsEveryLineToTheCommandUntilItEnds)
{
    Continuing();
    Run("md 100");
    EXPECT_EQ(window.Prompt(), "20000000 FF ") << "a blank keeps what is typed apart from the shown value";
    EXPECT_EQ(Run("go"), "20000000 FF go\n")
        << "while continuing, even a command name belongs to the command";
    Run(".");
    EXPECT_EQ(window.Prompt(), "> ");
    EXPECT_EQ(display.lines, (std::vector<std::string>{"md 100", "go", "."}));
    EXPECT_TRUE(go.lines.empty());
}

TEST_F(CommandWindowTest, PendingCommandHoldsLaterLinesUntilItsTextArrives)
{
    go.answer = [](const std::string&) { return ScriptedCommand::Answer{"", S_OK, false, true}; };
    Run("go");
    EXPECT_EQ(Run("md 0"), "") << "the next line waits";
    out.str("");
    ASSERT_NE(go.lastSink, nullptr);
    go.lastSink->OnCommandComplete("Stopped at H'08000124", S_OK);
    workbench.Loop().RunUntilIdle();
    EXPECT_EQ(out.str(), "Stopped at H'08000124\n> md 0\nmemory_display ran\n");
    EXPECT_TRUE(window.Idle());
    EXPECT_EQ(go.lastSink->OnCommandComplete("again", S_OK), E_FAIL)
        << "a completion with nothing pending is refused";
}

TEST_F(CommandWindowTest, FailureInANestedBatchStopsEveryBatchOutToTheOutermost)
{
    display.answer = [](const std::string& line) {
        return line.find("bad") != std::string::npos ? ScriptedCommand::Answer{"Parameter is invalid", E_FAIL}
                                                     : ScriptedCommand::Answer{"ok", S_OK};
    };
    std::string inner = Batch("inner.qdc", "md 2\nmd bad\nmd 3\n");
    std::string outer = Batch("outer.qdc", "md 1\n\n# note\nbatch " + inner + "\nmd 4\nmd 5\n");
    ASSERT_TRUE(window.SubmitBatchFile(outer));
    window.Submit("md typed");
    EXPECT_EQ(display.lines, (std::vector<std::string>{"md 1", "md 2", "md bad", "md typed"}));
    EXPECT_NE(out.str().find("Error: Parameter is invalid\nError: Batch file " + inner +
                             " stopped; 1 line(s) not run\nError: Batch file " + outer +
                             " stopped; 2 line(s) not run\n> md typed\n"),
              std::string::npos)
        << out.str();
    EXPECT_TRUE(events.empty()) << "only batches started through the service announce their end";
    EXPECT_FALSE(window.SubmitBatchFile(dir + "/missing.qdc"));
    EXPECT_FALSE(window.SubmitBatchFile(dir)) << "a folder is no batch file";
}

TEST_F(CommandWindowTest, OverlongTypedLineIsRefused)
{
    std::string huge(1 << 20, 'x');
    EXPECT_NE(Run("md " + huge).find("Error: Line too long: 1048579 characters, at most 65536"),
              std::string::npos);
    EXPECT_TRUE(display.lines.empty());
}

TEST_F(CommandWindowTest, CommandStillContinuingEndsWithItsBatch)
{
    Continuing();
    ASSERT_TRUE(window.SubmitBatchFile(Batch("edit.qdc", "md 20000000\n")));
    EXPECT_EQ(window.Prompt(), "> ");
    EXPECT_EQ(Run("go"), "> go\ngo ran\n");
    EXPECT_EQ(display.lines, (std::vector<std::string>{"md 20000000", "."})) << "the command is told to end";
}

TEST_F(CommandWindowTest, ServiceBatchesRunInOrderBeforeTheNextLineAndAnnounceTheirEnd)
{
    std::string first = Batch("first.qdc", "md 1\n"), second = Batch("second.qdc", "md 2\n");
    ScriptedCommand::Answer goAnswer;
    go.answer = [&](const std::string&) {
        EXPECT_EQ(window.RunBatchFile(first), S_OK);
        EXPECT_EQ(window.RunBatchFile(second), S_OK);
        EXPECT_EQ(window.RunBatchFile(dir + "/missing.qdc"), E_FAIL);
        return goAnswer;
    };
    window.SubmitSequence("go; md 3");
    workbench.Loop().RunUntilIdle();
    EXPECT_EQ(display.lines, (std::vector<std::string>{"md 1", "md 2", "md 3"}));
    EXPECT_EQ(events, (std::vector<std::string>{"batch:0", "batch:0"}));

    display.lines.clear();
    goAnswer = {"Target lost", E_FAIL};
    ASSERT_TRUE(window.SubmitBatchFile(Batch("outer.qdc", "go\nmd never\n")));
    EXPECT_TRUE(display.lines.empty());
    EXPECT_EQ(events.size(), 4u) << "a batch stopped before it ran is announced too";
}

TEST_F(CommandWindowTest, QuitEndsEveryBatchAndEveryWaitingLine)
{
    ASSERT_TRUE(window.SubmitBatchFile(Batch("quit.qdc", "md 1\nqu\nmd 2\n")));
    EXPECT_TRUE(window.QuitRequested());
    window.SubmitSequence("md 3");
    EXPECT_EQ(display.lines, (std::vector<std::string>{"md 1"}));
}

TEST_F(CommandWindowTest, SequenceSplitsAtSemicolonsOutsideQuotesAndBraces)
{
    window.SubmitSequence("md \"a;b\"; md {c;d};md 3");
    EXPECT_EQ(display.lines, (std::vector<std::string>{"md \"a;b\"", "md {c;d}", "md 3"}));
}

// What completion at a terminal offers.
TEST_F(CommandWindowTest, CommandNamesAreEveryRegisteredNameInOrder)
{
    EXPECT_EQ(window.CommandNames(), (std::vector<std::string>{"batch", "exit", "go", "help", "md",
                                                               "memory_display", "memory_dump", "quit"}));
}

} // namespace
