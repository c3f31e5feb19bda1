// The console program as a user, a script and a packager see it.
#include <gtest/gtest.h>

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

#include "support/Recording.h"
#include "support/Shell.h"
#include "support/TempFolder.h"

namespace fs = std::filesystem;

namespace
{

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

// A person at a terminal: the prompt is put aside for what a command prints,
// and drawn again below it.
TEST(Console, AtATerminalOutputLandsAboveAFreshPrompt)
{
    TempFolder ws;
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

TEST(ConsoleSession, UnreadableStoreIsReportedAndTheSessionRunsOn)
{
    TempFolder ws;
    fs::create_directories(ws / ".tessel");
    ws.WriteFile(".tessel/workspace.db", "this is no database, just text\n");
    auto r = RunShell("cd " + ws.Path().string() + " && " + BinaryDirectory() +
                      "/tessel --platform simulator -c disconnect < /dev/null");
    EXPECT_EQ(r.status, 1) << "a script that lost its settings did not run as asked";
    EXPECT_EQ(r.output.rfind("Error: ", 0), 0u) << r.output;
    EXPECT_NE(r.output.find("Connected\n> disconnect\nDisconnected\n"), std::string::npos) << r.output;
    std::ifstream kept(ws.Path() / ".tessel" / "workspace.db");
    EXPECT_EQ(std::string((std::istreambuf_iterator<char>(kept)), {}), "this is no database, just text\n")
        << "a file that is not ours is left alone";
}

} // namespace
