#include <gtest/gtest.h>

#include <vector>

#include "support/SimHarness.h"

namespace
{

TEST(SimStep, AdvancesThePcByOneInstructionAtATime)
{
    SimHarness h;
    ASSERT_TRUE(h.Boot("count")) << h.Error();
    ASSERT_TRUE(h.RunTo("main"));
    const uint32_t main = h.Symbol("main"), loop = h.Symbol("count_loop"), store = h.Symbol("count_store");
    // 16-bit loads, moves and stores, a 32-bit movw, and a 32-bit branch taken back.
    const std::vector<uint32_t> expected{main + 2, main + 4,  main + 6,  main + 10, loop + 2,
                                         store,    store + 2, store + 4, loop};
    ASSERT_EQ(main + 10, loop);
    for (uint32_t pc : expected) {
        const uint64_t before = h.Target().InstructionCount();
        auto stop = h.StepOnce();
        ASSERT_TRUE(stop);
        EXPECT_EQ(stop->reason, StopReason::StepDone);
        EXPECT_EQ(stop->pc, pc);
        EXPECT_EQ(h.Reg(kRegPc), pc);
        EXPECT_EQ(h.Target().InstructionCount(), before + 1);
    }
    EXPECT_EQ(h.Word(h.Symbol("mailbox")), 1u);
}

TEST(SimStep, FromAnItInstructionRunsTheWholeBlock)
{
    SimHarness h;
    ASSERT_TRUE(h.Boot("undef")) << h.Error();
    ASSERT_TRUE(h.RunTo("it_block"));
    const uint64_t before = h.Target().InstructionCount();
    auto stop = h.StepOnce();
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->reason, StopReason::StepDone);
    EXPECT_EQ(stop->pc, h.Symbol("after_it"));
    // itte, two moves taken and one skipped.
    EXPECT_EQ(h.Target().InstructionCount(), before + 4);
    EXPECT_EQ(h.Reg(kRegR0 + 1), 1u);
    EXPECT_EQ(h.Reg(kRegR0 + 2), 2u);
    EXPECT_EQ(h.Reg(kRegR0 + 3), 0u);
}

TEST(SimStep, BreakpointInsideAnItBlockStopsWhereTheEngineCan)
{
    SimHarness h;
    ASSERT_TRUE(h.Boot("undef")) << h.Error();
    ASSERT_TRUE(h.Target().AddBreakpoint(h.Symbol("it_block") + 2));
    auto stop = h.Run();
    ASSERT_TRUE(stop);
    // The engine cannot stop inside the block: the report names the PC it reached.
    EXPECT_EQ(stop->reason, StopReason::Breakpoint);
    EXPECT_GE(stop->pc, h.Symbol("after_it"));
    EXPECT_LE(stop->pc, h.Symbol("undef_insn"));
    EXPECT_EQ(h.Reg(kRegPc), stop->pc);
    EXPECT_EQ(h.Reg(kRegR0 + 2), 2u);
}

} // namespace
