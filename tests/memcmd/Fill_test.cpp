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

TEST_F(Fill, EachModeFillsItsOwnKindOfValue)
{
    const struct {
        const char* line;
        std::vector<uint8_t> bytes;
        const char* call;
    } rows[] = {
        {"mf 1000 1003 7F", {0x7F, 0x7F, 0x7F, 0x7F}, "FillMemoryReporting 1000 1003 ffff 1"},
        {"mf 1000 1003 A ascii noverify", {'A', 'A', 'A', 'A'}, "FillMemoryReporting 1000 1003 0 1"},
        {"mf 1000 1003 abcd w", {0xAB, 0xCD, 0xAB, 0xCD}, "FillMemoryReporting 1000 1003 ffff 2"},
        {"mf 1000 1003 1.5 single", {0x3F, 0xC0, 0x00, 0x00}, "FillMemoryReporting 1000 1003 ffff 4"},
        {"mf 1000 1007 2 double",
         {0x40, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00},
         "FillMemoryReporting 1000 1007 ffff 8"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        EXPECT_EQ(Line(row.line).hr, S_OK);
        EXPECT_EQ(manager.calls.back(), row.call);
        EXPECT_EQ(manager.Peek(0x1000, row.bytes.size()), row.bytes);
    }
}

TEST_F(Fill, ARangeSmallerThanOneElementNamesTheModeAsTyped)
{
    const struct {
        const char* line;
        const char* message;
    } rows[] = {
        {"mf 1000 1002 1 long", "Memory range must at least be big enough to contain a long"},
        {"mf 1000 1002 1 l", "Memory range must at least be big enough to contain a l"},
        {"mf 1000 1000 1 WoRd", "Memory range must at least be big enough to contain a WoRd"},
        {"mf 1010 1000 1", "Memory range must at least be big enough to contain a byte"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        Reply reply = Line(row.line);
        EXPECT_EQ(reply.hr, E_FAIL);
        EXPECT_EQ(reply.message, row.message);
    }
    EXPECT_TRUE(manager.calls.empty());
    EXPECT_EQ(changes, 0);
}

TEST_F(Fill, DataThatCannotBeReadWritesNothing)
{
    for (const char* line :
         {"mf 1000 1003 zz", "mf 1000 1003 100", "mf 1000 1003 ab ascii", "mf 1000 1003 x single"}) {
        SCOPED_TRACE(line);
        Reply reply = Line(line);
        EXPECT_EQ(reply.hr, S_OK);
        EXPECT_EQ(reply.message, "Parameter '<data>' is invalid");
    }
    EXPECT_TRUE(manager.calls.empty());
    EXPECT_EQ(changes, 0);
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
