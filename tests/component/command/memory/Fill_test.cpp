// memory_fill: one value over a range, whole elements only.
#include "support/MemCmdFixture.h"

namespace
{

using Fill = MemCmd;

TEST_F(Fill, FillsWholeElementsAndDropsTheTail)
{
    Reply reply = Line("mf 1000 1009 12345678 long");
    EXPECT_EQ(reply.hr, S_OK);
    EXPECT_EQ(reply.message, "");
    EXPECT_EQ(platform.log.back(), "FillVerified3 0x1000..0x1007");
    EXPECT_EQ(platform.verified, VARIANT_TRUE);
    EXPECT_EQ(platform.Bytes(0x1000, 10),
              (Bytes{0x12, 0x34, 0x56, 0x78, 0x12, 0x34, 0x56, 0x78, 0x08, 0x09}));
    EXPECT_EQ(changes, 1);
}

// The manager runs no progress display, so it never tells where a verify
// failed: the user reads the failure alone, and memory has changed anyway.
TEST_F(Fill, AFailedVerifyIsTheFailureText)
{
    platform.verifyFailsAt = TargetAddress(0x1004);
    Reply reply = Line("mf 1000 100f 12");
    EXPECT_EQ(reply.hr, S_OK);
    EXPECT_EQ(reply.message, "platform says 0x80042022");
    EXPECT_EQ(changes, 1);
}

} // namespace
