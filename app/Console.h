#pragma once
#include <iosfwd>
#include <string>
#include <vector>

// The tessel console program: its command line, and the session it runs.
struct ConsoleOptions {
    bool showVersion = false;
    bool showHelp = false;
    std::string componentPath; // empty: beside the program
};

// Parses the program's arguments. False with a message on a bad one.
bool ParseConsoleArguments(const std::vector<std::string>& args, ConsoleOptions& options, std::string& error);

// Runs the console; gives the process exit status.
int RunConsole(const ConsoleOptions& options, const std::string& programPath, std::istream& in,
               std::ostream& out, std::ostream& err, bool interactive);
