// Commands a batch file may not run at some timings.
#include <gtest/gtest.h>

#include "boundary/Ids.h"
#include "support/TestCommands.h"
#include "tests/component/support/FakeEvaluator.h"

namespace
{

using Check = CCmdBaseTiming::TimingCheck;

struct TimingCase {
    Check check;
    int32_t batchState;
    const char* refusal; // "" when the command runs
};

std::string Skipped(const char* timing)
{
    return std::string("WARNING: 'probe_fill' skipped. Command cannot be used on the '") + timing +
           "' timing";
}

TEST(Timing, RefusedAroundADownloadOrAfterAResetAsEachCheckSays)
{
    const TimingCase cases[] = {
        {Check::NotAroundDownload, 0, ""},
        {Check::NotAroundDownload, 1, ""},
        {Check::NotAroundDownload, 2, "Before download of modules"},
        {Check::NotAroundDownload, 3, "After download of modules"},
        {Check::NotAroundDownload, 5, ""},
        {Check::NotAfterReset, 0, ""},
        {Check::NotAfterReset, 1, ""},
        {Check::NotAfterReset, 2, ""},
        {Check::NotAfterReset, 3, ""},
        {Check::NotAfterReset, 5, "After reset"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.batchState);
        FakeEvaluator evaluator;
        FakeBatchState timing;
        FakeManager manager;
        CommandHost host;
        host.RegisterService(Ids::IQEvaluator2, &evaluator);
        host.RegisterService(Ids::TimingService, &timing);
        timing.batchState = c.batchState;
        ProbeCommand cmd(&host, manager, c.check);

        std::string message = "before";
        bool refused = *c.refusal != '\0';
        EXPECT_EQ(cmd.TimingAllows(c.check, message), !refused);
        EXPECT_EQ(message, refused ? Skipped(c.refusal) : "before");

        std::string prompt;
        VariantBool continuing = 0, pending = 0;
        EXPECT_EQ(cmd.ExecuteCommand("pf 1 2", message, prompt, continuing, pending, nullptr), S_OK);
        EXPECT_EQ(message, refused ? Skipped(c.refusal) : "");
        EXPECT_EQ(manager.calls.size(), refused ? 0u : 1u) << "a refused command does nothing";
    }
}

TEST(Timing, WithoutTheServiceOrAnAnswerNothingIsRefused)
{
    FakeManager manager;
    CommandHost host;
    std::string message;
    ProbeCommand unserved(&host, manager, Check::NotAfterReset);
    EXPECT_TRUE(unserved.TimingAllows(Check::NotAfterReset, message));

    FakeBatchState timing;
    timing.batchState = 5;
    timing.answer = E_FAIL;
    host.RegisterService(Ids::TimingService, &timing);
    ProbeCommand unanswered(&host, manager, Check::NotAfterReset);
    EXPECT_TRUE(unanswered.TimingAllows(Check::NotAfterReset, message));
    EXPECT_EQ(message, "");
}

} // namespace
