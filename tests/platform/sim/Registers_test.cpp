#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "support/SimHarness.h"

namespace
{

TEST(SimRegisters, ReadBackWhatWasWritten)
{
    struct RegisterCase {
        unsigned index;
        uint32_t written;
        uint32_t read;
    };
    auto target = SimTarget::Create({});
    ASSERT_TRUE(target);
    for (const RegisterCase& c :
         {RegisterCase{kRegR0, 0x11111111, 0x11111111}, RegisterCase{kRegR0 + 7, 0x77, 0x77},
          RegisterCase{kRegR12, 0xCCCCCCCC, 0xCCCCCCCC}, RegisterCase{kRegSp, 0x20001000, 0x20001000},
          RegisterCase{kRegLr, 0x08000123, 0x08000123}, RegisterCase{kRegMsp, 0x20002000, 0x20002000},
          RegisterCase{kRegPsp, 0x20003000, 0x20003000}, RegisterCase{kRegPrimask, 1, 1},
          RegisterCase{kRegBasepri, 0x80, 0x80}, RegisterCase{kRegFaultmask, 1, 1},
          // The PC and xPSR keep the Thumb state whatever is written.
          RegisterCase{kRegPc, 0x08000010, 0x08000010}, RegisterCase{kRegPc, 0x08000011, 0x08000010},
          RegisterCase{kRegXpsr, 0xF0000000, 0xF1000000}}) {
        SCOPED_TRACE(testing::Message() << SimTarget::RegisterName(c.index) << "=" << std::hex << c.written);
        ASSERT_TRUE(target->WriteRegister(c.index, c.written));
        SimResult read = target->ReadRegister(c.index);
        ASSERT_TRUE(read);
        EXPECT_EQ(read.value, c.read);
    }
    EXPECT_EQ(target->ReadRegister(kRegisterCount).cause, "No register 23");
    EXPECT_EQ(target->WriteRegister(99, 0).cause, "No register 99");
}

TEST(SimReset, LoadsTheVectorTableAndClearsTheRest)
{
    SimHarness h;
    ASSERT_TRUE(h.Boot("hello")) << h.Error();
    for (unsigned i = kRegR0; i <= kRegR12; ++i)
        ASSERT_TRUE(h.Target().WriteRegister(i, 0xA5A5A5A5));
    ASSERT_TRUE(h.Target().WriteRegister(kRegPrimask, 1));
    ASSERT_TRUE(h.Target().Reset());
    auto report = h.Next();
    ASSERT_TRUE(report);
    EXPECT_EQ(report->reason, StopReason::Reset);
    const uint32_t entry = h.Symbol("reset_handler"), stack = h.Symbol("_estack");
    EXPECT_EQ(report->pc, entry);
    std::vector<uint32_t> registers;
    for (unsigned i : {kRegPc, kRegSp, kRegMsp, kRegLr, kRegXpsr, kRegPrimask, kRegControl})
        registers.push_back(h.Reg(i));
    for (unsigned i = kRegR0; i <= kRegR12; ++i)
        registers.push_back(h.Reg(i));
    std::vector<uint32_t> expected{entry, stack, stack, 0xFFFFFFFF, 0x01000000, 0, 0};
    expected.resize(registers.size());
    EXPECT_EQ(registers, expected) << "pc, sp, msp, lr, xpsr, primask, control, then r0 to r12";
}

TEST(SimReset, VectorsOutsideTheMapFailWithACauseAndChangeNothing)
{
    struct VectorCase {
        uint32_t sp;
        uint32_t entry;
        const char* cause; // empty: reset succeeds
    };
    const VectorCase cases[] = {
        {0xFFFFFFFF, 0xFFFFFFFF, "Reset vector 0xFFFFFFFF points outside executable memory"},
        {0x20020000, 0x00000001, "Reset vector 0x00000001 points outside executable memory"},
        {0x20020000, 0x40000001, "Reset vector 0x40000001 points outside executable memory"},
        {0x20020000, 0x08000008, "Reset vector 0x08000008 lacks the Thumb bit"},
        {0x30000000, 0x08000009, "Initial stack pointer 0x30000000 points outside writable memory"},
        {0x08000400, 0x08000009, "Initial stack pointer 0x08000400 points outside writable memory"},
        {0x40001000, 0x08000009, "Initial stack pointer 0x40001000 points outside writable memory"},
        {0x00000000, 0x08000009, "Initial stack pointer 0x00000000 points outside writable memory"},
        {0x20001000, 0x20000001, ""}};
    for (const VectorCase& c : cases) {
        SCOPED_TRACE(testing::Message() << std::hex << c.sp << " " << c.entry);
        SimHarness h;
        ASSERT_TRUE(h.Boot("hello")) << h.Error();
        const uint32_t vectors[2] = {c.sp, c.entry};
        ASSERT_TRUE(h.Target().WriteMemory(FirmwareProgram::kFlashBase, sizeof vectors, vectors));
        ASSERT_TRUE(h.Target().WriteRegister(kRegR0, 0x55));
        SimResult reset = h.Target().Reset();
        if (!*c.cause) {
            EXPECT_TRUE(reset) << reset.cause;
            EXPECT_EQ(std::pair(h.Reg(kRegPc), h.Reg(kRegR0)), std::pair(c.entry & ~1u, 0u));
            continue;
        }
        EXPECT_EQ(std::tuple(bool(reset), reset.cause, h.Reg(kRegR0), h.Reg(kRegPc)),
                  std::tuple(false, c.cause, 0x55u, h.Symbol("reset_handler")));
        EXPECT_FALSE(h.Next(std::chrono::milliseconds(50)));
    }
}

TEST(SimTargetCreate, UnknownVariantIsExplainedAndAMapWithoutFlashCannotReset)
{
    SimTarget::Config config;
    config.variant = "cortex-m99";
    std::string error;
    EXPECT_FALSE(SimTarget::Create(std::move(config), &error));
    EXPECT_EQ(error, "Unknown CPU variant 'cortex-m99' (known: cortex-m3, cortex-m4)");

    SimTarget::Config ramOnly;
    ramOnly.map = SimMemoryMap::Parse("ram 0x20000000 0x1000 rwx\n").map;
    auto target = SimTarget::Create(std::move(ramOnly));
    ASSERT_TRUE(target);
    EXPECT_EQ(target->Reset().cause, "No flash region holds a vector table");
}

} // namespace
