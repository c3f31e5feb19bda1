#include <gtest/gtest.h>

#include "component/memory/SplitByAreas.h"

namespace
{

struct SplitCase {
    const char* name;
    TargetAddress start;
    TargetAddress end;
    AccessSize accessSize;
    std::vector<CMemoryArea> areas;
    std::vector<AddressRange> expected;
};

CMemoryArea Area(TargetAddress start, TargetAddress end)
{
    return CMemoryArea{start, end};
}

const SplitCase kCases[] = {
    {"NoAreas", 0x1000, 0x1FFF, 1, {}, {}},
    {"InsideOneArea", 0x1000, 0x1FFF, 1, {Area(0, 0xFFFF)}, {{0x1000, 0x1FFF}}},
    {"StartsBeforeArea", 0x1000, 0x1FFF, 1, {Area(0x1800, 0x2FFF)}, {{0x1800, 0x1FFF}}},
    {"EndsAfterArea", 0x1000, 0x1FFF, 1, {Area(0x0800, 0x17FF)}, {{0x1000, 0x17FF}}},
    {"AreaInsideRange", 0x1000, 0x1FFF, 1, {Area(0x1100, 0x11FF)}, {{0x1100, 0x11FF}}},
    {"AreaBeyondEnd", 0x1000, 0x1FFF, 1, {Area(0x2000, 0x2FFF)}, {}},
    {"AreaBeforeStart", 0x1000, 0x1FFF, 1, {Area(0x0000, 0x0FFF)}, {}},
    {"AdjoiningAreasMerge",
     0x1000,
     0x1FFF,
     1,
     {Area(0x1000, 0x17FF), Area(0x1800, 0x1FFF)},
     {{0x1000, 0x1FFF}}},
    {"OverlappingAreasMerge", 0x0, 0x1F, 1, {Area(0x0, 0x10), Area(0x8, 0x20)}, {{0x0, 0x1F}}},
    {"GapKeepsTwoParts",
     0x1000,
     0x1FFF,
     1,
     {Area(0x1000, 0x10FF), Area(0x1200, 0x12FF)},
     {{0x1000, 0x10FF}, {0x1200, 0x12FF}}},
    {"UnsortedAreasComeOutAscending",
     0x0,
     0x40,
     1,
     {Area(0x30, 0x3F), Area(0x10, 0x1F)},
     {{0x10, 0x1F}, {0x30, 0x3F}}},
    {"LaterPartRoundedUpToAccessSize",
     0x1000,
     0x100F,
     4,
     {Area(0x1000, 0x1002), Area(0x1005, 0x100F)},
     {{0x1000, 0x1002}, {0x1008, 0x100F}}},
    {"FirstPartKeepsUnalignedStart",
     0x1000,
     0x100F,
     4,
     {Area(0x1001, 0x1003), Area(0x100A, 0x100F)},
     {{0x1001, 0x1003}, {0x100C, 0x100F}}},
    {"AlignedLaterPartUnchanged",
     0x1000,
     0x10FF,
     8,
     {Area(0x1000, 0x1003), Area(0x1010, 0x10FF)},
     {{0x1000, 0x1003}, {0x1010, 0x10FF}}},
    {"PartTooShortToAlignDropped",
     0x1000,
     0x100F,
     4,
     {Area(0x1000, 0x1001), Area(0x1009, 0x100A)},
     {{0x1000, 0x1001}}},
    {"TopOfAddressSpace",
     0xFFFFFFF0,
     0xFFFFFFFF,
     1,
     {Area(0xFFFFFF00, 0xFFFFFFFF)},
     {{0xFFFFFFF0, 0xFFFFFFFF}}},
    {"RoundingAtTopDoesNotWrap",
     0xFFFFFFF0,
     0xFFFFFFFF,
     4,
     {Area(0xFFFFFFF0, 0xFFFFFFF1), Area(0xFFFFFFFD, 0xFFFFFFFF)},
     {{0xFFFFFFF0, 0xFFFFFFF1}}},
    {"ReversedRange", 0x2000, 0x1000, 1, {Area(0, 0xFFFFFFFF)}, {}},
    {"ReversedAreaIgnored", 0x1000, 0x1FFF, 1, {Area(0x1800, 0x1100)}, {}},
};

class SplitByAreasTest : public testing::TestWithParam<SplitCase>
{
};

TEST_P(SplitByAreasTest, GivesTheServedParts)
{
    const auto& c = GetParam();
    EXPECT_EQ(SplitByAreas(c.start, c.end, c.accessSize, c.areas), c.expected);
}

INSTANTIATE_TEST_SUITE_P(Cases, SplitByAreasTest, testing::ValuesIn(kCases),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
