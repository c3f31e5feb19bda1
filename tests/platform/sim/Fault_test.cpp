#include <gtest/gtest.h>

#include <ostream>

#include <string>

#include "platform/sim/SimText.h"
#include "support/SimHarness.h"

namespace
{

struct FaultCase {
    uint32_t mode;
    const char* label; // where the PC must stop; empty: at `pc`
    uint32_t pc;
    StopReason reason;
    const char* cause; // any "%s" stands for the stop address
    uint32_t r2;       // a register the faulting block set before the fault
};

void PrintTo(const FaultCase& c, std::ostream* os)
{
    *os << "mode " << c.mode;
}

class SimFaults : public testing::TestWithParam<FaultCase>
{
};

TEST_P(SimFaults, StopExactlyAtTheFaultingInstructionWithTheirCause)
{
    const FaultCase& c = GetParam();
    SimHarness h;
    ASSERT_TRUE(h.Boot("fault")) << h.Error();
    const uint32_t flash = h.Word(0x08000100);
    ASSERT_TRUE(h.SetWord(h.Symbol("mailbox"), c.mode));
    auto stop = h.Run();
    ASSERT_TRUE(stop);
    const uint32_t at = *c.label ? h.Symbol(c.label) : c.pc;
    EXPECT_EQ(stop->reason, c.reason);
    EXPECT_EQ(stop->pc, at);
    std::string cause = c.cause;
    if (size_t mark = cause.find("%s"); mark != std::string::npos)
        cause.replace(mark, 2, SimText::Hex(at));
    EXPECT_EQ(stop->cause, cause);
    EXPECT_EQ(h.Reg(kRegPc), at);
    if (c.r2 != 0) {
        EXPECT_EQ(h.Reg(kRegR0 + 2), c.r2);
    }
    EXPECT_FALSE(h.Target().IsRunning());
    EXPECT_EQ(h.Word(0x08000100), flash) << "firmware cannot change flash";
}

INSTANTIATE_TEST_SUITE_P(
    Cases, SimFaults,
    testing::Values(
        FaultCase{0, "fault_read", 0, StopReason::Fault, "Invalid memory read at 0x30000000", 7},
        FaultCase{1, "fault_write", 0, StopReason::Fault, "Invalid memory write at 0x30000004", 8},
        FaultCase{2, "fault_flash", 0, StopReason::Fault, "Write to read-only memory at 0x08000100", 9},
        FaultCase{3, "", 0x30000000, StopReason::Fault, "Invalid memory fetch at 0x30000000", 0},
        FaultCase{4, "fault_bkpt", 0, StopReason::BreakpointInstruction, "Breakpoint instruction 0x01 at %s",
                  10}));

TEST(SimFaultsUndefined, StopWithTheirAddress)
{
    SimHarness h;
    ASSERT_TRUE(h.Boot("undef")) << h.Error();
    auto stop = h.Run();
    ASSERT_TRUE(stop);
    const uint32_t at = h.Symbol("undef_insn");
    EXPECT_EQ(stop->reason, StopReason::Fault);
    EXPECT_EQ(stop->pc, at);
    EXPECT_EQ(stop->cause, "Undefined instruction at " + SimText::Hex(at));
    // The instructions before it ran.
    EXPECT_EQ(h.Reg(kRegR0), 3u + 0x1000u);
}

TEST(SimFaultsAfterwards, TheTargetStaysUsable)
{
    SimHarness h;
    ASSERT_TRUE(h.Boot("fault")) << h.Error();
    ASSERT_TRUE(h.Run());
    // Going on from a fault meets it again rather than running wild.
    auto again = h.Run();
    ASSERT_TRUE(again);
    EXPECT_EQ(again->reason, StopReason::Fault);
    EXPECT_EQ(again->pc, h.Symbol("fault_read"));
    ASSERT_TRUE(h.Target().Reset());
    ASSERT_TRUE(h.Recorder().Next());
    ASSERT_TRUE(h.SetWord(h.Symbol("mailbox"), 5));
    auto stop = h.Run();
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->reason, StopReason::Exit) << stop->cause;
    EXPECT_EQ(stop->exitCode, 0);
}

// Mode 5 writes a peripheral and reads it back, mode 7 waits for an
// interrupt that never comes: both run on to their exit.
TEST(SimFaultsNone, PeripheralsReadZeroForTheFirmwareAndAWaitCarriesOn)
{
    for (uint32_t mode : {5u, 7u}) {
        SimHarness h;
        ASSERT_TRUE(h.Boot("fault")) << h.Error();
        ASSERT_TRUE(h.SetWord(h.Symbol("mailbox"), mode));
        ASSERT_TRUE(h.SetWord(h.Symbol("mailbox") + 4, 0xFFFFFFFF));
        auto stop = h.Run();
        ASSERT_TRUE(stop);
        EXPECT_EQ(stop->reason, StopReason::Exit) << stop->cause;
        EXPECT_EQ(stop->exitCode, 0);
        if (mode == 5) {
            EXPECT_EQ(h.Word(h.Symbol("mailbox") + 4), 0u);
        }
    }
}

} // namespace
