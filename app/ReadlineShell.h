#pragma once
#include <string>

class Workbench;

// The interactive console: readline on standard input, polled together with
// the message loop's wake-up descriptor, so that a target that stops while
// the person types is reported at once.
class ReadlineShell
{
public:
    // historyFile: where the typed lines are kept; empty keeps none.
    ReadlineShell(Workbench& workbench, std::string historyFile);
    ~ReadlineShell();
    ReadlineShell(const ReadlineShell&) = delete;
    ReadlineShell& operator=(const ReadlineShell&) = delete;

    void Run();

private:
    static void OnLine(char* line);
    static char** Complete(const char* text, int start, int end);
    static char* NextCompletion(const char* text, int state);

    Workbench& workbench_;
    std::string historyFile_;
    bool done_ = false;
};
