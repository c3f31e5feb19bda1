// Sessions as a user types them: each case is a file of input lines and the
// exact text the console answers, run through the real program on the
// simulator.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

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

std::string ReadAll(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), {});
}

std::string RunShell(const std::string& command)
{
    std::string output;
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr)
        return output;
    std::array<char, 4096> buffer;
    size_t n;
    while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0)
        output.append(buffer.data(), n);
    pclose(pipe);
    return output;
}

std::vector<std::string> CaseNames()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(TESSEL_TRANSCRIPT_DIR))
        if (entry.path().extension() == ".in")
            names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

class Transcript : public ::testing::TestWithParam<std::string>
{
};

// NAME.in is typed into the console; NAME.out is what must come back;
// NAME.args, when present, holds the console's arguments (default: a session
// on the simulator; {cases} stands for this folder). With TESSEL_UPDATE_TRANSCRIPTS set, the output is
// written to NAME.out instead, for a person to read through before it is kept.
TEST_P(Transcript, ConsoleAnswersExactly)
{
    const fs::path dir = TESSEL_TRANSCRIPT_DIR;
    const std::string name = GetParam();
    std::string args = "--platform simulator";
    if (fs::exists(dir / (name + ".args"))) {
        args = ReadAll(dir / (name + ".args"));
        args.erase(args.find_last_not_of("\r\n") + 1);
        // {cases} names this folder, for batch files the case brings along.
        for (size_t at = args.find("{cases}"); at != std::string::npos; at = args.find("{cases}"))
            args.replace(at, 7, dir.string());
    }
    fs::path workspace =
        fs::temp_directory_path() / ("tessel-transcript-" + name + "-" + std::to_string(getpid()));
    fs::remove_all(workspace);
    fs::create_directories(workspace);
    std::string output = RunShell("cd " + workspace.string() + " && " + BinaryDirectory() + "/tessel " +
                                  args + " < " + (dir / (name + ".in")).string());
    fs::remove_all(workspace);

    if (std::getenv("TESSEL_UPDATE_TRANSCRIPTS") != nullptr) {
        std::ofstream(dir / (name + ".out"), std::ios::binary) << output;
        GTEST_SKIP() << "written " << name << ".out";
    }
    EXPECT_EQ(output, ReadAll(dir / (name + ".out"))) << "case " << name;
}

INSTANTIATE_TEST_SUITE_P(Cases, Transcript, ::testing::ValuesIn(CaseNames()),
                         [](const ::testing::TestParamInfo<std::string>& info) {
                             std::string id = info.param;
                             std::replace_if(
                                 id.begin(), id.end(),
                                 [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
                             return id;
                         });

} // namespace
