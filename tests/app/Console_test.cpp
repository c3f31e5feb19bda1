// The console program as a user and a packager see it.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
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
    EXPECT_EQ(r.output, "> help\nbatch <filename>\nconnect <no parameters>\nhelp [<command>]\n")
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
