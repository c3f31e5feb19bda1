#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <tuple>
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
        EXPECT_EQ(std::tuple(stop->reason, stop->pc, h.Reg(kRegPc)),
                  std::tuple(StopReason::StepDone, pc, pc));
        EXPECT_EQ(h.Target().InstructionCount(), before + 1);
    }
    EXPECT_EQ(h.Word(h.Symbol("mailbox")), 1u);
}

TEST(SimStep, FromAnItInstructionRunsTheWholeBlockWhereNoBreakpointCanStop)
{
    SimHarness h;
    ASSERT_TRUE(h.Boot("undef")) << h.Error();
    ASSERT_TRUE(h.RunTo("it_block"));
    const uint64_t before = h.Target().InstructionCount();
    auto stop = h.StepOnce();
    ASSERT_TRUE(stop);
    EXPECT_EQ(std::pair(stop->reason, stop->pc), std::pair(StopReason::StepDone, h.Symbol("after_it")));
    // itte, two moves taken and one skipped.
    EXPECT_EQ(h.Target().InstructionCount(), before + 4);
    EXPECT_EQ(std::tuple(h.Reg(kRegR0 + 1), h.Reg(kRegR0 + 2), h.Reg(kRegR0 + 3)), std::tuple(1u, 2u, 0u));

    // A breakpoint inside the block:
    ASSERT_TRUE(h.Target().Reset());
    ASSERT_TRUE(h.Next());
    ASSERT_TRUE(h.Target().AddBreakpoint(h.Symbol("it_block") + 2));
    stop = h.Run();
    ASSERT_TRUE(stop);
    // The engine cannot stop inside the block: the report names the PC it reached.
    EXPECT_EQ(std::pair(stop->reason, h.Reg(kRegPc)), std::pair(StopReason::Breakpoint, stop->pc));
    EXPECT_GE(stop->pc, h.Symbol("after_it"));
    EXPECT_LE(stop->pc, h.Symbol("undef_insn"));
    EXPECT_EQ(h.Reg(kRegR0 + 2), 2u);
}

struct Outcome {
    StopReason reason;
    uint32_t pc;
    uint64_t instructions;
    std::string output;
};

struct Program {
    const char* name;
    uint32_t mode;      // written to mailbox[0] before running
    const char* stopAt; // a breakpoint label, or empty to run to the program's own stop
};

// Runs the program to its stop, freely or by single steps.
std::optional<Outcome> RunProgram(const Program& p, bool stepping)
{
    SimHarness h;
    if (!h.Boot(p.name) || !h.SetWord(h.Symbol("mailbox"), p.mode))
        return std::nullopt;
    const uint32_t until = *p.stopAt ? h.Symbol(p.stopAt) : 0;
    if (!stepping) {
        if (until != 0 && !h.Target().AddBreakpoint(until))
            return std::nullopt;
        auto stop = h.Run();
        return stop
                   ? std::optional(Outcome{stop->reason, stop->pc, h.Target().InstructionCount(), h.Output()})
                   : std::nullopt;
    }
    for (int i = 0; i < 100000; ++i) {
        auto stop = h.StepOnce();
        if (!stop)
            return std::nullopt;
        if (stop->reason != StopReason::StepDone)
            return Outcome{stop->reason, stop->pc, h.Target().InstructionCount(), h.Output()};
        if (stop->pc == until)
            return Outcome{StopReason::Breakpoint, stop->pc, h.Target().InstructionCount(), h.Output()};
    }
    return std::nullopt;
}

TEST(SimInstructionCount, FreeRunsCountWhatSingleStepsCount)
{
    for (const Program& p :
         {Program{"hello", 0, ""}, Program{"undef", 0, ""}, Program{"fault", 0, ""}, Program{"fault", 1, ""},
          Program{"fault", 2, ""}, Program{"fault", 3, ""}, Program{"fault", 4, ""}, Program{"fault", 6, ""},
          Program{"fault", 7, ""}, Program{"count", 0, "count_store"}, Program{"count", 0, "count_loop"}}) {
        SCOPED_TRACE(testing::Message() << p.name << " mode " << p.mode << " " << p.stopAt);
        auto free = RunProgram(p, false);
        auto stepped = RunProgram(p, true);
        ASSERT_TRUE(free && stepped);
        // Stepping over a semihosting call prints as running through it does.
        EXPECT_EQ(std::tie(free->reason, free->pc, free->instructions, free->output),
                  std::tie(stepped->reason, stepped->pc, stepped->instructions, stepped->output));
        EXPECT_GT(free->instructions, 10u);
    }
}

TEST(SimInstructionCountHalt, MatchesTheIterationsTheFirmwareCounted)
{
    // Reference figures from stepping: instructions up to the loop, and per pass.
    SimHarness reference;
    ASSERT_TRUE(reference.Boot("count")) << reference.Error();
    const uint32_t loop = reference.Symbol("count_loop");
    ASSERT_TRUE(reference.Target().AddBreakpoint(loop));
    ASSERT_TRUE(reference.Run());
    const uint64_t toLoop = reference.Target().InstructionCount();
    ASSERT_TRUE(reference.Run());
    const uint64_t perPass = reference.Target().InstructionCount() - toLoop;
    ASSERT_EQ(perPass, 5u);
    // movs, adr, the call and the branch back, once at 1000.
    const uint64_t announce = 4;

    SimHarness h;
    ASSERT_TRUE(h.Boot("count")) << h.Error();
    auto stop = h.RunAWhile();
    ASSERT_TRUE(stop);
    ASSERT_EQ(stop->reason, StopReason::Halted);
    // Single steps are exact, so they may bring the PC to the top of the loop.
    for (int i = 0; i < 8 && h.Reg(kRegPc) != loop; ++i)
        ASSERT_TRUE(h.StepOnce());
    ASSERT_EQ(h.Reg(kRegPc), loop);
    const uint64_t passes = h.Word(h.Symbol("mailbox"));
    ASSERT_GE(passes, 1000u);
    EXPECT_EQ(h.Target().InstructionCount(), toLoop + passes * perPass + announce);
}

} // namespace
