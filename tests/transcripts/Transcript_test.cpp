// Sessions as a user types them: each case is a file of input lines and the
// exact text the console answers, run through the real program on the
// simulator.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "support/Recording.h"
#include "support/Shell.h"

namespace fs = std::filesystem;

namespace
{

std::string ReadAll(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), {});
}

// The file's first line, or `otherwise` when the case has none.
std::string Optional(const fs::path& path, std::string otherwise)
{
    if (!fs::exists(path))
        return otherwise;
    std::string text = ReadAll(path);
    text.erase(text.find_last_not_of("\r\n") + 1);
    return text;
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to)
{
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
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

// NAME.in is typed into the console; NAME.out is what must come back, and
// NAME.status (default 0) the exit status. NAME.args, when present, holds the
// console's arguments (default: a session on the simulator); NAME.setup, a
// shell line run in the fresh workspace first, its output part of the
// transcript. In both, {cases} stands for this folder, {bin} for the
// programs' folder and {firmware} for the test firmware's; in the output,
// the workspace reads as {workspace}. With TESSEL_UPDATE_TRANSCRIPTS set, the
// output is written to NAME.out instead, for a person to read through before
// it is kept.
TEST_P(Transcript, ConsoleAnswersExactly)
{
    const fs::path dir = TESSEL_TRANSCRIPT_DIR;
    const std::string name = GetParam();
    std::string args = Optional(dir / (name + ".args"), "--platform simulator");
    std::string setup = Optional(dir / (name + ".setup"), "true");
    for (std::string* text : {&args, &setup}) {
        ReplaceAll(*text, "{cases}", dir.string());
        ReplaceAll(*text, "{bin}", BinaryDirectory());
        ReplaceAll(*text, "{firmware}", TESSEL_FIRMWARE_DIR);
    }
    fs::path workspace =
        fs::temp_directory_path() / ("tessel-transcript-" + name + "-" + std::to_string(getpid()));
    fs::remove_all(workspace);
    fs::create_directories(workspace);
    ShellResult run = RunShell("cd " + workspace.string() + " && " + setup + "; " + BinaryDirectory() +
                               "/tessel " + args + " < " + (dir / (name + ".in")).string());
    fs::remove_all(workspace);
    ReplaceAll(run.output, workspace.string(), "{workspace}");

    if (std::getenv("TESSEL_UPDATE_TRANSCRIPTS") != nullptr) {
        std::ofstream(dir / (name + ".out"), std::ios::binary) << run.output;
        fs::remove(dir / (name + ".status"));
        if (run.status != 0)
            std::ofstream(dir / (name + ".status")) << run.status << "\n";
        GTEST_SKIP() << "written " << name << ".out";
    }
    EXPECT_EQ(run.output, ReadAll(dir / (name + ".out"))) << "case " << name;
    EXPECT_EQ(std::to_string(run.status), Optional(dir / (name + ".status"), "0")) << "case " << name;
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
