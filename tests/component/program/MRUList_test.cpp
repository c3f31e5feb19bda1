#include <gtest/gtest.h>

#include <map>
#include <string>
#include <type_traits>
#include <vector>

#include "component/program/CMRUList.h"
#include "support/FakeRecentListStore.h"

namespace
{

const std::string kSection = "MRU Program Open";

template <class List> std::string Describe(const List& list)
{
    std::string text;
    for (size_t i = 0; i < list.Count(); ++i) {
        const auto& e = list.At(i);
        std::string at;
        if constexpr (requires { e.Address; })
            at = std::to_string(e.Address);
        else
            at = std::to_string(e.AddressStart) + "-" + std::to_string(e.AddressEnd);
        text += (i == 0 ? "" : ", ") + e.FileName + "@" + at + " " + e.Format + "/" +
                std::to_string(e.AccessSize);
    }
    return text;
}

struct Use {
    std::string file;
    uint32_t start = 0;
    uint32_t end = 0;
    std::string format = "x";
};

template <class Entry> std::unique_ptr<Entry> Make(const Use& u)
{
    if constexpr (std::is_same_v<Entry, CMRUProgramSave>)
        return std::make_unique<Entry>(u.file, u.format, 1, u.start, u.end);
    else
        return std::make_unique<Entry>(u.file, u.format, 1, u.start);
}

template <class List, class Entry> std::string AddAll(const std::vector<Use>& uses)
{
    List list(4);
    for (const auto& use : uses)
        list.Add(Make<Entry>(use));
    return Describe(list);
}
constexpr auto Opens = AddAll<CMRUProgramOpenList, CMRUProgramOpen>;
constexpr auto Saves = AddAll<CMRUProgramSaveList, CMRUProgramSave>;
constexpr auto Verifies = AddAll<CMRUProgramVerifyList, CMRUProgramVerify>;

TEST(MRUList, AddKeepsTheMostRecentFirstAndEachEntryOnce)
{
    struct Case {
        const char* name;
        std::string (*addAll)(const std::vector<Use>&);
        std::vector<Use> uses;
        std::string list;
    } cases[] = {
        // clang-format off
        {"a fifth entry pushes out the oldest", Opens, {{"a"}, {"b"}, {"c"}, {"d"}, {"e"}},
         "e@0 x/1, d@0 x/1, c@0 x/1, b@0 x/1"},
        {"the same file at the same address moves up with its new format", Opens,
         {{"a", 8}, {"b", 8}, {"a", 8, 0, "srec"}}, "a@8 srec/1, b@8 x/1"},
        {"the same file at another address is another entry", Opens, {{"a", 0}, {"a", 4}}, "a@4 x/1, a@0 x/1"},
        {"verify entries likewise", Verifies, {{"a", 0}, {"a", 4}, {"a", 0}}, "a@0 x/1, a@4 x/1"},
        {"a save with a new end alone is another entry", Saves, {{"a", 0, 9}, {"a", 0, 19}},
         "a@0-19 x/1, a@0-9 x/1"},
        {"a save of the same range moves up", Saves, {{"a", 0, 9}, {"b", 0, 9}, {"a", 0, 9}},
         "a@0-9 x/1, b@0-9 x/1"},
        {"names that differ in case alone are one entry", Opens, {{"Fw/A.BIN"}, {"fw/a.bin"}}, "fw/a.bin@0 x/1"},
        // clang-format on
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.addAll(c.uses), c.list) << c.name;
}

TEST(MRUList, CompareTakesNamesWithoutCaseThenAddressesUnsigned)
{
    struct Case {
        Use left, right;
        int order;
    } cases[] = {
        {{"a", 1, 2}, {"A", 1, 2, "srec"}, 0},
        {{"a", 9, 9}, {"B", 0, 0}, -1},
        {{"a", 0xFFFFFFFF, 0}, {"a", 1, 0}, 1},
        {{"a", 1, 5}, {"a", 1, 0xFFFFFFFF}, -1},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Make<CMRUProgramSave>(c.left)->Compare(*Make<CMRUProgramSave>(c.right)), c.order)
            << c.left.file << " " << c.right.file;
    }
}

TEST(MRUList, SaveWritesEveryKeyInOrderAndLoadReadsThemBack)
{
    FakeRecentListStore store;
    CMRUProgramSaveList saves(4);
    saves.Add(std::make_unique<CMRUProgramSave>("/fw/a.bin", "elf", 4, 0x100, 0x1FF));
    saves.Add(std::make_unique<CMRUProgramSave>("C:\\fw\\b.bin", "srec", 1, 0x80000000, 0xFFFFFFFF));
    saves.Save(&store, "MRU Program Save");
    EXPECT_EQ(store.writes,
              (CallLog{"Browse=C:/fw", "MaxFiles=4", "Files=2", "AddressStart1=-2147483648", "AddressEnd1=-1",
                       "Format1=srec", "AccessSize1=1", "File1=C:\\fw\\b.bin", "AddressStart2=256",
                       "AddressEnd2=511", "Format2=elf", "AccessSize2=4", "File2=/fw/a.bin"}));

    CMRUProgramOpenList opens(4);
    opens.Add(std::make_unique<CMRUProgramOpen>("a.bin", "elf", 2, 0xFFFFFFFF));
    store.writes.clear();
    opens.Save(&store, kSection);
    EXPECT_EQ(store.writes, (CallLog{"Browse=", "MaxFiles=4", "Files=1", "Address1=-1", "Format1=elf",
                                     "AccessSize1=2", "File1=a.bin"}));

    CMRUProgramSaveList savesRead(2);
    savesRead.Load(&store, "MRU Program Save");
    EXPECT_EQ(Describe(savesRead), Describe(saves));
    EXPECT_EQ(savesRead.Browse, "C:/fw");
    EXPECT_EQ(savesRead.FillCombo(), (std::vector<std::string>{"C:\\fw\\b.bin", "/fw/a.bin"}));
    CMRUProgramOpenList opensRead(4);
    opensRead.Load(&store, kSection);
    EXPECT_EQ(Describe(opensRead), Describe(opens));
}

TEST(MRUList, LoadTakesWhatIsStoredAndLeavesWhatIsNot)
{
    struct Case {
        const char* name;
        std::map<std::string, std::string> stored;
        std::string list;
        int32_t room;
        std::string browse;
    } cases[] = {
        // clang-format off
        {"a partly empty section",
         {{"Browse", ""}, {"Files", "3"}, {"File1", "/fw/a.bin"}, {"Format1", "elf"}, {"Address1", "16"},
          {"File2", ""}, {"Address2", "abc"}, {"AccessSize2", "12abc"}, {"Address3", " -1"}},
         "/fw/a.bin@16 elf/1, @0 /12, @4294967295 /1", 4, "/old"},
        {"a stored room and folder", {{"Browse", "/new"}, {"MaxFiles", "10"}, {"Files", "1"}, {"File1", "b"}},
         "b@0 /1", 10, "/new"},
        {"an empty section", {}, "", 4, "/old"},
        // clang-format on
    };
    for (const auto& c : cases) {
        FakeRecentListStore store;
        for (const auto& [key, value] : c.stored)
            store.values[{kSection, key}] = value;
        CMRUProgramOpenList list(4);
        list.Add(std::make_unique<CMRUProgramOpen>("/old/c.bin", "elf", 1, 0));
        list.Load(&store, kSection);
        EXPECT_EQ(Describe(list), c.list) << c.name;
        EXPECT_EQ(list.MaxFiles, c.room) << c.name;
        EXPECT_EQ(list.Browse, c.browse) << c.name;
    }
}

TEST(MRUList, WithoutAStoreOrWithADamagedCountTheListStaysUsable)
{
    CMRUProgramOpenList list(4);
    list.Add(std::make_unique<CMRUProgramOpen>("a.bin", "elf", 1, 0));
    list.Load(nullptr, kSection);
    list.Save(nullptr, kSection);
    EXPECT_EQ(Describe(list), "a.bin@0 elf/1");

    FakeRecentListStore store;
    store.values[{kSection, "Files"}] = "2000000000";
    list.Load(&store, kSection);
    EXPECT_EQ(list.Count(), 256u);
}

} // namespace
