// memory_find: a number laid out most significant byte first, searched for
// in memory order.
#include "support/MemCmdFixture.h"

namespace
{

using Find = MemCmd;

TEST_F(Find, ThePatternIsTheValuePaddedToTheModeMostSignificantFirst)
{
    const struct {
        const char* line;
        const char* call;
    } rows[] = {
        {"mi 1000 1fff 12", "FindMemory 1000 1fff ffffffff ffffffff 12/ff"},
        {"mi 1000 1fff { 12 }", "FindMemory 1000 1fff ffffffff ffffffff 12/ff"},
        {"mi 1000 1fff 1234 word", "FindMemory 1000 1fff ffffffff ffffffff 12/ff,34/ff"},
        {"mi 1000 1fff 1234 long", "FindMemory 1000 1fff ffffffff ffffffff 00/ff,00/ff,12/ff,34/ff"},
        {"mi 1000 1fff 1234 single", "FindMemory 1000 1fff ffffffff ffffffff 00/ff,00/ff,12/ff,34/ff"},
        {"mi 1000 1fff 1234 d",
         "FindMemory 1000 1fff ffffffff ffffffff 00/ff,00/ff,00/ff,00/ff,00/ff,00/ff,12/ff,34/ff"},
        {"mi 1000 1fff 41 ascii", "FindMemory 1000 1fff ffffffff ffffffff 41/ff"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        Line(row.line);
        EXPECT_EQ(manager.calls.back(), row.call);
    }
}

TEST_F(Find, TellsWhereTheValueIsOrWhatTheManagerSays)
{
    manager.Poke(0x1800, {0x12, 0x34});
    Reply reply = Line("mi 1000 1fff 1234 word");
    EXPECT_EQ(reply.hr, S_OK);
    EXPECT_EQ(reply.message, "String found at memory address H'00001800");

    reply = Line("mi 1000 17ff 1234 word");
    EXPECT_EQ(reply.hr, S_OK);
    EXPECT_EQ(reply.message, "Pattern not found");
}

TEST_F(Find, AValueWiderThanTheModeIsInvalidAndNotSearched)
{
    for (const char* line : {"mi 1000 1fff 123", "mi 1000 1fff 10000 word"}) {
        SCOPED_TRACE(line);
        Reply reply = Line(line);
        EXPECT_EQ(reply.hr, S_OK);
        EXPECT_EQ(reply.message, "Parameter '<string>' is invalid");
    }
    EXPECT_TRUE(manager.calls.empty());
}

TEST_F(Find, TheValueIsReadInTheSessionRadix)
{
    evaluator.radix = 10;
    Line("mi 4096 8191 18");
    EXPECT_EQ(manager.calls.back(), "FindMemory 1000 1fff ffffffff ffffffff 12/ff");
}

} // namespace
