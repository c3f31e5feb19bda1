#include <gtest/gtest.h>

#include <string>

#include "platform/sim/SimMemoryMap.h"

namespace
{

TEST(SimMemoryMapParse, ReadsRegionsWithCommentsBlankLinesAndDefaults)
{
    const SimMapParse parsed = SimMemoryMap::Parse("# a board\n"
                                                   "\n"
                                                   "ram 0x20000000 0x00020000 rw sram   # on-chip\n"
                                                   "  flash\t134217728 1048576 rx\r\n"
                                                   "peripheral 0x40000000 0x1000 w\n");
    ASSERT_TRUE(parsed.map) << parsed.error;
    const auto& regions = parsed.map->Regions();
    ASSERT_EQ(regions.size(), 3u);
    // Sorted by base whatever the order of the lines.
    EXPECT_EQ(regions[0].name, "flash");
    EXPECT_EQ(regions[0].kind, RegionKind::Flash);
    EXPECT_EQ(regions[0].base, 0x08000000u);
    EXPECT_EQ(regions[0].size, 0x00100000u);
    EXPECT_EQ(regions[0].access, kAccessRead | kAccessExecute);
    EXPECT_EQ(regions[1].name, "sram");
    EXPECT_EQ(regions[1].access, kAccessRead | kAccessWrite);
    EXPECT_EQ(regions[2].kind, RegionKind::Peripheral);
    EXPECT_EQ(regions[2].access, kAccessWrite);
}

TEST(SimMemoryMapParse, FindsRegionsByAddressAndKindUpToTheTop)
{
    const SimMapParse parsed =
        SimMemoryMap::Parse("ram 0x20000000 0x2000 rw\nflash 0x1000 0x1000 rx\nram 0xFFFFF000 0x1000 rw\n");
    ASSERT_TRUE(parsed.map) << parsed.error;
    // A region may reach the top of the address space.
    EXPECT_EQ(parsed.map->Regions()[2].End(), uint64_t{1} << 32);
    const SimMemoryMap& map = *parsed.map;
    ASSERT_NE(map.Find(0x20001FFF), nullptr);
    EXPECT_EQ(map.Find(0x20001FFF)->kind, RegionKind::Ram);
    EXPECT_EQ(map.Find(0x20002000), nullptr);
    EXPECT_EQ(map.Find(0x0FFF), nullptr);
    ASSERT_NE(map.FirstOf(RegionKind::Flash), nullptr);
    EXPECT_EQ(map.FirstOf(RegionKind::Flash)->base, 0x1000u);
    EXPECT_EQ(map.FirstOf(RegionKind::Peripheral), nullptr);
}

TEST(SimMemoryMapErrors, NameTheLineAndTheReason)
{
    struct BadCase {
        const char* text;
        const char* error;
    };
    for (const BadCase& c :
         {BadCase{"flash 0x08000000 0x1000 rx\nram 0x08000000 0x2000 rw\n",
                  "line 2: region overlaps 'flash' from line 1"},
          BadCase{"ram 0x20000000 0x2000 rw\n\n# x\nram 0x1F000000 0x1001000 rw a\n",
                  "line 4: region overlaps 'ram' from line 1"},
          BadCase{"ram 0x20000000 0 rw\n", "line 1: zero size"},
          BadCase{"ram 0xFFFFF000 0x2000 rw\n", "line 1: region wraps beyond 32 bits"},
          BadCase{"ram 0x100000000 0x1000 rw\n", "line 1: base '0x100000000' beyond 32 bits"},
          BadCase{"ram 0x2000000G 0x1000 rw\n", "line 1: bad number '0x2000000G'"},
          BadCase{"ram 0x20000000 -4096 rw\n", "line 1: bad number '-4096'"},
          BadCase{"ram 0x 0x1000 rw\n", "line 1: bad number '0x'"},
          BadCase{"# header\nrom 0x08000000 0x1000 rx\n", "line 2: unknown region kind 'rom'"},
          BadCase{"ram 0x20000000 0x1000 rq\n", "line 1: bad access 'rq' (use r, w and x)"},
          BadCase{"ram 0x20000000 0x1000 rr\n", "line 1: bad access 'rr' (use r, w and x)"},
          BadCase{"ram 0x20000000 0x1000\n", "line 1: expected 'kind base size access [name]'"},
          BadCase{"ram 0x20000000 0x1000 rw a b\n", "line 1: expected 'kind base size access [name]'"},
          BadCase{"ram 0x20000800 0x1000 rw\n", "line 1: base and size must be multiples of 0x1000"},
          BadCase{"peripheral 0x40000000 0x1000 rwx\n", "line 1: peripheral region cannot be executable"},
          BadCase{"# nothing\n\n", "no regions in the description"},
          BadCase{"", "no regions in the description"}}) {
        const SimMapParse parsed = SimMemoryMap::Parse(c.text);
        EXPECT_FALSE(parsed.map) << c.error;
        EXPECT_EQ(parsed.error, c.error);
    }
}

} // namespace
