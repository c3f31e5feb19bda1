#include <gtest/gtest.h>

#include <string>

#include "platform/eval/ExpressionEvaluator.h"
#include "support/Labels.h"

namespace
{

struct ValueCase {
    int32_t radix;
    std::string text;
    uint64_t expected;
};

const ValueCase kValues[] = {
    // Numbers: the default radix is hex; a prefix beats the radix in either case.
    ValueCase{0, "1F", 0x1F}, ValueCase{10, "31", 31}, ValueCase{8, "37", 31}, ValueCase{2, "11111", 31},
    ValueCase{10, "H'1F", 31}, ValueCase{10, "h'1f", 31}, ValueCase{16, "D'31", 31},
    ValueCase{16, "d'31", 31}, ValueCase{16, "O'37", 31}, ValueCase{2, "o'37", 31},
    ValueCase{16, "B'11111", 31}, ValueCase{8, "b'11111", 31}, ValueCase{10, "0x1F", 31},
    ValueCase{2, "0X1f", 31}, ValueCase{16, "0d31", 0xD31}, ValueCase{16, "FFFFFFFFFFFFFFFF", UINT64_MAX},
    ValueCase{10, "18446744073709551615", UINT64_MAX}, ValueCase{10, "0000000000000000000000042", 42},
    // Words: a hex word is a number in radix 16 even when it is a label, a label otherwise.
    ValueCase{16, "DEAD", 0xDEAD}, ValueCase{16, "dead", 0xDEAD}, ValueCase{16, "BEEF", 0xBEEF},
    ValueCase{10, "BEEF", 1}, ValueCase{16, "main", 0x1000}, ValueCase{16, "_stack_top", 0x20008000},
    ValueCase{16, "loop.1", 7}, ValueCase{16, "main+10", 0x1010}, ValueCase{16, "B", 0xB},
    // Operators: precedence, left to right, and 64-bit wrapping.
    ValueCase{10, "2+3*4", 14}, ValueCase{10, "(2+3)*4", 20}, ValueCase{10, "10-3-2", 5},
    ValueCase{10, "100/10/5", 2}, ValueCase{10, "17%5", 2}, ValueCase{10, "1<<2+1", 8},
    ValueCase{16, "F0>>4", 0xF}, ValueCase{16, "FF&1<<4", 0x10}, ValueCase{16, "F^F&3", 0xC},
    ValueCase{16, "1|3^2", 1}, ValueCase{10, "1<<64", 0}, ValueCase{16, "FF>>FFFFFFFFFFFFFFFF", 0},
    ValueCase{10, "1<<63", 0x8000000000000000}, ValueCase{10, "((((1+2))*(3)))", 9},
    ValueCase{10, " \t( 1 +\t2 ) *\n3 ", 9}, ValueCase{16, "FFFFFFFFFFFFFFFF+2", 1},
    ValueCase{16, "8000000000000000*2", 0},
    // Unary operators bind tighter than any binary one.
    ValueCase{10, "-1", UINT64_MAX}, ValueCase{10, "-2*3", 0 - uint64_t{6}}, ValueCase{10, "--5", 5},
    ValueCase{10, "3--2", 5}, ValueCase{10, "+7", 7}, ValueCase{16, "~0", UINT64_MAX},
    ValueCase{16, "~F&FF", 0xF0}, ValueCase{10, "-(2+3)+10", 5}, ValueCase{10, "-~-~0", 2}};

TEST(Evaluate, Values)
{
    for (const ValueCase& c : kValues) {
        SCOPED_TRACE(testing::Message() << c.text << " radix " << c.radix);
        ExpressionEvaluator eval;
        eval.SetLabelLookup(TestLabels);
        uint64_t value = 0xBAD;
        ASSERT_EQ(eval.Evaluate(c.text, c.radix, value), S_OK) << eval.LastErrorText();
        EXPECT_EQ(value, c.expected);
        EXPECT_EQ(eval.LastErrorText(), "");
    }
}

} // namespace
