// memory_display: rows of 16 bytes in hexadecimal, whatever the radix.
#include <algorithm>

#include "support/MemCmdFixture.h"

namespace
{

using Display = MemCmd;

TEST_F(Display, AsciiShowsCharactersZeroAsDotAndTheRestAsQuestionMarks)
{
    platform.Poke(0x1000, {'H', 'i', 0, 0x7F, ' ', '~', 0x80, 'z'});
    evaluator.SetRadix(10);
    EXPECT_EQ(Line("md 4096 8 ascii").message, "00001000  Hi.? ~?z");
    EXPECT_EQ(evaluator.Radix(), 10);
}

TEST_F(Display, AMapUpToTheTopHasNoLimitButARangeMayNotWrap)
{
    platform.areas = {FakeArea{0xFFFFFF00, 0xFFFFFFFF, 2}};
    Reattach();
    for (uint32_t a = 0xFFFFFFF0; a != 0; ++a)
        platform.Poke(a, {static_cast<uint8_t>(a)});
    Reply reply = Line("md ffffff00 100");
    EXPECT_EQ(reply.hr, S_OK);
    EXPECT_EQ(std::count(reply.message.begin(), reply.message.end(), '\n'), 15);
    EXPECT_NE(reply.message.find("\r\nFFFFFFF0  F0 F1"), std::string::npos);
    EXPECT_EQ(Line("md ffffff80 100").message, "Parameter '<length>' is invalid");
}

TEST_F(Display, TheEvaluatorIsLookedUpOncePerCommand)
{
    // Gone after its first text: a display that looked it up again would
    // lose every later cell.
    evaluator.onText = [this] { registry.UnregisterService(Ids::IQEvaluator2, evaluator.Service()); };
    EXPECT_EQ(Line("md 1000 20").message, "00001000  00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F \r\n"
                                          "00001010  10 11 12 13 14 15 16 17 18 19 1A 1B 1C 1D 1E 1F ");
}

} // namespace
