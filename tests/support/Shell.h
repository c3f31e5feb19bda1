#pragma once
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

struct ShellResult {
    int status;
    std::string output;
};

// Runs a shell command line, its error output mixed into `output`; status -1
// when it did not exit on its own.
inline ShellResult RunShell(const std::string& command)
{
    ShellResult result{-1, {}};
    FILE* pipe = popen(("(" + command + ") 2>&1").c_str(), "r");
    if (pipe == nullptr)
        return result;
    std::array<char, 4096> buffer;
    size_t n;
    while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0)
        result.output.append(buffer.data(), n);
    int status = pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}
