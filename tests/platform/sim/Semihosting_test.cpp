#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <tuple>
#include <vector>

#include "platform/sim/Semihosting.h"
#include "platform/sim/ThumbCode.h"

namespace
{

// Guest memory from address 0 to the last byte put; reading beyond it fails.
struct FakeMemory {
    std::vector<uint8_t> bytes;
    void Put(uint32_t address, const void* data, size_t size)
    {
        bytes.resize(std::max(bytes.size(), address + size));
        std::memcpy(bytes.data() + address, data, size);
    }
    Semihosting::Reader Reader()
    {
        return [this](uint32_t address, size_t size, void* out) {
            if (address + size > bytes.size())
                return SimResult::Fail(std::max(address, static_cast<uint32_t>(bytes.size())), "unmapped");
            std::memcpy(out, bytes.data() + address, size);
            return SimResult::Ok();
        };
    }
};

TEST(SemihostingExit, MapsTheReasonToAnExitCode)
{
    struct ExitCase {
        uint32_t operation;
        uint32_t reason;
        uint32_t subcode;
        int code;
    };
    for (const ExitCase& c :
         {ExitCase{Semihosting::kExit, 0x20026, 0, 0}, ExitCase{Semihosting::kExit, 0x20023, 0, 1},
          ExitCase{Semihosting::kExit, 7, 0, 7}, ExitCase{Semihosting::kExitExtended, 0x20026, 42, 42},
          ExitCase{Semihosting::kExitExtended, 0x20024, 42, 1}}) {
        SCOPED_TRACE(testing::Message() << std::hex << c.operation << " " << c.reason);
        FakeMemory memory;
        const uint32_t block[2] = {c.reason, c.subcode};
        memory.Put(0x100, block, sizeof block);
        const uint32_t argument = c.operation == Semihosting::kExit ? c.reason : 0x100;
        const auto result = Semihosting::Handle(c.operation, argument, memory.Reader());
        EXPECT_EQ(std::pair(result.action, result.exitCode), std::pair(Semihosting::Action::Exit, c.code));
    }
}

TEST(SemihostingWrite, OnlyStandardHandlesReachTheOutput)
{
    FakeMemory memory;
    memory.Put(0x200, "abc", 3);
    for (uint32_t handle : {1u, 2u, 3u}) {
        const uint32_t block[3] = {handle, 0x200, 3};
        memory.Put(0x100, block, sizeof block);
        const auto result = Semihosting::Handle(Semihosting::kWrite, 0x100, memory.Reader());
        // r0 is the count of bytes not written.
        EXPECT_EQ(
            std::tuple(result.action, result.setR0, result.output, result.r0),
            std::tuple(Semihosting::Action::Continue, true, handle == 3 ? "" : "abc", handle == 3 ? 3u : 0u));
    }
}

TEST(SemihostingWrite, BadPointersFaultAtTheFirstUnreadableByte)
{
    FakeMemory memory;
    memory.Put(0x200, "ab", 2); // no terminator
    const auto string = Semihosting::Handle(Semihosting::kWrite0, 0x200, memory.Reader());
    EXPECT_EQ(std::pair(string.action, string.faultAddress), std::pair(Semihosting::Action::Fault, 0x202u));
    const auto character = Semihosting::Handle(Semihosting::kWriteC, 0x900, memory.Reader());
    EXPECT_EQ(std::pair(character.action, character.faultAddress),
              std::pair(Semihosting::Action::Fault, 0x900u));
}

TEST(SemihostingUnknown, AnswersMinusOneAndContinues)
{
    FakeMemory memory;
    const auto result = Semihosting::Handle(0x31, 0, memory.Reader());
    EXPECT_EQ(std::tuple(result.action, result.setR0, result.r0),
              std::tuple(Semihosting::Action::Continue, true, 0xFFFFFFFFu));
}

TEST(ThumbCodeCount, WalksSixteenAndThirtyTwoBitInstructions)
{
    // movs r0,#1 ; mov.w r1,#0x1000 ; adds r0,#2 ; bne.w
    const uint8_t code[] = {0x01, 0x20, 0x4F, 0xF4, 0x80, 0x51, 0x02, 0x30, 0x7F, 0xF4, 0xFA, 0xAF};
    EXPECT_EQ(ThumbCode::Count(code, sizeof code), 4u);
    EXPECT_EQ(ThumbCode::Count(code, sizeof code, 2), 3u);
    EXPECT_EQ(ThumbCode::Count(code, sizeof code, 6), 2u);
    EXPECT_EQ(ThumbCode::Count(code, sizeof code, 12), 0u);
    EXPECT_EQ(std::pair(ThumbCode::Length(0xF04F), ThumbCode::Length(0xE7FE)), std::pair(4u, 2u));
}

} // namespace
