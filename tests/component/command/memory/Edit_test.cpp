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
    EXPECT_EQ(platform.log[platform.log.size() - 2], "WriteVerified3 0x1004..0x1007");
    EXPECT_EQ(platform.verified, VARIANT_FALSE);
    EXPECT_EQ(platform.Bytes(0x1004, 4), (Bytes{0x12, 0x34, 0x56, 0x78}));
    Say(".");
    Say("me 1000 single");
    EXPECT_EQ(Say("2.5").prompt, "00001004 00000000");
    EXPECT_EQ(platform.Bytes(0x1000, 4), (Bytes{0x40, 0x20, 0x00, 0x00}));
}

TEST_F(Edit, StepsBackBelowTheStartWrappingAtZero)
{
    platform.areas = {FakeArea{0, 0x1FFF, 2}, FakeArea{0xFFFFF000, 0xFFFFFFFF, 2}};
    Reattach();
    Say("me 0");
    // A unit that cannot be read shows no value.
    platform.answers["Read2"] = E_FAIL;
    Reply reply = Say("^");
    EXPECT_TRUE(reply.continuing);
    EXPECT_EQ(reply.prompt, "FFFFFFFF");
    EXPECT_EQ(Say("^").prompt, "FFFFFFFE");
}

// Input that cannot be read stays on the unit too: memory_edit's "AB" line.
TEST_F(Edit, InputThatCannotBeWrittenStaysOnTheUnit)
{
    Say("me 1000 ascii");
    platform.answers["WriteVerified3"] = FakePlatformMemory::kOutsideMap;
    Reply reply = Say("a");
    EXPECT_EQ(reply.hr, S_OK);
    EXPECT_EQ(reply.message, "platform says 0x80043092");
    EXPECT_TRUE(reply.continuing);
    EXPECT_EQ(reply.prompt, "00001000 .");
    EXPECT_EQ(changes, 0);

    platform.answers.clear();
    EXPECT_EQ(Say("a").prompt, "00001001 ?");
    EXPECT_EQ(platform.ByteAt(0x1000), 'a');
    EXPECT_EQ(changes, 1);
    // A quoted token gives no value, so it steps on like an empty line.
    EXPECT_EQ(Say("\"b\"").prompt, "00001002 ?");
    EXPECT_EQ(changes, 1);
}

} // namespace
