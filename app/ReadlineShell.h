#pragma once
#include <string>

class HeldOutput;
class Workbench;

// The interactive console: readline on standard input, polled together with
// the message loop's wake-up descriptor, so that a target that stops while
// the person types is reported at once: above the prompt, with the typed
// line drawn again below it.
class ReadlineShell
{
public:
    // historyFile: where the typed lines are kept; empty keeps none. output:
    // what the workbench writes, shown by the shell.
    ReadlineShell(Workbench& workbench, HeldOutput& output, std::string historyFile);
    ~ReadlineShell();
    ReadlineShell(const ReadlineShell&) = delete;
    ReadlineShell& operator=(const ReadlineShell&) = delete;

    void Run();

private:
    static void OnLine(char* line);
    static char** Complete(const char* text, int start, int end);
    static char* NextCompletion(const char* text, int state);
    void ShowOutput();

    Workbench& workbench_;
    HeldOutput& output_;
    std::string historyFile_;
    bool done_ = false;
};
