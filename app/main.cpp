#include <unistd.h>

#include <iostream>

#include "app/Console.h"

int main(int argc, char** argv)
{
    std::vector<std::string> args(argv + 1, argv + argc);
    ConsoleOptions options;
    std::string error;
    if (!ParseConsoleArguments(args, options, error)) {
        std::cerr << error << "\n";
        return 2;
    }
    std::string self = "/proc/self/exe";
    char buffer[4096];
    ssize_t n = readlink(self.c_str(), buffer, sizeof(buffer) - 1);
    std::string program = n > 0 ? std::string(buffer, static_cast<size_t>(n)) : std::string(argv[0]);
    return RunConsole(options, program, std::cin, std::cout, std::cerr, isatty(STDIN_FILENO) != 0);
}
