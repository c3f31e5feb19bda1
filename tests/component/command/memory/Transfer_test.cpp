// memory_compare, memory_move, memory_test and memory_find: one manager call
// each, made as the line says, and what the user reads of its outcome.
#include "support/MemCmdFixture.h"

namespace
{

using Transfer = MemCmd;

TEST_F(Transfer, OneCallALineAndItsOutcome)
{
    const char* const outside = "platform says 0x80043092";
    const char* const differs = "platform says 0x80042021. Address: 00001005";
    const struct {
        const char* line;
        bool differs;        // a byte at 0x1105 differs from its copy
        const char* failing; // an operation that answers "outside the map"
        HRESULT hr;
        const char* message;
        const char* call; // the platform's last log line; for a move, the command recorded
        int changes;
    } rows[] = {
        {"mc 1000 100f 1100", false, nullptr, S_OK, "Compare successful", "Compare2 0x1000..0x100F /1", 0},
        {"mc 1000 100f 1100 word", true, nullptr, S_OK, differs, "Compare2 0x1000..0x100F /2", 0},
        // Verify comes before the mode, and a move always tells of the change.
        {"mv 1000 1003 1800 noverify long", false, nullptr, S_OK, "",
         "memory_move 0x1000 0x1003 0x1800 noverify long", 1},
        {"mv 1000 1003 1800 word", false, nullptr, S_OK, "", "memory_move 0x1000 0x1003 0x1800 verify word",
         1},
        {"mv 1000 1003 1800", false, "Copy2", S_OK, outside, "memory_move 0x1000 0x1003 0x1800 verify byte",
         1},
        // A test fails as an error and always tells of the change.
        {"mt 1000 1fff", false, nullptr, S_OK, "Test successful", "Test2 0x1000..0x1FFF", 1},
        {"mt 1000 1fff", false, "Test2", E_FAIL, outside, "Test2 0x1000..0x1FFF", 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        platform.Poke(0x1105, {static_cast<uint8_t>(row.differs ? 0xEE : 0x05)});
        platform.Poke(0x1800, {0x00, 0x01, 0x02, 0x03});
        platform.answers.clear();
        if (row.failing != nullptr)
            platform.answers[row.failing] = FakePlatformMemory::kOutsideMap;
        const int before = changes;
        const Reply reply = Line(row.line);
        EXPECT_EQ(reply.hr, row.hr);
        EXPECT_EQ(reply.message, row.message);
        EXPECT_EQ(row.line[1] == 'v' ? Recorded() : platform.log.back(), row.call);
        EXPECT_EQ(changes - before, row.changes);
    }
}

// Only the value padded to the mode, most significant byte first, is found
// where it was put.
TEST_F(Transfer, FindLooksForTheValueAsWideAsTheMode)
{
    const struct {
        const char* line;
        Bytes at1800;
        const char* found;
    } rows[] = {
        {"mi 1000 1fff 12", {}, "H'00001012"},
        {"mi 1000 1fff { 12 }", {}, "H'00001012"},
        {"mi 1000 1fff 41 ascii", {}, "H'00001041"},
        {"mi 1000 1fff 1234 word", {0x12, 0x34}, "H'00001800"},
        {"mi 1000 1fff 1234 long", {0, 0, 0x12, 0x34}, "H'00001800"},
        {"mi 1000 1fff 1234 single", {0, 0, 0x12, 0x34}, "H'00001800"},
        {"mi 1000 1fff 1234 d", {0, 0, 0, 0, 0, 0, 0x12, 0x34}, "H'00001800"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        platform.Poke(0x1800, {0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07});
        platform.Poke(0x1800, row.at1800);
        EXPECT_EQ(Line(row.line).message, std::string("String found at memory address ") + row.found);
        EXPECT_EQ(platform.log.back(), "Find2 0x1000..0x1FFF");
    }
    EXPECT_EQ(changes, 0);
}

TEST_F(Transfer, FindReadsTheValueInTheSessionRadix)
{
    evaluator.SetRadix(10);
    EXPECT_EQ(Line("mi 4096 8191 18").message, "String found at memory address H'00001012");
}

} // namespace
