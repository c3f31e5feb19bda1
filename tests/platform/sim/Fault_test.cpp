#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "platform/sim/SimText.h"
#include "support/SimHarness.h"

namespace
{

struct FaultCase {
    const char* program;
    uint32_t mode;     // written to mailbox[0] before running
    const char* label; // where the PC must stop; empty: at 0x30000000
    StopReason reason;
    const char* cause; // any "%s" stands for the stop address
    unsigned reg;      // a register the code before the fault set
    uint32_t value;
};

const FaultCase kFaults[] = {
    {"fault", 0, "fault_read", StopReason::Fault, "Invalid memory read at 0x30000000", kRegR0 + 2, 7},
    {"fault", 1, "fault_write", StopReason::Fault, "Invalid memory write at 0x30000004", kRegR0 + 2, 8},
    {"fault", 2, "fault_flash", StopReason::Fault, "Write to read-only memory at 0x08000100", kRegR0 + 2, 9},
    {"fault", 3, "", StopReason::Fault, "Invalid memory fetch at 0x30000000", kRegPc, 0x30000000},
    {"fault", 4, "fault_bkpt", StopReason::BreakpointInstruction, "Breakpoint instruction 0x01 at %s",
     kRegR0 + 2, 10},
    {"undef", 0, "undef_insn", StopReason::Fault, "Undefined instruction at %s", kRegR0, 3 + 0x1000},
};

// Checks a stop at the case's fault, and that the target sits there unchanged.
void ExpectFault(SimHarness& h, const FaultCase& c, const std::optional<StopInfo>& stop)
{
    ASSERT_TRUE(stop);
    const uint32_t at = *c.label ? h.Symbol(c.label) : 0x30000000;
    std::string cause = c.cause;
    if (size_t mark = cause.find("%s"); mark != std::string::npos)
        cause.replace(mark, 2, SimText::Hex(at));
    EXPECT_EQ(std::tuple(stop->reason, stop->pc, stop->cause, h.Reg(kRegPc), h.Reg(c.reg)),
              std::tuple(c.reason, at, cause, at, c.value));
    EXPECT_FALSE(h.Target().IsRunning());
}

TEST(SimFaults, StopExactlyAtTheFaultingInstructionWithTheirCauseRunningOrStepping)
{
    for (const FaultCase& c : kFaults) {
        SCOPED_TRACE(c.cause);
        SimHarness h;
        ASSERT_TRUE(h.Boot(c.program)) << h.Error();
        const uint32_t flash = h.Word(0x08000100);
        ASSERT_TRUE(h.SetWord(h.Symbol("mailbox"), c.mode));
        ExpectFault(h, c, h.Run());
        EXPECT_EQ(h.Word(0x08000100), flash) << "firmware cannot change flash";
        // Going on from the fault meets it again rather than running wild; so does a
        // step, which counts no instruction, from the fault or (after a reset, which
        // makes the target run again) from a stop at the instruction.
        ExpectFault(h, c, h.Run());
        for (int pass = 0; pass < (*c.label ? 2 : 1); ++pass) {
            if (pass == 1) {
                ASSERT_TRUE(h.Target().Reset() && h.Next() && h.SetWord(h.Symbol("mailbox"), c.mode));
                ASSERT_TRUE(h.RunTo(c.label));
            }
            const uint64_t before = h.Target().InstructionCount();
            ExpectFault(h, c, h.StepOnce());
            EXPECT_EQ(h.Target().InstructionCount(), before);
        }
    }
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
        EXPECT_EQ(std::pair(stop->reason, stop->exitCode), std::pair(StopReason::Exit, 0)) << stop->cause;
        EXPECT_TRUE(mode != 5 || h.Word(h.Symbol("mailbox") + 4) == 0) << "a peripheral reads back zero";
    }
}

} // namespace
