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
    EXPECT_EQ(manager.calls.back(), "FillMemoryReporting 1000 1007 ffff 4");
    EXPECT_EQ(manager.Peek(0x1000, 10),
              (std::vector<uint8_t>{0x12, 0x34, 0x56, 0x78, 0x12, 0x34, 0x56, 0x78, 0x08, 0x09}));
    EXPECT_EQ(changes, 1);
}

TEST_F(Fill, AFailedVerifyTellsWhereAndWhat)
{
    const HRESULT verifyFailed = static_cast<HRESULT>(0x80042040);
    manager.texts[verifyFailed] = "Verify failed";
    manager.fail["FillMemoryReporting"] = verifyFailed;
    manager.fillMismatch = true;
    manager.fillMismatchAddress = 0x1004;
    manager.fillWritten = 0x12;
    manager.fillFound = 0x13;
    Reply reply = Line("mf 1000 100f 12");
    EXPECT_EQ(reply.hr, S_OK);
    EXPECT_EQ(reply.message,
              "Verify failed\r\n\r\nAddress: 0x00001004\r\nValue in memory: 19\r\nValue in file: 18");
    EXPECT_EQ(changes, 1);

    manager.fillMismatch = false;
    manager.reports = false;
    EXPECT_EQ(Line("mf 1000 100f 12").message, "Unknown error code -2147213248");
    EXPECT_EQ(changes, 2);
}

} // namespace
