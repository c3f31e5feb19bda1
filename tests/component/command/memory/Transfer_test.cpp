// memory_compare, memory_move and memory_test: one manager call each, and
// what the user reads of its outcome.
#include "support/MemCmdFixture.h"

namespace
{

using Transfer = MemCmd;

TEST_F(Transfer, CompareTellsSuccessOrWhereTheRangesDiffer)
{
    Reply reply = Line("mc 1000 100f 1100");
    EXPECT_EQ(reply.hr, S_OK);
    EXPECT_EQ(reply.message, "Compare successful");
    EXPECT_EQ(manager.calls.back(), "CompareMemory 1000 100f 1100 1");

    manager.Poke(0x1105, {0xEE});
    reply = Line("mc 1000 100f 1100 word");
    EXPECT_EQ(reply.hr, S_OK);
    EXPECT_EQ(reply.message, "Memory differs. Address: 00001005");
    EXPECT_EQ(manager.calls.back(), "CompareMemory 1000 100f 1100 2");

    // Without an explanation of the code there is no address either.
    manager.reports = false;
    EXPECT_EQ(Line("mc 1000 100f 1100").message, "Unknown error code -2147213280");
    EXPECT_EQ(changes, 0);
}

TEST_F(Transfer, MoveTakesVerifyBeforeModeAndAlwaysTellsOfTheChange)
{
    Reply reply = Line("mv 1000 1003 1800 noverify long");
    EXPECT_EQ(reply.hr, S_OK);
    EXPECT_EQ(reply.message, "");
    EXPECT_EQ(manager.calls.back(), "CopyMemory 1000 1003 1800 0 4");
    EXPECT_EQ(manager.Peek(0x1800, 4), (std::vector<uint8_t>{0x00, 0x01, 0x02, 0x03}));
    Line("mv 1000 1003 1800 word");
    EXPECT_EQ(manager.calls.back(), "CopyMemory 1000 1003 1800 ffff 2");
    EXPECT_EQ(changes, 2);

    manager.fail["CopyMemory"] = FakeMemoryManager::NotMapped;
    reply = Line("mv 1000 1003 1800");
    EXPECT_EQ(reply.hr, S_OK);
    EXPECT_EQ(reply.message, "Address outside the memory map");
    EXPECT_EQ(changes, 3);
}

TEST_F(Transfer, TestFailsAsAnErrorAndAlwaysTellsOfTheChange)
{
    Reply reply = Line("mt 1000 1fff");
    EXPECT_EQ(reply.hr, S_OK);
    EXPECT_EQ(reply.message, "Test successful");
    EXPECT_EQ(manager.calls.back(), "TestMemory 1000 1fff");
    EXPECT_EQ(changes, 1);

    manager.fail["TestMemory"] = FakeMemoryManager::NotMapped;
    reply = Line("mt 1000 1fff");
    EXPECT_EQ(reply.hr, E_FAIL);
    EXPECT_EQ(reply.message, "Address outside the memory map");
    EXPECT_EQ(changes, 2);
}

} // namespace
