#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>
#include <vector>

#include "platform/sim/SimMemoryMap.h"
#include "support/SimHarness.h"

namespace
{

TEST(SimMemory, OutsideTheMapFailsAtTheFirstUnmappedByteAndWritesNothing)
{
    struct BadAccess {
        uint32_t address;
        size_t size;
        uint32_t failing;
        const char* cause;
    };
    auto target = SimTarget::Create({});
    for (const BadAccess& c :
         {BadAccess{0x30000000, 4, 0x30000000, "No memory at 0x30000000"},
          BadAccess{0x2001FFFE, 4, 0x20020000, "No memory at 0x20020000"},
          BadAccess{0x07FFFFFF, 2, 0x07FFFFFF, "No memory at 0x07FFFFFF"},
          BadAccess{0xFFFFFFFE, 4, 0xFFFFFFFE, "Range at 0xFFFFFFFE wraps beyond 0xFFFFFFFF"}}) {
        SCOPED_TRACE(c.cause);
        std::vector<uint8_t> buffer(c.size, 0xAA);
        SimResult read = target->ReadMemory(c.address, c.size, buffer.data());
        SimResult write = target->WriteMemory(c.address, c.size, buffer.data());
        EXPECT_EQ(std::tuple(bool(read), read.address, read.cause), std::tuple(false, c.failing, c.cause));
        EXPECT_EQ(std::pair(bool(write), write.address), std::pair(false, c.failing));
        // The mapped part was left alone.
        if (target->ReadMemory(c.address, 1, buffer.data())) {
            EXPECT_EQ(buffer[0], 0);
        }
    }
}

TEST(SimMemory, DownloadedCodeReplacesCodeThatAlreadyRan)
{
    SimHarness h;
    ASSERT_TRUE(h.Boot("undef")) << h.Error();
    auto first = h.Run();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->reason, StopReason::Fault);
    ASSERT_TRUE(SimHarness::Download(h.Target(), "hello"));
    ASSERT_TRUE(h.Next());
    auto second = h.Run();
    ASSERT_TRUE(second);
    EXPECT_EQ(std::pair(second->reason, h.Output()), std::pair(StopReason::Exit, std::string("hello\n")))
        << second->cause;
}

TEST(SimMemoryMapParse, ReadsRegionsWithCommentsBlankLinesAndDefaults)
{
    const SimMapParse parsed = SimMemoryMap::Parse("# a board\n"
                                                   "\n"
                                                   "ram 0x20000000 0x00020000 rw sram   # on-chip\n"
                                                   "  flash\t134217728 1048576 rx\r\n"
                                                   "peripheral 0x40000000 0x1000 w\n"
                                                   "ram 0xFFFFF000 0x1000 rw top\n");
    ASSERT_TRUE(parsed.map) << parsed.error;
    using Region = std::tuple<std::string, RegionKind, uint32_t, uint64_t, int>;
    std::vector<Region> regions;
    for (const SimRegion& r : parsed.map->Regions())
        regions.emplace_back(r.name, r.kind, r.base, r.size, r.access);
    // Sorted by base whatever the order of the lines, up to the top of the address space; a region
    // without a name is named by its kind.
    EXPECT_EQ(regions, (std::vector<Region>{
                           {"flash", RegionKind::Flash, 0x08000000, 0x00100000, kAccessRead | kAccessExecute},
                           {"sram", RegionKind::Ram, 0x20000000, 0x00020000, kAccessRead | kAccessWrite},
                           {"peripheral", RegionKind::Peripheral, 0x40000000, 0x1000, kAccessWrite},
                           {"top", RegionKind::Ram, 0xFFFFF000, 0x1000, kAccessRead | kAccessWrite}}));
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
