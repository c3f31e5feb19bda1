#pragma once
#include <iosfwd>
#include <string>
#include <vector>

#include "app/WorkspaceSession.h"

// The tessel console program: its command line, and the session it runs.
struct ConsoleOptions {
    bool showVersion = false;
    bool showHelp = false;
    bool listPlatforms = false;
    std::string componentPath; // empty: beside the program
    std::string batchFile;     // --batch: run it, then leave
    std::string commands;      // -c: "cmd; cmd", then leave
    bool hasCommands = false;  // -c was given, even with nothing to run
    SessionOptions session;
};

// Parses the program's arguments. False with a message on a bad one.
bool ParseConsoleArguments(const std::vector<std::string>& args, ConsoleOptions& options, std::string& error);

// Runs the console; gives the process exit status: 0, or 1 when anything was
// reported as an error (a command that failed, a batch file that could not be
// read or was stopped, a session that could not be set up as asked), 2 for a
// bad command line.
int RunConsole(const ConsoleOptions& options, const std::string& programPath, std::istream& in,
               std::ostream& out, std::ostream& err, bool interactive);
