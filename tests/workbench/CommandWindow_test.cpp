// The command window: matching names, showing results, continuation, pending
// commands and batch files, as a person reading the window sees them.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>

#include "support/RecordingComponent.h"
#include "support/ScriptedCommand.h"
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
    std::string dir;

    void SetUp() override
    {
        window.SetEcho(true);
        workbench.Registry().AddComponent(&listener);
        char pattern[] = "/tmp/tessel-window-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        dir = pattern;
    }
    void TearDown() override { std::system(("rm -rf " + dir).c_str()); }
    std::string Batch(const std::string& name, const std::string& text)
    {
        std::string path = dir + "/" + name;
        std::ofstream(path) << text;
        return path;
    }
    std::string Run(const std::string& line)
    {
        out.str("");
        window.Submit(line);
        workbench.Loop().RunUntilIdle();
        return out.str();
    }
};

TEST_F(CommandWindowTest, ExactNameWinsThenAliasThenAUniquePrefix)
{
    EXPECT_EQ(Run("memory_display 100"), "> memory_display 100\nmemory_display ran\n");
    EXPECT_EQ(Run("MD 100"), "> MD 100\nmemory_display ran\n");
    EXPECT_EQ(Run("memory_di 0"), "> memory_di 0\nmemory_display ran\n");
    EXPECT_EQ(Run("memory_d 0"),
              "> memory_d 0\nError: Ambiguous command: memory_d (memory_display, memory_dump)\n");
    EXPECT_EQ(Run("frobnicate"), "> frobnicate\nError: Unknown command: frobnicate\n");
    EXPECT_EQ(display.lines, (std::vector<std::string>{"memory_display 100", "MD 100", "memory_di 0"}))
        << "a command gets the line as typed";
    EXPECT_EQ(window.Failures(), 2);
}

TEST_F(CommandWindowTest, FailureIsMarkedAsAnErrorAndBlankLinesAreSkipped)
{
    display.answer = [](const std::string&) {
        return ScriptedCommand::Answer{"Parameter '<address>' is empty", E_FAIL};
    };
    EXPECT_EQ(Run("md"), "> md\nError: Parameter '<address>' is empty\n");
    display.answer = [](const std::string&) { return ScriptedCommand::Answer{"", E_FAIL}; };
    EXPECT_EQ(Run("md"), "> md\nError: Command failed: 0x80004005\n");
    EXPECT_EQ(Run("   \t "), "");
    EXPECT_EQ(Run("# a comment"), "");
}

TEST_F(CommandWindowTest, ContinuationSendsEveryLineToTheCommandUntilItEnds)
{
    display.answer = [](const std::string& line) {
        bool more = line != ".";
        return ScriptedCommand::Answer{"", S_OK, more, false, "H'100 ? "};
    };
    Run("md 100");
    EXPECT_EQ(window.Prompt(), "H'100 ? ");
    EXPECT_EQ(Run("go"), "H'100 ? go\n") << "while continuing, even a command name belongs to the command";
    display.answer = [](const std::string& line) {
        return ScriptedCommand::Answer{"", S_OK, line != ".", false, "20000000 FF"};
    };
    Run("next");
    EXPECT_EQ(window.Prompt(), "20000000 FF ") << "a blank keeps what is typed apart from the shown value";
    EXPECT_EQ(Run("12"), "20000000 FF 12\n");
    Run(".");
    EXPECT_EQ(window.Prompt(), "> ");
    EXPECT_EQ(display.lines, (std::vector<std::string>{"md 100", "go", "next", "12", "."}));
    EXPECT_TRUE(go.lines.empty());
}

TEST_F(CommandWindowTest, PendingCommandHoldsLaterLinesUntilItsTextArrives)
{
    go.answer = [](const std::string&) { return ScriptedCommand::Answer{"", S_OK, false, true}; };
    Run("go");
    EXPECT_TRUE(window.Pending());
    EXPECT_EQ(Run("md 0"), "") << "the next line waits";
    EXPECT_TRUE(display.lines.empty());
    out.str("");
    ASSERT_NE(go.lastSink, nullptr);
    go.lastSink->OnCommandComplete("Stopped at H'08000124", S_OK);
    workbench.Loop().RunUntilIdle();
    EXPECT_EQ(out.str(), "Stopped at H'08000124\n> md 0\nmemory_display ran\n");
    EXPECT_TRUE(window.Idle());
    EXPECT_EQ(go.lastSink->OnCommandComplete("again", S_OK), E_FAIL)
        << "a completion with nothing pending is refused";
}

TEST_F(CommandWindowTest, BatchRunsLineByLineAndStopsAtAFailedCommand)
{
    display.answer = [](const std::string& line) {
        return line.find("bad") != std::string::npos ? ScriptedCommand::Answer{"Parameter is invalid", E_FAIL}
                                                     : ScriptedCommand::Answer{"ok", S_OK};
    };
    std::string good = Batch("good.qdc", "md 1\n\n# note\nmd 2\n");
    std::string bad = Batch("bad.qdc", "md 1\nmd bad\nmd 3\nmd 4\n");
    out.str("");
    ASSERT_TRUE(window.SubmitBatchFile(good));
    ASSERT_TRUE(window.SubmitBatchFile(bad));
    workbench.Loop().RunUntilIdle();
    EXPECT_EQ(out.str(), "> md 1\nok\n> md 2\nok\n> md 1\nok\n> md bad\nError: Parameter is invalid\n"
                         "Error: Batch file " +
                             bad + " stopped; 2 line(s) not run\n");
    EXPECT_EQ(events.size(), 2u) << "each batch's end is broadcast, a stopped one too";
    EXPECT_FALSE(window.SubmitBatchFile(dir + "/missing.qdc"));
}

TEST_F(CommandWindowTest, ComponentsStartBatchesThatRunAfterTheirCallReturns)
{
    std::string file = Batch("later.qdc", "md 7\n");
    EXPECT_EQ(window.RunBatchFile(file), S_OK);
    EXPECT_TRUE(display.lines.empty());
    EXPECT_EQ(window.RunBatchFile(dir + "/missing.qdc"), E_FAIL);
    workbench.Loop().RunUntilIdle();
    EXPECT_EQ(display.lines, (std::vector<std::string>{"md 7"}));
    EXPECT_EQ(events, (std::vector<std::string>{"batch:0"}));
}

TEST_F(CommandWindowTest, NestedBatchRunsInPlace)
{
    std::string inner = Batch("inner.qdc", "md inner\n");
    std::string outer = Batch("outer.qdc", "md 1\nbatch " + inner + "\nmd 2\n");
    out.str("");
    ASSERT_TRUE(window.SubmitBatchFile(outer));
    workbench.Loop().RunUntilIdle();
    EXPECT_EQ(display.lines, (std::vector<std::string>{"md 1", "md inner", "md 2"}));
    EXPECT_EQ(events.size(), 2u);
}

TEST_F(CommandWindowTest, MalformedLinesAreRefusedWhole)
{
    std::string huge(1 << 20, 'x');
    std::string text = Run("md " + huge);
    EXPECT_NE(text.find("Error: Line too long: 1048579 characters, at most 65536"), std::string::npos);
    EXPECT_TRUE(display.lines.empty());
    EXPECT_EQ(Run("md 1"), "> md 1\nmemory_display ran\n") << "the session goes on";
}

TEST_F(CommandWindowTest, SequenceSplitsAtSemicolonsOutsideQuotesAndBraces)
{
    out.str("");
    window.SubmitSequence("md \"a;b\"; md {c;d};md 3");
    EXPECT_EQ(display.lines, (std::vector<std::string>{"md \"a;b\"", "md {c;d}", "md 3"}));
}

TEST_F(CommandWindowTest, HelpListsRegisteredCommandsWithTheirParameters)
{
    workbench.Help().AddCommandHelp("memory_display", "<address> [<length>] [<mode>]", 0);
    workbench.Help().AddCommandHelp("md", "<address> [<length>] [<mode>]", 1);
    workbench.Help().AddCommandHelp("go", "[<wait key>] [<address>]", 0);
    EXPECT_EQ(Run("help"), "> help\nbatch <filename>\ngo [<wait key>] [<address>]\nhelp [<command>]\n"
                           "memory_display <address> [<length>] [<mode>]\n");
    EXPECT_EQ(Run("help md"), "> help md\nmd <address> [<length>] [<mode>]\n");
    EXPECT_EQ(Run("help nothing"), "> help nothing\nError: No help for: nothing\n");
    EXPECT_EQ(window.CommandNames(),
              (std::vector<std::string>{"batch", "go", "help", "md", "memory_display", "memory_dump"}));
}

} // namespace
