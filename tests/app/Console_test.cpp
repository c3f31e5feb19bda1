// The console program as a user and a packager see it.
#include <gtest/gtest.h>

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

namespace fs = std::filesystem;

namespace
{

std::string BinaryDirectory()
{
    char buffer[4096];
    ssize_t n = readlink("/proc/self/exe", buffer, sizeof(buffer) - 1);
    std::string self(buffer, n > 0 ? static_cast<size_t>(n) : 0);
    return self.substr(0, self.find_last_of('/'));
}

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

TEST(Console, VersionNamesTheComponentAndItsVersion)
{
    auto r = RunShell(BinaryDirectory() + "/tessel --version");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.output, "Tessel Debugger 1.0\n");
}

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

TEST(Console, SessionStartsAndEndsWhenInputEnds)
{
    auto r = RunShell("printf 'help\\nquit\\nhelp\\n' | " + BinaryDirectory() + "/tessel");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.output,
              "> help\nbatch <filename>\nconnect <no parameters>\nevaluate <expression>\nhelp [<command>]\n")
        << "nothing runs after quit";
}

TEST(Console, MissingResourceModuleIsReportedAndTheSessionStillRuns)
{
    char pattern[] = "/tmp/tessel-app-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    fs::path dir = pattern;
    fs::copy_file(BinaryDirectory() + "/libtessel-debugger.so", dir / "libtessel-debugger.so");
    auto r = RunShell("printf 'quit\\n' | " + BinaryDirectory() + "/tessel --component " +
                      (dir / "libtessel-debugger.so").string());
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.output, "Error: Error loading resource DLL " + (dir / "DebuggerExtRes.dll").string() + "\n");
    fs::remove_all(dir);
}

TEST(Console, ScriptsExitWithZeroOnlyWhenEveryCommandSucceeded)
{
    std::string tessel = BinaryDirectory() + "/tessel";
    auto ok = RunShell(tessel + " -c 'help help'");
    EXPECT_EQ(ok.status, 0);
    EXPECT_EQ(ok.output, "> help help\nhelp [<command>]\n");

    auto bad = RunShell(tessel + " -c 'help; frobnicate; help help'");
    EXPECT_EQ(bad.status, 1);
    EXPECT_NE(bad.output.find("> frobnicate\nError: Unknown command: frobnicate\n> help help\n"),
              std::string::npos)
        << "typed command lines go on after a failure";

    char pattern[] = "/tmp/tessel-batch-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    fs::path batch = fs::path(pattern) / "stop.qdc";
    {
        std::ofstream(batch) << "help help\nfrobnicate\nhelp\n";
    }
    auto stopped = RunShell(tessel + " --batch " + batch.string());
    EXPECT_EQ(stopped.status, 1);
    EXPECT_EQ(stopped.output,
              "> help help\nhelp [<command>]\n> frobnicate\nError: Unknown command: frobnicate\n"
              "Error: Batch file " +
                  batch.string() + " stopped; 1 line(s) not run\n");
    auto missing = RunShell(tessel + " --batch " + (fs::path(pattern) / "none.qdc").string());
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.output, "Cannot open batch file: " + (fs::path(pattern) / "none.qdc").string() + "\n");
    fs::remove_all(pattern);
}

TEST(Console, UnloadableComponentGivesAMessageAndAFailure)
{
    std::istringstream in;
    std::ostringstream out, err;
    ConsoleOptions options;
    options.componentPath = "/nonexistent/libtessel-debugger.so";
    EXPECT_EQ(RunConsole(options, "/x/tessel", in, out, err, false), 1);
    EXPECT_EQ(err.str().rfind("Cannot load component /nonexistent/libtessel-debugger.so", 0), 0u)
        << err.str();
}

TEST(Console, ArgumentsAreCheckedBeforeAnythingIsLoaded)
{
    struct Case {
        std::vector<std::string> args;
        bool ok;
        std::string error;
    };
    const Case cases[] = {
        {{"--version"}, true, ""},
        {{"--component", "x.so"}, true, ""},
        {{"--component"}, false, "Option --component needs a value"},
        {{"--batch", "a.qdc", "-c", "help"}, false, "Options --batch and -c cannot be used together"},
        {{"-c"}, false, "Option -c needs a value"},
        {{"--frobnicate"}, false, "Unknown option: --frobnicate"},
    };
    for (const auto& c : cases) {
        ConsoleOptions options;
        std::string error;
        EXPECT_EQ(ParseConsoleArguments(c.args, options, error), c.ok);
        EXPECT_EQ(error, c.error);
    }
}

} // namespace

namespace
{

// A fresh workspace folder for one test.
struct Workspace {
    fs::path dir;
    Workspace()
    {
        char pattern[] = "/tmp/tessel-ws-XXXXXX";
        dir = mkdtemp(pattern);
    }
    ~Workspace() { fs::remove_all(dir); }
    Result Run(const std::string& args) const
    {
        return RunShell("cd " + dir.string() + " && " + BinaryDirectory() + "/tessel " + args +
                        " </dev/null");
    }
};

TEST(ConsoleSession, PlatformsAreListedSimulatorFirst)
{
    Workspace ws;
    auto r = ws.Run("--list-platforms");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.output, "simulator\nsimulator-m4\nsimulator-legacy\n");
}

TEST(ConsoleSession, SettingsOfOneRunAreThereInTheNext)
{
    Workspace ws;
    {
        std::ofstream(ws.dir / "boot.qdc") << "help disconnect\n";
    }
    auto first = ws.Run("--platform simulator --batch-at connection boot.qdc -c disconnect");
    EXPECT_EQ(first.status, 0) << first.output;
    EXPECT_EQ(first.output,
              "Connected\n> help disconnect\ndisconnect <no parameters>\n> disconnect\nDisconnected\n");

    auto second = ws.Run("-c 'disconnect; connect'");
    EXPECT_EQ(second.status, 0) << second.output;
    EXPECT_EQ(second.output,
              "Connected\n> help disconnect\ndisconnect <no parameters>\n> disconnect\nDisconnected\n"
              "> connect\nConnected\n> help disconnect\ndisconnect <no parameters>\nDisconnected\n")
        << "the platform and the batch file were kept";

    auto other = ws.Run("--session bench -c help");
    EXPECT_EQ(other.output.find("Connected"), std::string::npos) << "another session has no platform yet";
}

TEST(ConsoleSession, UnknownPlatformIsNamedInTheMessage)
{
    Workspace ws;
    auto r = ws.Run("--platform nosuch -c connect");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.output, "Error: Target device driver missing, or connection cancelled: nosuch\n> connect\n"
                        "Error: Target device driver missing, or connection cancelled: nosuch\n"
                        "Error: Failed to connect to target\n");
}

TEST(ConsoleSession, UnreadableStoreIsReportedAndTheSessionRunsOn)
{
    Workspace ws;
    fs::create_directories(ws.dir / ".tessel");
    {
        std::ofstream(ws.dir / ".tessel" / "workspace.db") << "this is no database, just text\n";
    }
    auto r = ws.Run("--platform simulator -c disconnect");
    EXPECT_EQ(r.status, 0) << r.output;
    EXPECT_EQ(r.output.rfind("Error: ", 0), 0u) << r.output;
    EXPECT_NE(r.output.find("Connected\n> disconnect\nDisconnected\n"), std::string::npos) << r.output;
    std::ifstream kept(ws.dir / ".tessel" / "workspace.db");
    std::string text((std::istreambuf_iterator<char>(kept)), {});
    EXPECT_EQ(text, "this is no database, just text\n") << "a file that is not ours is left alone";
}

TEST(ConsoleSession, BadTimingIsRefusedBeforeAnythingStarts)
{
    Workspace ws;
    auto r = ws.Run("--batch-at lunchtime boot.qdc");
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.output,
              "Unknown timing: lunchtime (use 0 to 3, connection, before-download, after-download or "
              "after-reset)\n");
}

} // namespace
