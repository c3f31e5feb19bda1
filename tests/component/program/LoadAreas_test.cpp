// The ranges a load wrote: every range added joins what it touches or
// overlaps, so the list stays sorted, without overlaps and without ranges
// that touch.
#include <gtest/gtest.h>

#include <algorithm>

#include "component/program/CMemoryLoadDataList.h"

namespace
{

using Ranges = std::vector<std::pair<uint32_t, uint32_t>>;

Ranges Held(const CMemoryLoadDataList& list)
{
    Ranges out;
    for (const auto& r : list.Ranges())
        out.emplace_back(r.Start.Value(), r.End.Value());
    return out;
}

// Sorted, and at least one address between neighbours.
bool Invariant(const Ranges& r)
{
    auto joinable = [](const auto& a, const auto& b) { return uint64_t{a.second} + 1 >= b.first; };
    return std::all_of(r.begin(), r.end(), [](const auto& x) { return x.first <= x.second; }) &&
           std::adjacent_find(r.begin(), r.end(), joinable) == r.end();
}

TEST(LoadAreas, JoinWhatTheyTouchOrOverlapAtEveryEdge)
{
    struct Case {
        const char* what;
        Ranges added;
        Ranges held;
    };
    const Case cases[] = {
        {"ascending blocks", {{0x1000, 0x1FFF}, {0x2000, 0x2FFF}}, {{0x1000, 0x2FFF}}},
        {"descending blocks", {{0x2000, 0x2FFF}, {0x1000, 0x1FFF}}, {{0x1000, 0x2FFF}}},
        {"one address apart", {{0x10, 0x1F}, {0x21, 0x2F}}, {{0x10, 0x1F}, {0x21, 0x2F}}},
        {"in between",
         {{0x10, 0x1F}, {0x50, 0x5F}, {0x30, 0x3F}},
         {{0x10, 0x1F}, {0x30, 0x3F}, {0x50, 0x5F}}},
        {"inside", {{0x1000, 0x1FFF}, {0x1100, 0x11FF}, {0x1000, 0x1FFF}}, {{0x1000, 0x1FFF}}},
        {"at the top",
         {{0xFFFF0000, 0xFFFFFFFF}, {0x100, 0x200}, {0xFFFFFFFF, 0xFFFFFFFF}},
         {{0x100, 0x200}, {0xFFFF0000, 0xFFFFFFFF}}},
        {"at zero", {{0, 0xFF}, {0x100, 0x1FF}, {0, 0}}, {{0, 0x1FF}}},
        {"below zero's neighbour", {{0x1, 0xFF}, {0, 0}}, {{0, 0xFF}}},
        {"past the end", {{0x1000, 0x1FFF}, {0x1800, 0x27FF}}, {{0x1000, 0x27FF}}},
        {"past the start", {{0x1000, 0x1FFF}, {0x0800, 0x10FF}}, {{0x0800, 0x1FFF}}},
        {"bridging by overlap", {{0x1000, 0x1FFF}, {0x3000, 0x3FFF}, {0x1F00, 0x30FF}}, {{0x1000, 0x3FFF}}},
        {"bridging by touch", {{0x1000, 0x1FFF}, {0x3000, 0x3FFF}, {0x2000, 0x2FFF}}, {{0x1000, 0x3FFF}}},
        {"over all", {{0x10, 0x1F}, {0x30, 0x3F}, {0x50, 0x5F}, {0, 0xFFFFFFFF}}, {{0, 0xFFFFFFFF}}},
        {"over two of three",
         {{0x10, 0x1F}, {0x30, 0x3F}, {0x50, 0x5F}, {0x18, 0x38}},
         {{0x10, 0x3F}, {0x50, 0x5F}}},
    };
    for (const auto& c : cases) {
        CMemoryLoadDataList list;
        for (const auto& [start, end] : c.added) {
            EXPECT_TRUE(list.AddArea(start, end)) << c.what;
            EXPECT_TRUE(Invariant(Held(list))) << c.what;
        }
        EXPECT_EQ(Held(list), c.held) << c.what;
    }
}

TEST(LoadAreas, AReversedRangeIsRefusedAndAnIndexPastTheEndGivesNothing)
{
    CMemoryLoadDataList list;
    ASSERT_TRUE(list.AddArea(0x10, 0x1F));
    EXPECT_FALSE(list.AddArea(0x30, 0x20));
    EXPECT_EQ(Held(list), (Ranges{{0x10, 0x1F}}));
    EXPECT_FALSE(list.At(1));
}

} // namespace
