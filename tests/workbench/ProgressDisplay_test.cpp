// A long task's bar on the terminal, and Ctrl-C as that task's cancel.
#include <gtest/gtest.h>

#include <csignal>
#include <sstream>

#include "workbench/ProgressDisplayService.h"

namespace
{

TEST(ProgressDisplay, TheBarShowsShareBytesAndRateAndOnlyWhenDrawn)
{
    MessageLoop loop;
    std::ostringstream out;
    ProgressDisplayService bar(loop, out, true);
    bar.Begin("Downloading Program", "Loading app.elf", VARIANT_TRUE);
    bar.SetRange(1000);
    bar.SetPosition(250);
    EXPECT_EQ(bar.Line().substr(0, 53), "[#######                       ]  25%  250/1000 bytes");
    bar.SetPosition(1000);
    bar.End();
    EXPECT_EQ(out.str().rfind("Downloading Program: Loading app.elf\n", 0), 0u);
    EXPECT_NE(out.str().find("100%  1000/1000 bytes"), std::string::npos);

    // Hidden (the platform shows its own) or without a terminal: nothing drawn.
    std::ostringstream quiet;
    ProgressDisplayService batch(loop, quiet, false), hidden(loop, quiet, true);
    for (ProgressDisplayService* display : {&batch, &hidden}) {
        display->Begin("Saving Program", "x", display == &hidden ? VARIANT_FALSE : VARIANT_TRUE);
        display->SetRange(10);
        display->SetPosition(10);
        display->End();
    }
    EXPECT_EQ(quiet.str(), "");
}

TEST(ProgressDisplay, CtrlCCancelsTheRunningTaskOnly)
{
    MessageLoop loop;
    std::ostringstream out;
    ProgressDisplayService bar(loop, out, false);
    bar.Begin("Downloading Program", "x", VARIANT_TRUE);
    EXPECT_EQ(bar.IsCancelRequested(), S_FALSE);
    std::raise(SIGINT);
    EXPECT_EQ(bar.IsCancelRequested(), S_OK) << "the signal is the task's, not the program's";
    bar.End();
    EXPECT_EQ(bar.IsCancelRequested(), S_FALSE);
    // A new task starts without the old cancel, and after it SIGINT is as before.
    struct sigaction now {
    };
    sigaction(SIGINT, nullptr, &now);
    EXPECT_EQ(now.sa_handler, SIG_DFL);
    bar.Begin("Downloading Program", "y", VARIANT_TRUE);
    EXPECT_EQ(bar.IsCancelRequested(), S_FALSE);
    bar.End();
}

} // namespace
