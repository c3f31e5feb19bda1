#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "component/symbols/NumberFormat.h"

namespace
{

using Bytes = std::vector<uint8_t>;

TEST(NumberFormat, WidthsFitTheLargestValueOfEachSize)
{
    struct Case {
        int32_t radix;
        uint32_t widths[5];
    };
    const uint32_t sizes[5] = {1, 2, 3, 4, 8};
    for (const Case& c :
         {Case{8, {3, 6, 8, 11, 21}}, Case{10, {3, 5, 8, 10, 20}}, Case{16, {2, 4, 6, 8, 16}}}) {
        for (int i = 0; i < 5; ++i) {
            SCOPED_TRACE(testing::Message() << "radix " << c.radix << " size " << sizes[i]);
            EXPECT_EQ(ApplyNumberFormat(MakeNumberFormat(sizes[i], c.radix, false), 0),
                      std::string(c.widths[i], '0'));
        }
    }
    EXPECT_EQ(ApplyNumberFormat(MakeNumberFormat(1, 16, true), 0xABC), "H'ABC");
}

TEST(NumberFormat, NoFormatForARadixOrSizeWithoutOne)
{
    for (int32_t radix : {0, 2, 7, 36})
        EXPECT_EQ(MakeNumberFormat(4, radix, true), "") << radix;
    EXPECT_EQ(MakeNumberFormat(0, 16, true), "");
    EXPECT_EQ(MakeNumberFormat(9, 16, true), "");
    EXPECT_EQ(ApplyNumberFormat("", 5), "");
}

TEST(NumberFormat, BinaryTextHasOneDigitABitUpToThirtyTwo)
{
    EXPECT_EQ(ValueToBinaryText(5, 8), "00000101");
    EXPECT_EQ(ValueToBinaryText(6, 3), "110");
    EXPECT_EQ(ValueToBinaryText(0x80000001, 32), "10000000000000000000000000000001");
    EXPECT_EQ(ValueToBinaryText(0xFFFFFFFF, 64), std::string(32, '1'));
    EXPECT_EQ(ValueToBinaryText(1, 0), "");
}

TEST(NumberFormat, IntegersOfTheValueFamily)
{
    struct Case {
        uint64_t value;
        int32_t kind;
        int32_t radix;
        uint32_t bits;
        bool padded;
        const char* expected;
    };
    const Case cases[] = {
        {0xFF, 1, 10, 8, false, "D'-1"},
        {0xFF, 2, 10, 8, false, "D'255"},
        {0xFFFE, 1, 10, 16, false, "D'-2"},
        {0xFFFFFF, 1, 10, 24, false, "D'16777215"}, // only 8, 16 and 32 bits are sign extended
        {5, 2, 10, 32, true, "D'5"},
        {0x1234, 2, 16, 32, true, "0x00001234"},
        {0x1234, 2, 16, 32, false, "0x1234"},
        {0x80, 1, 16, 8, false, "0xffffffffffffff80"},
        {8, 2, 8, 16, true, "O'000010"},
        {8, 2, 8, 16, false, "O'10"},
        {0, 2, 2, 16, false, "B'0"},
        {5, 2, 2, 8, false, "B'101"},
        {5, 2, 2, 8, true, "B'00000101"},
        {5, 2, 7, 8, false, ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(FormatInteger(c.value, c.kind, c.radix, c.bits, c.padded), c.expected) << c.expected;
}

TEST(NumberFormat, ValuesInMemoryByKind)
{
    struct Case {
        Bytes data;
        int32_t kind;
        int32_t radix;
        uint32_t size;
        bool padded;
        std::string expected;
    };
    const Case cases[] = {
        {{0x12, 0x34}, 2, 16, 2, true, "0x1234"},
        {{0x41}, 2, 16, 1, false, "0x41 'A'"},
        {{0xFF}, 1, 10, 1, false, "D'-1 '\xFF'"},
        {{0x00}, 2, 16, 1, false, "0x0 '"}, // a zero character ends the text
        {{0x80}, 8, 10, 1, false, "D'128"},
        {{0, 0}, 0, 16, 2, false, " FALSE"},
        {{0, 1}, 0, 16, 2, false, " TRUE"},
        {{0x00, 0x10}, 4, 10, 2, true, "0x0010"},
        {{0x00, 0x10}, 14, 2, 2, false, "0x10"},
        {{'A', 'B'}, 6, 16, 2, false, "\"AB\""},
        {{'A', 'B'}, 6, 16, 0, false, ""},
        {{'h', 'e', 'l', 'l', 'o', 0}, 13, 16, 0, false, "\"hello\""},
        {{'h', 'e', 'l', 'l', 'o', 0}, 13, 16, 3, false, "\"hel\""},
        {{0}, 13, 16, 0, false, ""},
        {{1}, 7, 16, 1, false, ""},
        {{1}, 9, 16, 1, false, ""},
        {{1}, 11, 16, 1, false, ""},
        {{1}, 12, 16, 1, false, ""},
        {Bytes(9, 1), 2, 16, 9, false, ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(FormatValue(c.data.data(), c.kind, c.radix, c.size, c.padded), c.expected) << c.expected;
    EXPECT_EQ(FormatValue(nullptr, 2, 16, 4, false), "");
}

TEST(NumberFormat, FloatingValuesAreReadInMemoryOrder)
{
    const float single = 1.5f;
    const double wide = 0.1;
    Bytes data(8);
    std::memcpy(data.data(), &single, sizeof single);
    EXPECT_EQ(FormatValue(data.data(), 3, 16, 4, false), "1.5    ");
    std::memcpy(data.data(), &wide, sizeof wide);
    EXPECT_EQ(FormatValue(data.data(), 3, 16, 8, false), "0.1            ");
    EXPECT_EQ(FormatValue(data.data(), 3, 16, 2, false), "");
}

TEST(NumberFormat, PointedTextStopsAtOneThousandTwentyFourBytes)
{
    const std::string text(2000, 'x');
    const auto* data = reinterpret_cast<const uint8_t*>(text.c_str());
    EXPECT_EQ(FormatValue(data, 13, 16, 0, false), "\"" + std::string(1024, 'x') + "\"");
}

} // namespace
