#include "app/ReadlineShell.h"

#include <poll.h>
#include <readline/history.h>
#include <readline/readline.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "app/HeldOutput.h"
#include "workbench/Workbench.h"

namespace
{

// readline's callbacks carry no context: one shell at a time.
ReadlineShell* g_shell = nullptr;
Workbench* g_workbench = nullptr;
bool* g_done = nullptr;
std::vector<std::string> g_candidates;

constexpr int kHistoryLength = 1000;

} // namespace

ReadlineShell::ReadlineShell(Workbench& workbench, HeldOutput& output, std::string historyFile)
    : workbench_(workbench), output_(output), historyFile_(std::move(historyFile))
{
    g_shell = this;
    g_workbench = &workbench_;
    g_done = &done_;
    using_history();
    stifle_history(kHistoryLength);
    if (!historyFile_.empty())
        read_history(historyFile_.c_str());
    rl_attempted_completion_function = &ReadlineShell::Complete;
}

ReadlineShell::~ReadlineShell()
{
    if (!historyFile_.empty())
        write_history(historyFile_.c_str());
    rl_attempted_completion_function = nullptr;
    g_shell = nullptr;
    g_workbench = nullptr;
    g_done = nullptr;
}

void ReadlineShell::OnLine(char* line)
{
    if (line == nullptr) {
        *g_done = true;
        std::printf("\n");
        return;
    }
    std::string text(line);
    std::free(line);
    if (text.find_first_not_of(" \t") != std::string::npos)
        add_history(text.c_str());
    g_workbench->Commands().Submit(text);
    if (g_workbench->Commands().QuitRequested())
        *g_done = true;
}

char* ReadlineShell::NextCompletion(const char* text, int state)
{
    static size_t index = 0;
    if (state == 0) {
        index = 0;
        g_candidates = g_workbench->Commands().CommandNames();
    }
    size_t length = std::strlen(text);
    while (index < g_candidates.size()) {
        const std::string& name = g_candidates[index++];
        if (name.compare(0, length, text) == 0)
            return strdup(name.c_str());
    }
    return nullptr;
}

char** ReadlineShell::Complete(const char* text, int start, int)
{
    // Only the first word is a command name; the rest completes as files.
    if (start != 0)
        return nullptr;
    rl_attempted_completion_over = 1;
    return rl_completion_matches(text, &ReadlineShell::NextCompletion);
}

void ReadlineShell::Run()
{
    std::string prompt = workbench_.Commands().Prompt();
    rl_callback_handler_install(prompt.c_str(), &ReadlineShell::OnLine);
    while (!done_) {
        pollfd fds[2] = {{STDIN_FILENO, POLLIN, 0}, {workbench_.Loop().WakeFd(), POLLIN, 0}};
        int timeout = -1;
        if (auto delay = workbench_.Loop().NextTimerDelay())
            timeout = static_cast<int>(delay->count());
        int n = poll(fds, fds[1].fd >= 0 ? 2 : 1, timeout);
        if (n > 0 && (fds[0].revents & (POLLIN | POLLHUP)))
            rl_callback_read_char();
        workbench_.Loop().RunUntilIdle();
        if (workbench_.Commands().QuitRequested())
            done_ = true;
        ShowOutput();
        std::string now = workbench_.Commands().Prompt();
        if (now != prompt) {
            prompt = now;
            rl_set_prompt(prompt.c_str());
            rl_redisplay();
        }
    }
    ShowOutput();
    rl_callback_handler_remove();
}

void ReadlineShell::ShowOutput()
{
    std::string text = output_.Take();
    if (text.empty())
        return;
    // The prompt and the typed line are put aside, the text goes where they
    // stood, and both are drawn again below it.
    const int point = rl_point;
    char* typed = rl_copy_text(0, rl_end);
    rl_save_prompt();
    rl_replace_line("", 0);
    rl_redisplay();
    std::fwrite(text.data(), 1, text.size(), stdout);
    // A line the target has not finished shows now; the prompt goes below it.
    if (text.back() != '\n')
        std::fputc('\n', stdout);
    std::fflush(stdout);
    rl_restore_prompt();
    rl_replace_line(typed != nullptr ? typed : "", 0);
    std::free(typed);
    rl_point = point;
    rl_on_new_line();
    rl_redisplay();
}
