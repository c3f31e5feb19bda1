// The console program as a person at a terminal sees it.
#include <gtest/gtest.h>

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/Recording.h"
#include "support/TempFolder.h"

namespace
{

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

} // namespace
