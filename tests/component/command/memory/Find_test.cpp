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

TEST_F(Find, TheValueIsReadInTheSessionRadix)
{
    evaluator.radix = 10;
    Line("mi 4096 8191 18");
    EXPECT_EQ(manager.calls.back(), "FindMemory 1000 1fff ffffffff ffffffff 12/ff");
}

} // namespace
