// A breakpoint's names, its enabled state and its module matching.
#include <gtest/gtest.h>

#include "component/breaks/CPCBreakAddress.h"
#include "component/breaks/CPCBreakSource.h"

namespace
{

TEST(PCBreakNames, AddressShowsItsTextAndSourceItsFileNameAndLine)
{
    CPCBreakAddress address(0x1000);
    EXPECT_EQ(address.GetDisplayName(), "Address 00001000");
    address.SetText("c:\\x\\main.c"); // debug data knows its place
    EXPECT_EQ(address.GetFileName(), "c:\\x\\main.c");
    struct Case {
        const char* file;
        int32_t line;
        const char* shown;
    };
    for (const auto& [file, line, shown] :
         {Case{"c:\\x\\main.c", 12, "{main.c},Line 12"},
          Case{"/src/util.test.cpp", 7, "{util.test.cpp},Line 7"},
          Case{"a.d/b\\Makefile", 1, "{Makefile},Line 1"}, Case{"main.c", 0, "{main.c},Line 0"}}) {
        const CPCBreakSource source(file, line);
        EXPECT_EQ(source.GetDisplayName(), shown);
        EXPECT_EQ(source.GetFileName(), file) << "the full name, not the shown one";
    }
}

TEST(PCBreak, AnAddressBreakStartsPlantedASourceBreakNotAndEachHasAnIdOfItsOwn)
{
    const CPCBreakAddress address(0xFFFF0000);
    const CPCBreakSource source("main.c", 3);
    EXPECT_EQ(address.GetStateRaw(), (PCBreakState{1, 0, 0, 1}));
    EXPECT_EQ(source.GetStateRaw(), (PCBreakState{0, 0, 0, 1}));
    EXPECT_EQ(address.GetId(), address.GetOwnId());
    EXPECT_NE(address.GetId(), source.GetId());
    EXPECT_NE(source.GetId(), 0xFFFFFFFFu) << "-1 stands for every breakpoint";
    EXPECT_EQ(source.GetOwner(), "{00000000-0000-0000-C000-000000000046}"_guid);
}

TEST(PCBreak, ASuspendedBreakReadsDisabledWhileKeepingTheUsersWish)
{
    struct Case {
        bool enabled, suspended, reads;
    };
    for (const auto& [enabled, suspended, reads] : {Case{true, false, true}, Case{true, true, false},
                                                    Case{false, false, false}, Case{false, true, false}}) {
        CPCBreakSource b("main.c", 3);
        b.SetSourceBound(true);
        b.SetEnabled(enabled);
        b.SetSuspended(suspended);
        EXPECT_EQ(b.GetEnabled(), reads);
        EXPECT_EQ(b.GetState(), (PCBreakState{0, 0, 1, reads}));
        EXPECT_EQ(b.GetStateRaw(), (PCBreakState{0, 0, 1, enabled}));
    }
}

TEST(PCBreak, MatchModuleByOperation)
{
    struct Case {
        bool source;
        int32_t operation;
        uint32_t stored, given;
        bool match;
        uint32_t storedAfter;
        bool flagAfter; // source bound of an address break, has address of a source break
    };
    for (const auto& c : {Case{false, 0, 5, 7, true, 5, true}, Case{false, 4, 5, 7, true, 5, true},
                          Case{false, 2, 5, 7, true, 7, true}, Case{false, 3, 5, 5, false, 5, false},
                          Case{false, 3, 5, 7, false, 5, true}, Case{false, 1, 5, 5, false, 5, true},
                          Case{true, 1, 0, 7, true, 7, true}, Case{true, 1, 5, 5, true, 5, true},
                          Case{true, 1, 5, 7, false, 5, true}, Case{true, 2, 5, 7, true, 7, true},
                          Case{true, 3, 5, 5, false, 5, false}, Case{true, 3, 5, 7, false, 5, true},
                          Case{true, 0, 5, 5, false, 5, true}, Case{true, 4, 5, 5, false, 5, true}}) {
        CPCBreakAddress address(0x100);
        CPCBreakSource source("main.c", 3);
        CPCBreak& b = c.source ? static_cast<CPCBreak&>(source) : address;
        b.SetModule(c.stored);
        b.SetSourceBound(true);
        b.SetHasAddress(true);
        SCOPED_TRACE(testing::Message()
                     << c.source << " " << c.operation << " " << c.stored << " " << c.given);
        EXPECT_EQ(b.MatchModule(c.operation, c.given), c.match);
        EXPECT_EQ(b.GetModule(), c.storedAfter);
        EXPECT_EQ(c.source ? b.GetHasAddress() : b.GetSourceBound(), c.flagAfter);
        EXPECT_TRUE(c.source ? b.GetSourceBound() : b.GetHasAddress()) << "the other flag stays";
    }
}

} // namespace
