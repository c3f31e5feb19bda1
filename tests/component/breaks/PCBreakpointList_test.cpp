// The breakpoints' stored form and the order of their records.
#include <gtest/gtest.h>

#include <algorithm>

#include "boundary/ComUtils.h"
#include "component/breaks/CPCBreakAddress.h"
#include "component/breaks/CPCBreakSource.h"
#include "component/breaks/CPCBreakpointRecord.h"
#include "component/breaks/PCBreakpointList.h"

namespace
{

using Strings = std::vector<std::string>;
constexpr const char* kOwner = "{110BABEB-6DCB-4265-8236-8888EECAB6AB}";
constexpr const char* kNoOwner = "{00000000-0000-0000-C000-000000000046}";

std::unique_ptr<CPCBreak> AddressBreak(uint32_t address, int32_t kind = CPCBreak::kUserBreak)
{
    auto b = std::make_unique<CPCBreakAddress>(address);
    b->SetHasAddress(true);
    b->SetKind(kind);
    return b;
}

std::unique_ptr<CPCBreak> SourceBreak(const char* file, int32_t line, uint32_t address)
{
    auto b = std::make_unique<CPCBreakSource>(file, line);
    b->SetSourceBound(true);
    b->SetAddress(address);
    return b;
}

TEST(PCBreakpointList, WritesNewestFirstWithoutTemporaryOnesAndTheUsersEnabledState)
{
    PCBreakArray breaks;
    breaks.push_back(AddressBreak(0xFFFF0000));
    breaks.push_back(AddressBreak(0x200, CPCBreak::kTemporaryBreak));
    breaks.push_back(SourceBreak("c:\\x\\main.c", 12, 0x300));
    breaks.back()->SetSuspended(true);
    breaks.back()->SetOwner(Guid::FromText(kOwner));
    breaks.back()->SetOwnerName("trace");
    breaks.push_back(AddressBreak(0x400));
    breaks.back()->SetText("main.c"); // a known place of an address break is not stored
    breaks.back()->SetLine(14);
    breaks.back()->SetEnabled(false);
    Variant stored;
    WriteBreakpointList(BuildStoredBreakpoints(breaks), stored);
    EXPECT_EQ(CComUtils::VariantToStringList(stored),
              (Strings{
                  "", "-1", "1024", "0", kNoOwner, "",                //
                  "c:\\x\\main.c", "12", "768", "1", kOwner, "trace", //
                  "", "-1", "-65536", "1", kNoOwner, "",              //
              }));
}

TEST(PCBreakpointList, ASavedAndReloadedListGivesTheSameBreakpointsInReverseOrder)
{
    PCBreakArray saved;
    saved.push_back(AddressBreak(0xFFFF0000));
    saved.push_back(SourceBreak("/src/main.c", 12, 0)); // a source break takes its address from debug data
    saved.back()->SetOwner(Guid::FromText(kOwner));
    saved.back()->SetOwnerName("trace");
    saved.back()->SetEnabled(false);
    Variant stored;
    WriteBreakpointList(BuildStoredBreakpoints(saved), stored);
    std::vector<CPCBreakpoint> read;
    ReadBreakpointList(stored, read);
    PCBreakArray loaded;
    for (const auto& r : read)
        loaded.push_back(MakeStoredBreak(r));
    auto expected = BuildStoredBreakpoints(saved);
    std::reverse(expected.begin(), expected.end());
    EXPECT_EQ(BuildStoredBreakpoints(loaded), expected);
    EXPECT_EQ(loaded[0]->GetStateRaw(), (PCBreakState{0, 0, 1, 0})) << "nothing of the platform comes back";
    EXPECT_EQ(loaded[1]->GetStateRaw(), (PCBreakState{0, 1, 0, 1}));
}

TEST(PCBreakpointList, ReadsBadEntriesAsZeroAndBadListsAsNothing)
{
    struct Case {
        Variant stored;
        std::vector<CPCBreakpoint> read;
    };
    const auto list = [](Strings s) { return CComUtils::StringListToVariant(s); };
    for (const auto& [stored, read] :
         {Case{list({"f.c", "x", "y", "z", "", ""}), {CPCBreakpoint(0, 0, "f.c", 0, "", "")}},
          Case{list({"", "-1", "4294901760", "1", kOwner, "n"}),
               {CPCBreakpoint(1, -1, "", 0xFFFF0000, kOwner, "n")}},
          Case{list({"", "-1", "1", "1", "", "", "x"}), {}}, Case{list({}), {}},
          Case{CComUtils::NumberListToVariant({1, 2, 3, 4, 5, 6}), {}}, Case{Variant::String("a"), {}}}) {
        std::vector<CPCBreakpoint> out{CPCBreakpoint()};
        ReadBreakpointList(stored, out);
        EXPECT_EQ(out, read);
    }
}

TEST(PCBreakpointList, AnOwnerThatIsNoIdentityLoadsAsNoOwnerAndNoOwnerTextIsWrittenZero)
{
    for (const char* text : {"", "0", "{110BABEB-6DCB-4265-8236-8888EECAB6A}", "owner"})
        EXPECT_EQ(MakeStoredBreak(CPCBreakpoint(1, -1, "", 0, text, ""))->GetOwner(), CPCBreak::kNoOwner)
            << text;
    Variant stored;
    WriteBreakpointList({CPCBreakpoint(1, -1, "", 0, "", "")}, stored);
    EXPECT_EQ(CComUtils::VariantToStringList(stored)[4], "0");
}

TEST(PCBreakpointRecord, SortsAddressesByHexAndSourceByFileThenLine)
{
    std::vector<CPCBreakpointRecord> records;
    for (const auto& b : {CPCBreakpoint(1, 100, "b.c", 0, "", ""), CPCBreakpoint(1, -1, "", 0x10, "", ""),
                          CPCBreakpoint(1, 20, "b.c", 0, "", ""), CPCBreakpoint(1, -1, "", 0xA, "", ""),
                          CPCBreakpoint(1, 3, "a.c", 0, "", "")})
        records.emplace_back(b);
    CPCBreakpointRecord::Sort(records);
    Strings keys;
    for (const auto& r : records)
        keys.push_back(r.SortKey());
    EXPECT_EQ(keys, (Strings{"0000000a", "00000010", "a.c|000003", "b.c|000020", "b.c|000100"}));
}

} // namespace
