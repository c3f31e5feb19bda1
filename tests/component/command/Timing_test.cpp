// Commands a batch file may not run at some timings.
#include <gtest/gtest.h>

#include "boundary/Ids.h"
#include "support/TestCommands.h"

namespace
{

using Check = CCmdBaseTiming::TimingCheck;

std::string Answer(CCmd& cmd)
{
    std::string message, prompt;
    VariantBool continuing = 0, pending = 0;
    EXPECT_EQ(cmd.ExecuteCommand("pf", message, prompt, continuing, pending, nullptr), S_OK);
    return message;
}

TEST(Timing, RefusedAroundADownloadOrAfterAResetAsEachCheckSays)
{
    const struct {
        Check check;
        int32_t batchState;
        const char* refusal; // "" when the command runs
    } cases[] = {
        {Check::NotAroundDownload, 0, ""},
        {Check::NotAroundDownload, 1, ""},
        {Check::NotAroundDownload, 2, "Before download of modules"},
        {Check::NotAroundDownload, 3, "After download of modules"},
        {Check::NotAroundDownload, 5, ""},
        {Check::NotAfterReset, 2, ""},
        {Check::NotAfterReset, 3, ""},
        {Check::NotAfterReset, 5, "After reset"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.batchState);
        FakeTimingService timing;
        HelpRecordingRegistry host;
        host.RegisterService(Ids::TimingService, &timing);
        timing.batchState = c.batchState;
        TimedCommand cmd(&host, c.check);
        EXPECT_EQ(Answer(cmd), *c.refusal == '\0'
                                   ? std::string("ran")
                                   : std::string("WARNING: 'probe_fill' skipped. Command cannot be "
                                                 "used on the '") +
                                         c.refusal + "' timing");
    }
}

TEST(Timing, WithoutTheServiceOrAnAnswerNothingIsRefused)
{
    HelpRecordingRegistry host;
    TimedCommand unserved(&host, Check::NotAfterReset);
    EXPECT_EQ(Answer(unserved), "ran");

    FakeTimingService timing;
    timing.batchState = 5;
    timing.answer = E_FAIL;
    host.RegisterService(Ids::TimingService, &timing);
    TimedCommand unanswered(&host, Check::NotAfterReset);
    EXPECT_EQ(Answer(unanswered), "ran");
}

} // namespace
