// memory_compare, memory_move, memory_test and memory_find: one manager call
// each, made as the line says, and what the user reads of its outcome.
#include "support/MemCmdFixture.h"

namespace
{

using Transfer = MemCmd;

TEST_F(Transfer, OneCallALineAndItsOutcome)
{
    const char* const outside = "platform says 0x80043092";
    const char* const find = "Find2 0x1000..0x1FFF";
    const struct {
        const char* line;
        Bytes at1100;        // poked at 0x1105, or at 0x1800 for a find
        const char* failing; // an operation that answers "outside the map"
        HRESULT hr;
        const char* message;
        const char* call;     // the platform's last log line
        const char* recorded; // nullptr: not looked at
        int changes;
    } rows[] = {
        {"mc 1000 100f 1100",
         {},
         nullptr,
         S_OK,
         "Compare successful",
         "Compare2 0x1000..0x100F /1",
         nullptr,
         0},
        {"mc 1000 100f 1100 word",
         {0xEE},
         nullptr,
         S_OK,
         "platform says 0x80042021. Address: 00001005",
         "Compare2 0x1000..0x100F /2",
         nullptr,
         0},
        // Verify comes before the mode, and a move always tells of the change.
        {"mv 1000 1003 1800 noverify long",
         {},
         nullptr,
         S_OK,
         "",
         "Copy2 0x1000..0x1003",
         "memory_move 0x1000 0x1003 0x1800 noverify long",
         1},
        {"mv 1000 1003 1800 word",
         {},
         nullptr,
         S_OK,
         "",
         "Copy2 0x1000..0x1003",
         "memory_move 0x1000 0x1003 0x1800 verify word",
         1},
        {"mv 1000 1003 1800", {}, "Copy2", S_OK, outside, "Copy2 0x1000..0x1003", nullptr, 1},
        // A test fails as an error and always tells of the change.
        {"mt 1000 1fff", {}, nullptr, S_OK, "Test successful", "Test2 0x1000..0x1FFF", nullptr, 1},
        {"mt 1000 1fff", {}, "Test2", E_FAIL, outside, "Test2 0x1000..0x1FFF", nullptr, 1},
        // The pattern is the value padded to the mode, most significant first.
        {"mi 1000 1fff 12", {}, nullptr, S_OK, "String found at memory address H'00001012", find, nullptr, 0},
        {"mi 1000 1fff { 12 }",
         {},
         nullptr,
         S_OK,
         "String found at memory address H'00001012",
         find,
         nullptr,
         0},
        {"mi 1000 1fff 41 ascii",
         {},
         nullptr,
         S_OK,
         "String found at memory address H'00001041",
         find,
         nullptr,
         0},
        {"mi 1000 1fff 1234 word",
         {0x12, 0x34},
         nullptr,
         S_OK,
         "String found at memory address H'00001800",
         find,
         nullptr,
         0},
        {"mi 1000 1fff 1234 long",
         {0, 0, 0x12, 0x34},
         nullptr,
         S_OK,
         "String found at memory address H'00001800",
         find,
         nullptr,
         0},
        {"mi 1000 1fff 1234 single",
         {0, 0, 0x12, 0x34},
         nullptr,
         S_OK,
         "String found at memory address H'00001800",
         find,
         nullptr,
         0},
        {"mi 1000 1fff 1234 d",
         {0, 0, 0, 0, 0, 0, 0x12, 0x34},
         nullptr,
         S_OK,
         "String found at memory address H'00001800",
         find,
         nullptr,
         0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        const bool find = row.line[1] == 'i';
        const Bytes saved = platform.Bytes(0x1100, 0x800);
        platform.Poke(find ? 0x1800 : 0x1105, row.at1100);
        platform.answers.clear();
        if (row.failing != nullptr)
            platform.answers[row.failing] = FakePlatformMemory::kOutsideMap;
        const int before = changes;
        const Reply reply = Line(row.line);
        EXPECT_EQ(reply.hr, row.hr);
        EXPECT_EQ(reply.message, row.message);
        EXPECT_EQ(platform.log.back(), row.call);
        if (row.recorded != nullptr) {
            EXPECT_EQ(Recorded(), row.recorded);
        }
        EXPECT_EQ(changes - before, row.changes);
        platform.Poke(0x1100, saved);
    }
}

TEST_F(Transfer, FindReadsTheValueInTheSessionRadix)
{
    evaluator.radix = 10;
    EXPECT_EQ(Line("mi 4096 8191 18").message, "String found at memory address H'00001012");
}

} // namespace
