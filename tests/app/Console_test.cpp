// The console program as a user, a script and a packager see it.
#include <gtest/gtest.h>

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

#include "app/Console.h"
#include "support/Recording.h"
#include "support/TempFolder.h"

namespace fs = std::filesystem;

namespace
{

struct Result {
    int status;
    std::string output;
};

Result RunShell(const std::string& command)
{
    Result r{-1, {}};
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr)
        return r;
    std::array<char, 4096> buffer;
    size_t n;
    while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0)
        r.output.append(buffer.data(), n);
    int status = pclose(pipe);
    r.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return r;
}

// A fresh workspace folder for one test, with the files it asks for.
using Files = std::vector<std::pair<std::string, std::string>>;

struct Workspace : TempFolder {
    explicit Workspace(const Files& files = {})
    {
        for (const auto& [name, text] : files) {
            fs::create_directories((*this / name).parent_path());
            WriteFile(name, text);
        }
    }
    Result Run(const std::string& args, const std::string& input = "") const
    {
        return RunShell("cd " + Path().string() + " && printf '" + input + "' | " + BinaryDirectory() +
                        "/tessel " + args);
    }
};

TEST(Console, ComponentExportsExactlyTheFiveEntryPoints)
{
    auto r = RunShell("nm -D --defined-only " + BinaryDirectory() + "/libtessel-debugger.so");
    ASSERT_EQ(r.status, 0) << r.output;
    std::set<std::string> functions;
    std::istringstream lines(r.output);
    std::string address, kind, name;
    while (lines >> address >> kind >> name)
        if (kind == "T" || kind == "W" || kind == "i")
            functions.insert(name);
    EXPECT_EQ(functions, (std::set<std::string>{"CreateInstance", "DestroyInstance", "GetComponentVersion",
                                                "LibraryRegister2", "QueryInterface2"}));
}

// What a run prints and its exit status: 1 exactly when an error was shown.
TEST(Console, RunsAnswerWithTheirOutputAndExitStatus)
{
    struct Case {
        const char* name;
        std::string args, input;
        int status;
        std::string output;
    };
    const std::string conn = "Connected\n> help disconnect\ndisconnect <no parameters>\n";
    const Case cases[] = {
        {"version", "--version", "", 0, "Tessel Debugger 1.0\n"},
        {"platforms", "--list-platforms", "", 0, "simulator\nsimulator-m4\nsimulator-legacy\n"},
        {"piped lines end at quit", "", "help\\nquit\\nhelp\\n", 0,
         "> help\nbatch <filename>\nconnect <no parameters>\nevaluate <expression>\nhelp [<command>]\n"},
        {"empty -c runs nothing and reads no input", "-c ''", "help\\n", 0, ""},
        {"typed lines go on after a failure", "-c 'frobnicate; help help'", "", 1,
         "> frobnicate\nError: Unknown command: frobnicate\n> help help\nhelp [<command>]\n"},
        {"quit ends a script", "-c 'help help; qui; help'", "", 0, "> help help\nhelp [<command>]\n> qui\n"},
        {"batch stops at a failure", "--batch stop.qdc", "", 1,
         "> help help\nhelp [<command>]\n> frobnicate\nError: Unknown command: frobnicate\n"
         "Error: Batch file stop.qdc stopped; 1 line(s) not run\n"},
        {"missing batch", "--batch none.qdc", "", 1, "Error: Cannot open batch file: none.qdc\n"},
        {"batch of a folder", "--batch .", "", 1, "Error: Cannot open batch file: .\n"},
        {"platform that cannot connect", "--platform nosuch -c ''", "", 1,
         "Error: Target device driver missing, or connection cancelled: nosuch\n"},
        {"connection batch runs before the next line",
         "--platform simulator --batch-at 0 '$(WORKSPDIR)/conn.qdc' -c 'disconnect; connect; help help'", "",
         0,
         conn + "> disconnect\nDisconnected\n> connect\n" + conn +
             "> help help\nhelp [<command>]\nDisconnected\n"},
        {"session name with a separator", "--session ../x -c ''", "", 1,
         "Error: The session name may not hold '/' or '\\'\n"},
        {"bad timing", "--batch-at lunchtime boot.qdc", "", 2,
         "Unknown timing: lunchtime (use 0 to 3, connection, before-download, after-download or "
         "after-reset)\n"},
    };
    for (const auto& c : cases) {
        Workspace ws(Files{{"stop.qdc", "help help\nfrobnicate\nhelp\n"}, {"conn.qdc", "help disconnect\n"}});
        auto r = ws.Run(c.args, c.input);
        EXPECT_EQ(r.status, c.status) << c.name;
        EXPECT_EQ(r.output, c.output) << c.name;
    }
}

TEST(Console, MissingResourceModuleIsReportedAndTheSessionStillRuns)
{
    Workspace ws;
    fs::copy_file(BinaryDirectory() + "/libtessel-debugger.so", ws.Path() / "libtessel-debugger.so");
    auto r = ws.Run("--component ./libtessel-debugger.so", "help help\\n");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.output, "Error: Error loading resource DLL " + (ws.Path() / "DebuggerExtRes.dll").string() +
                            "\n> help help\nhelp [<command>]\n");
}

TEST(Console, UnloadableComponentGivesAMessageAndAFailure)
{
    std::istringstream in;
    std::ostringstream out, err;
    ConsoleOptions options;
    options.componentPath = "/nonexistent/libtessel-debugger.so";
    EXPECT_EQ(RunConsole(options, "/x/tessel", in, out, err, false), 1);
    EXPECT_EQ(err.str().rfind("Error: Cannot load component /nonexistent/libtessel-debugger.so", 0), 0u)
        << err.str();
}

TEST(Console, ArgumentsAreCheckedBeforeAnythingIsLoaded)
{
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"--component", "x.so", "-c", ""}, ""},
        {{"--component"}, "Option --component needs a value"},
        {{"--batch", "a.qdc", "-c", ""}, "Options --batch and -c cannot be used together"},
        {{"--frobnicate"}, "Unknown option: --frobnicate"},
    };
    for (const auto& [args, message] : cases) {
        ConsoleOptions options;
        std::string error;
        EXPECT_EQ(ParseConsoleArguments(args, options, error), message.empty());
        EXPECT_EQ(error, message);
    }
}

// A person at a terminal: the prompt is put aside for what a command prints,
// and drawn again below it.
TEST(Console, AtATerminalOutputLandsAboveAFreshPrompt)
{
    Workspace ws;
    const std::string program = BinaryDirectory() + "/tessel";
    int terminal = -1;
    pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    ASSERT_NE(child, -1);
    if (child == 0) {
        if (chdir(ws.Path().c_str()) == 0)
            execl(program.c_str(), "tessel", static_cast<char*>(nullptr));
        _exit(127);
    }
    std::string screen;
    auto readUntil = [&](const std::string& marker) {
        pollfd p{terminal, POLLIN, 0};
        char buffer[4096];
        ssize_t n = 0;
        while (screen.find(marker) == std::string::npos && poll(&p, 1, 5000) == 1 &&
               (n = read(terminal, buffer, sizeof buffer)) > 0)
            screen.append(buffer, static_cast<size_t>(n));
        return screen.find(marker) != std::string::npos;
    };
    EXPECT_TRUE(readUntil("to leave.\r\n"));
    EXPECT_TRUE(readUntil("> "));
    screen.clear();
    EXPECT_EQ(write(terminal, "help help\r", 10), 10);
    EXPECT_TRUE(readUntil("help [<command>]\r\n> ")) << screen;
    EXPECT_NE(screen.find("\r\x1b[K"), std::string::npos) << "the fresh prompt was cleared first: " << screen;
    EXPECT_EQ(write(terminal, "quit\r", 5), 5);
    int status = -1;
    waitpid(child, &status, 0);
    close(terminal);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

TEST(ConsoleSession, SettingsOfOneRunAreThereInTheNextAndOtherSessionsAreApart)
{
    Workspace ws(Files{{"boot.qdc", "help disconnect\n"}});
    auto first = ws.Run("--platform simulator --batch-at connection boot.qdc -c ''");
    EXPECT_EQ(first.output, "Connected\n> help disconnect\ndisconnect <no parameters>\nDisconnected\n");
    auto second = ws.Run("-c ''");
    EXPECT_EQ(second.output, first.output) << "the platform and the batch file were kept";
    auto other = ws.Run("--session bench -c ''");
    EXPECT_EQ(other.output, "") << "another session has no platform yet";
}

TEST(ConsoleSession, UnreadableStoreIsReportedAndTheSessionRunsOn)
{
    Workspace ws(Files{{".tessel/workspace.db", "this is no database, just text\n"}});
    auto r = ws.Run("--platform simulator -c disconnect");
    EXPECT_EQ(r.status, 1) << "a script that lost its settings did not run as asked";
    EXPECT_EQ(r.output.rfind("Error: ", 0), 0u) << r.output;
    EXPECT_NE(r.output.find("Connected\n> disconnect\nDisconnected\n"), std::string::npos) << r.output;
    std::ifstream kept(ws.Path() / ".tessel" / "workspace.db");
    EXPECT_EQ(std::string((std::istreambuf_iterator<char>(kept)), {}), "this is no database, just text\n")
        << "a file that is not ours is left alone";
}

} // namespace
