// What the workbench keeps of a long session: the output window's tabs and the
// command log stay bounded, and text reaches the terminal as it arrives.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "workbench/CommandRecorder.h"
#include "workbench/OutputWindow.h"

namespace
{

TEST(OutputWindow, UnfinishedLineReachesTheTerminalAtOnce)
{
    std::ostringstream terminal;
    OutputWindow window(terminal);
    EXPECT_EQ(window.AppendText("Debug", "> "), S_OK);
    EXPECT_EQ(terminal.str(), "> ") << "a firmware's prompt shows before its line ends";
    window.AppendText("Debug", "typed\r\nnext");
    EXPECT_EQ(terminal.str(), "> typed\nnext");
    EXPECT_EQ(window.Text("Debug"), "> typed\nnext");
    EXPECT_EQ(window.AppendText("", "x"), E_INVALIDARG);
    window.ClearTab("Debug");
    EXPECT_EQ(window.Text("Debug"), "");
}

TEST(OutputWindow, TabKeepsOnlyItsLatestTextFromALineStart)
{
    std::ostringstream terminal;
    OutputWindow window(terminal);
    const std::string line(99, 'x');
    for (size_t i = 0; i < 3 * OutputWindow::kMaxTabText / 100; ++i)
        window.AppendText("Debug", line + "\n");
    window.AppendText("Other", "kept\n");
    const std::string text = window.Text("Debug");
    EXPECT_LE(text.size(), OutputWindow::kMaxTabText);
    EXPECT_GT(text.size(), OutputWindow::kMaxTabText - 100);
    EXPECT_EQ(text.substr(0, 100), line + "\n");
    EXPECT_EQ(window.Text("Other"), "kept\n");
}

TEST(CommandRecorder, LogsWhileOnToTheSinkAndKeepsTheLatestLines)
{
    CommandRecorder recorder;
    std::ostringstream sink;
    recorder.SetSink(&sink);
    EXPECT_EQ(recorder.IsLogging(), S_OK);
    EXPECT_EQ(recorder.LogCommand(""), E_INVALIDARG);
    recorder.SetLogging(false);
    EXPECT_EQ(recorder.IsLogging(), S_FALSE);
    EXPECT_EQ(recorder.LogCommand("off"), S_FALSE);
    recorder.SetLogging(true);
    const size_t total = 5 * CommandRecorder::kKept + 3;
    for (size_t i = 0; i < total; ++i)
        ASSERT_EQ(recorder.LogCommand("fill " + std::to_string(i)), S_OK);
    EXPECT_LT(recorder.Lines().size(), 2 * CommandRecorder::kKept);
    ASSERT_GE(recorder.Lines().size(), CommandRecorder::kKept);
    EXPECT_EQ(recorder.Lines().back(), "fill " + std::to_string(total - 1));
    EXPECT_EQ(recorder.Lines()[recorder.Lines().size() - CommandRecorder::kKept],
              "fill " + std::to_string(total - CommandRecorder::kKept));
    EXPECT_EQ(sink.str().substr(0, 14), "fill 0\nfill 1\n") << "the sink gets every line";
}

} // namespace
