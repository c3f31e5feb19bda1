#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "support/SimHarness.h"

namespace
{

class SimBreakpoints : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(h.Boot("count")) << h.Error(); }
    uint32_t Counter() { return h.Word(h.Symbol("mailbox")); }

    SimHarness h;
};

TEST_F(SimBreakpoints, StopBeforeTheirInstructionWhichAStepThenExecutes)
{
    const uint32_t store = h.Symbol("count_store");
    ASSERT_TRUE(h.Target().AddBreakpoint(store));
    auto stop = h.Run();
    ASSERT_TRUE(stop);
    EXPECT_EQ(std::tuple(stop->reason, stop->pc, h.Reg(kRegPc)),
              std::tuple(StopReason::Breakpoint, store, store));
    // The increment ran, the store did not.
    EXPECT_EQ(std::pair(h.Reg(kRegR0 + 5), Counter()), std::pair(1u, 0u));

    auto step = h.StepOnce();
    ASSERT_TRUE(step);
    EXPECT_EQ(std::pair(step->reason, step->pc), std::pair(StopReason::StepDone, store + 2));
    EXPECT_EQ(Counter(), 1u);

    // Once removed it no longer stops.
    ASSERT_TRUE(h.Target().RemoveBreakpoint(store));
    EXPECT_TRUE(h.Target().Breakpoints().empty());
    auto halt = h.RunAWhile();
    ASSERT_TRUE(halt);
    EXPECT_EQ(halt->reason, StopReason::Halted);
    EXPECT_GE(Counter(), 1000u);
}

TEST_F(SimBreakpoints, GoingAgainRunsOnAndStopsThereOnTheNextPass)
{
    for (const char* label : {"count_store", "count_loop"}) {
        SCOPED_TRACE(label);
        const uint32_t address = h.Symbol(label);
        ASSERT_TRUE(h.Target().AddBreakpoint(address));
        ASSERT_TRUE(h.Run());
        const uint32_t counted = Counter();
        for (uint32_t pass = 1; pass <= 3; ++pass) {
            auto stop = h.Run();
            ASSERT_TRUE(stop);
            EXPECT_EQ(std::pair(stop->reason, stop->pc), std::pair(StopReason::Breakpoint, address));
            EXPECT_EQ(Counter(), counted + pass);
        }
        ASSERT_TRUE(h.Target().RemoveBreakpoint(address));
    }
}

TEST_F(SimBreakpoints, AddedWhileRunningTakesEffect)
{
    ASSERT_TRUE(h.Target().Go());
    ASSERT_TRUE(h.WaitForOutput("+"));
    const uint32_t loop = h.Symbol("count_loop");
    ASSERT_TRUE(h.Target().AddBreakpoint(loop));
    auto stop = h.Next();
    ASSERT_TRUE(stop);
    EXPECT_EQ(std::pair(stop->reason, stop->pc), std::pair(StopReason::Breakpoint, loop));
}

TEST_F(SimBreakpoints, ThumbBitIsIgnoredDuplicatesCollapseAndBadAddressesAreRefused)
{
    const uint32_t loop = h.Symbol("count_loop");
    ASSERT_TRUE(h.Target().AddBreakpoint(loop | 1));
    ASSERT_TRUE(h.Target().AddBreakpoint(loop));
    EXPECT_EQ(h.Target().Breakpoints(), std::vector<uint32_t>{loop});
    EXPECT_TRUE(h.Target().RemoveBreakpoint(loop | 1));

    EXPECT_EQ(h.Target().AddBreakpoint(0x40000000).cause,
              "Breakpoint at 0x40000000 is not in executable memory");
    EXPECT_EQ(h.Target().AddBreakpoint(0x30000000).cause,
              "Breakpoint at 0x30000000 is not in executable memory");
    EXPECT_EQ(h.Target().RemoveBreakpoint(0x08000100).cause, "No breakpoint at 0x08000100");
    EXPECT_TRUE(h.Target().Breakpoints().empty());
}

TEST(SimBreakpointsElsewhere, LeaveTheProgramAlone)
{
    SimHarness h;
    ASSERT_TRUE(h.Boot("hello")) << h.Error();
    const auto end = static_cast<uint32_t>(FirmwareProgram::kFlashBase + h.Program().Image().size());
    for (uint32_t i = 0; i < 8; ++i)
        ASSERT_TRUE(h.Target().AddBreakpoint(end + 0x100 + 0x40 * i));
    auto stop = h.Run();
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->reason, StopReason::Exit) << stop->cause;
    EXPECT_EQ(h.Output(), "hello\n");
}

} // namespace
