#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "component/program/CFileTime.h"
#include "support/TempFolder.h"

namespace
{

TEST(FileTime, OrdersAsOneUnsignedNumberAndPrintsHighFirst)
{
    struct Case {
        CFileTime a, b;
        int order; // sign of a - b
        const char* textOfA;
    };
    const Case cases[] = {
        {{0xFFFFFFFF, 0}, {0, 1}, -1, "00000000FFFFFFFF"},
        {{0, 0x80000000}, {0xFFFFFFFF, 0x7FFFFFFF}, 1, "8000000000000000"},
        {{2, 1}, {2, 1}, 0, "0000000100000002"},
        {{1, 2}, {2, 1}, 1, "0000000200000001"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.textOfA);
        EXPECT_EQ(c.a < c.b, c.order < 0);
        EXPECT_EQ(c.a > c.b, c.order > 0);
        EXPECT_EQ(c.a == c.b, c.order == 0);
        EXPECT_EQ(c.a != c.b, c.order != 0);
        EXPECT_EQ(c.a.Text(), c.textOfA);
    }
    EXPECT_FALSE(CFileTime().IsKnown());
}

TEST(FileTime, IsTheLastWriteTimeIn100nsSince1601)
{
    TempFolder folder;
    auto file = folder.WriteFile("app.elf", "x").string();
    // 1970-01-01 00:00:01.5 UTC.
    const timespec times[2] = {{1, 500000000}, {1, 500000000}};
    ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
    std::vector<std::string> debug;
    CFileTime time;
    EXPECT_TRUE(time.ReadFrom(file, [&](const std::string& text) { debug.push_back(text); }));
    EXPECT_EQ(time.Value(), (11644473600ull + 1) * 10000000ull + 5000000ull);
    EXPECT_TRUE(debug.empty());
}

TEST(FileTime, AMissingFileIsReportedAndKeepsTheTime)
{
    TempFolder folder;
    auto missing = (folder / "gone.elf").string();
    std::vector<std::string> debug;
    CFileTime time(7, 9);
    EXPECT_FALSE(time.ReadFrom(missing, [&](const std::string& text) { debug.push_back(text); }));
    EXPECT_EQ(time, CFileTime(7, 9));
    EXPECT_EQ(debug,
              std::vector<std::string>{"Cannot access file " + missing + ",No such file or directory\n"});
    EXPECT_FALSE(CFileTime::OfFile(missing, nullptr).IsKnown());
}

} // namespace
