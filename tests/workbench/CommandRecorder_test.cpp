#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "boundary/Ids.h"
#include "workbench/CommandRecorder.h"

namespace
{

struct RecordCase {
    const char* name;
    bool logging;
    bool withSink;
    std::string text;
    HRESULT expectedLogging;
    HRESULT expected;
    std::vector<std::string> lines;
    std::string sink;
};

class CommandRecording : public ::testing::TestWithParam<RecordCase>
{
};

TEST_P(CommandRecording, KeepsWhatIsLoggedWhileOn)
{
    const auto& c = GetParam();
    CommandRecorder recorder;
    std::ostringstream sink;
    recorder.SetLogging(c.logging);
    if (c.withSink)
        recorder.SetSink(&sink);
    EXPECT_EQ(recorder.IsLogging(), c.expectedLogging);
    EXPECT_EQ(recorder.LogCommand(c.text), c.expected);
    EXPECT_EQ(recorder.Lines(), c.lines);
    EXPECT_EQ(sink.str(), c.sink);
}

INSTANTIATE_TEST_SUITE_P(
    CommandRecorder, CommandRecording,
    ::testing::Values(
        RecordCase{"OnKeepsInMemory", true, false, "go", S_OK, S_OK, {"go"}, ""},
        RecordCase{"OnWritesToSink", true, true, "break main", S_OK, S_OK, {"break main"}, "break main\n"},
        RecordCase{"OffKeepsNothing", false, true, "go", S_FALSE, S_FALSE, {}, ""},
        RecordCase{"EmptyTextRefused", true, true, "", S_OK, E_INVALIDARG, {}, ""}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(CommandRecorder, DefaultsToOnAndCanBeSwitchedBack)
{
    CommandRecorder recorder;
    EXPECT_EQ(recorder.IsLogging(), S_OK);
    recorder.LogCommand("a");
    recorder.SetLogging(false);
    recorder.LogCommand("b");
    recorder.SetLogging(true);
    recorder.LogCommand("c");
    EXPECT_EQ(recorder.Lines(), (std::vector<std::string>{"a", "c"}));

    void* out = nullptr;
    EXPECT_EQ(recorder.QueryInterface(Ids::IQCommandRecorder, &out), S_OK);
    EXPECT_EQ(out, static_cast<IQCommandRecorder*>(&recorder));
}

} // namespace
