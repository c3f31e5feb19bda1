#include <gtest/gtest.h>

#include "component/memory/SplitByAreas.h"

namespace
{

// Ranges as flat lists of first and last addresses; an area may be reversed.
std::vector<AddressRange> Ranges(const std::vector<uint32_t>& flat)
{
    std::vector<AddressRange> ranges;
    for (size_t i = 0; i + 1 < flat.size(); i += 2)
        ranges.emplace_back(flat[i], flat[i + 1]);
    return ranges;
}

TEST(SplitByAreas, GivesTheServedParts)
{
    const struct {
        const char* name;
        uint32_t start, end;
        AccessSize accessSize;
        std::vector<uint32_t> areas, expected;
    } cases[] = {
        {"no areas", 0x1000, 0x1FFF, 1, {}, {}},
        {"inside one area", 0x1000, 0x1FFF, 1, {0, 0xFFFF}, {0x1000, 0x1FFF}},
        {"starts before area", 0x1000, 0x1FFF, 1, {0x1800, 0x2FFF}, {0x1800, 0x1FFF}},
        {"ends after area", 0x1000, 0x1FFF, 1, {0x0800, 0x17FF}, {0x1000, 0x17FF}},
        {"area inside range", 0x1000, 0x1FFF, 1, {0x1100, 0x11FF}, {0x1100, 0x11FF}},
        {"area beyond end", 0x1000, 0x1FFF, 1, {0x2000, 0x2FFF}, {}},
        {"area before start", 0x1000, 0x1FFF, 1, {0x0000, 0x0FFF}, {}},
        {"adjoining merge", 0x1000, 0x1FFF, 1, {0x1000, 0x17FF, 0x1800, 0x1FFF}, {0x1000, 0x1FFF}},
        {"overlapping merge", 0x0, 0x1F, 1, {0x0, 0x10, 0x8, 0x20}, {0x0, 0x1F}},
        {"gap", 0x1000, 0x1FFF, 1, {0x1000, 0x10FF, 0x1200, 0x12FF}, {0x1000, 0x10FF, 0x1200, 0x12FF}},
        {"unsorted", 0x0, 0x40, 1, {0x30, 0x3F, 0x10, 0x1F}, {0x10, 0x1F, 0x30, 0x3F}},
        {"later up", 0x1000, 0x100F, 4, {0x1000, 0x1002, 0x1005, 0x100F}, {0x1000, 0x1002, 0x1008, 0x100F}},
        {"odd first", 0x1000, 0x100F, 4, {0x1001, 0x1003, 0x100A, 0x100F}, {0x1001, 0x1003, 0x100C, 0x100F}},
        {"aligned", 0x1000, 0x10FF, 8, {0x1000, 0x1003, 0x1010, 0x10FF}, {0x1000, 0x1003, 0x1010, 0x10FF}},
        {"too short to align", 0x1000, 0x100F, 4, {0x1000, 0x1001, 0x1009, 0x100A}, {0x1000, 0x1001}},
        {"top", 0xFFFFFFF0, 0xFFFFFFFF, 1, {0xFFFFFF00, 0xFFFFFFFF}, {0xFFFFFFF0, 0xFFFFFFFF}},
        {"no wrap",
         0xFFFFFFF0,
         0xFFFFFFFF,
         4,
         {0xFFFFFFF0, 0xFFFFFFF1, 0xFFFFFFFD, 0xFFFFFFFF},
         {0xFFFFFFF0, 0xFFFFFFF1}},
        {"reversed range", 0x2000, 0x1000, 1, {0, 0xFFFFFFFF}, {}},
        {"reversed area", 0x1000, 0x1FFF, 1, {0x1800, 0x1100}, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<CMemoryArea> areas;
        for (size_t i = 0; i + 1 < c.areas.size(); i += 2)
            areas.push_back(CMemoryArea{c.areas[i], c.areas[i + 1]});
        EXPECT_EQ(SplitByAreas(c.start, c.end, c.accessSize, areas), Ranges(c.expected));
    }
}

} // namespace
