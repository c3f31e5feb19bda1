// memory_edit: one unit a line, the prompt showing where and what.
#include "support/MemCmdFixture.h"

namespace
{

class Edit : public MemCmd
{
protected:
    std::unique_ptr<CCmd> edit = Make("me");
    Reply Say(const std::string& line) { return Exec(*edit, line); }
};

TEST_F(Edit, WritesUnitsOfTheModeWithTheVerifyFlag)
{
    EXPECT_EQ(Say("me 1004 long noverify").prompt, "00001004 04050607");
    Say("12345678");
    EXPECT_EQ(manager.calls[manager.calls.size() - 2], "WriteMemoryValuesVerified 1004 1007 0 4");
    EXPECT_EQ(manager.Peek(0x1004, 4), (std::vector<uint8_t>{0x12, 0x34, 0x56, 0x78}));
    Say(".");
    Say("me 1000 single");
    EXPECT_EQ(Say("2.5").prompt, "00001004 00000000");
    EXPECT_EQ(manager.Peek(0x1000, 4), (std::vector<uint8_t>{0x40, 0x20, 0x00, 0x00}));
}

TEST_F(Edit, StepsBackBelowTheStartWrappingAtZero)
{
    manager.areaStart = 0;
    Say("me 0");
    Reply reply = Say("^");
    EXPECT_TRUE(reply.continuing);
    EXPECT_EQ(reply.prompt, "FFFFFFFF");
    EXPECT_EQ(Say("^").prompt, "FFFFFFFE");
}

// Input that cannot be read stays on the unit too: memory_edit's "AB" line.
TEST_F(Edit, InputThatCannotBeWrittenStaysOnTheUnit)
{
    Say("me 1000 ascii");
    manager.fail["WriteMemoryValuesVerified"] = FakeMemoryManager::NotMapped;
    Reply reply = Say("a");
    EXPECT_EQ(reply.hr, S_OK);
    EXPECT_EQ(reply.message, "Address outside the memory map");
    EXPECT_TRUE(reply.continuing);
    EXPECT_EQ(reply.prompt, "00001000 .");
    EXPECT_EQ(changes, 0);

    manager.fail.clear();
    EXPECT_EQ(Say("a").prompt, "00001001 ?");
    EXPECT_EQ(manager.Byte(0x1000), 'a');
    EXPECT_EQ(changes, 1);
    // A quoted token gives no value, so it steps on like an empty line.
    EXPECT_EQ(Say("\"b\"").prompt, "00001002 ?");
    EXPECT_EQ(changes, 1);
}

} // namespace
