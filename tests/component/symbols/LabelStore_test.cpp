#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <strings.h>
#include <vector>

#include "component/symbols/CDataLabelArray.h"

namespace
{

using Strings = std::vector<std::string>;

struct Label {
    std::string name;
    uint32_t address;
    uint32_t module = 0;
};

// Extra carries each label's place in the list, so that a walk tells equal keys
// apart. The labels from `deferFrom` on are added in deferred mode.
void Add(CDataLabelArray& store, const std::vector<Label>& labels, size_t deferFrom = SIZE_MAX)
{
    for (uint32_t i = 0; i < labels.size(); ++i) {
        store.SetDeferred(i >= deferFrom);
        ASSERT_TRUE(store.AddLabel({labels[i].name, labels[i].address, 2, i}, labels[i].module));
    }
    store.SetDeferred(false);
}

std::string Text(const LabelRecord* r)
{
    return r->Name + "@" + std::to_string(r->Address.Value()) + "#" + std::to_string(r->Extra);
}

// The whole store in one order, walked by rising index.
Strings Walk(CDataLabelArray& store, bool byName)
{
    Strings walk;
    for (size_t i = 0; i < store.GetCount(); ++i)
        walk.push_back(Text(byName ? store.GetRecordByNameIndex(i) : store.GetRecordByAddressIndex(i)));
    return walk;
}

// Found address, or -1 when the lookup fails.
int64_t Lookup(CDataLabelArray& store, const std::string& name, uint32_t module, bool exact)
{
    LabelRecord record{name};
    return store.FindByName(record, module, exact) == S_OK ? int64_t{record.Address.Value()} : -1;
}

const std::vector<Label> Duplicates = {{"x", 2}, {"b", 5}, {"x", 1}, {"a", 5}, {"x", 5}, {"x", 5}};

TEST(LabelStore, EqualKeysKeepTheOldestFirstHoweverTheyCameIn)
{
    for (size_t deferFrom : {SIZE_MAX, size_t{0}, size_t{1}, size_t{3}}) {
        SCOPED_TRACE(deferFrom);
        CDataLabelArray store;
        Add(store, Duplicates, deferFrom);
        EXPECT_EQ(Walk(store, true), (Strings{"a@5#3", "b@5#1", "x@2#0", "x@1#2", "x@5#4", "x@5#5"}));
        EXPECT_EQ(Walk(store, false), (Strings{"x@1#2", "x@2#0", "b@5#1", "a@5#3", "x@5#4", "x@5#5"}));
        EXPECT_EQ(Lookup(store, "x", 0, true), 2);
        LabelRecord at5{"", 5};
        EXPECT_EQ(store.FindByAddress(at5), S_OK);
        EXPECT_EQ(at5.Name, "b");
        LabelRecord between{"", 3};
        EXPECT_EQ(store.FindByAddress(between), QE_UNDEFINED_SYMBOL);
    }
}

TEST(LabelStore, RemovalTakesTheOldestOfANameAndOnlyItsOwnAddressKey)
{
    struct Case {
        Strings removed;
        Strings byName, byAddress;
    };
    for (const Case& c : {
             Case{{"a"},
                  {"b@5#1", "x@2#0", "x@1#2", "x@5#4", "x@5#5"},
                  {"x@1#2", "x@2#0", "b@5#1", "x@5#4", "x@5#5"}},
             Case{{"x", "x", "x"}, {"a@5#3", "b@5#1", "x@5#5"}, {"b@5#1", "a@5#3", "x@5#5"}},
         }) {
        CDataLabelArray store;
        Add(store, Duplicates);
        for (const std::string& name : c.removed)
            EXPECT_TRUE(store.RemoveLabel(name)) << name;
        EXPECT_EQ(Walk(store, true), c.byName);
        EXPECT_EQ(Walk(store, false), c.byAddress);
        EXPECT_FALSE(store.RemoveLabel("absent"));
        EXPECT_EQ(store.GetCount(), c.byName.size());
    }
}

TEST(LabelStore, DeferredLabelsStayUnseenUntilSortedInAndSurviveAClear)
{
    CDataLabelArray store;
    Add(store, {{"before", 1}, {"kept", 2}});
    store.SetDeferred(true);
    const uint32_t n = 20000;
    for (uint32_t i = 0; i < n; ++i)
        ASSERT_TRUE(store.AddLabel({"L" + std::to_string(n - i), i}, 3));
    EXPECT_EQ(store.GetCount(), 2u);
    EXPECT_EQ(Lookup(store, "L1", 0, true), -1);
    EXPECT_EQ(store.GetRecordByNameIndex(2), nullptr);
    EXPECT_EQ(store.ReplaceLabel({"kept"}, {"now", 8}), S_OK);
    EXPECT_EQ(Lookup(store, "now", 0, true), 8);
    store.Clear();

    store.SetDeferred(false);
    EXPECT_EQ(store.GetCount(), n);
    EXPECT_EQ(Lookup(store, "L1", 3, true), n - 1);
    EXPECT_EQ(Lookup(store, "now", 0, true), -1);
    EXPECT_EQ(store.GetRecordByAddressIndex(n - 1)->Address, TargetAddress(n - 1));
}

TEST(LabelStore, IndexWalksCountFromTheCursorUntilTheStoreChanges)
{
    CDataLabelArray store;
    EXPECT_EQ(store.GetRecordByNameIndex(0), nullptr);
    for (uint32_t i = 0; i < 10; ++i)
        ASSERT_TRUE(store.AddLabel({"n" + std::to_string(i), 100 - i}, 0));
    for (size_t index : {5, 6, 7, 3, 0, 1, 1, 9, 2})
        EXPECT_EQ(store.GetRecordByNameIndex(index)->Name, "n" + std::to_string(index));
    EXPECT_EQ(store.GetRecordByNameIndex(10), nullptr);
    for (size_t index : {5, 6, 7, 3})
        EXPECT_EQ(store.GetRecordByAddressIndex(index)->Name, "n" + std::to_string(9 - index));

    EXPECT_EQ(store.GetRecordByNameIndex(5)->Name, "n5");
    EXPECT_EQ(store.GetRecordByAddressIndex(5)->Name, "n4");
    EXPECT_EQ(store.ReplaceLabel({"n0"}, {"z", 1}), S_OK);
    EXPECT_EQ(store.GetRecordByNameIndex(6)->Name, "n7");
    EXPECT_EQ(store.GetRecordByAddressIndex(6)->Name, "n4");
}

TEST(LabelStore, NameLookupsFollowCaseAndModule)
{
    struct Case {
        std::string name;
        uint32_t module;
        bool exact;
        int64_t address;
    };
    CDataLabelArray store;
    Add(store, {{"main", 1, 5}, {"Main", 2, 5}, {"main", 3, 7}});
    for (const Case& c : {Case{"main", 0, true, 1}, Case{"Main", 0, true, 2}, Case{"MAIN", 0, true, -1},
                          Case{"main", 0, false, 2}, Case{"MAIN", 0, false, 2}, Case{"main", 7, true, 3},
                          Case{"MAIN", 7, false, 3}, Case{"Main", 7, true, -1}, Case{"main", 9, false, -1}})
        EXPECT_EQ(Lookup(store, c.name, c.module, c.exact), c.address)
            << c.name << " " << c.module << " " << c.exact;
}

TEST(LabelStore, ModulesFollowTheirLabels)
{
    CDataLabelArray store;
    Add(store, {{"a", 1, 5}, {"b", 2, 6}, {"c", 3, 5}});
    store.ReassignModule(5, 5);
    EXPECT_EQ(Lookup(store, "a", 5, true), 1);
    store.ReassignModule(5, 8);
    EXPECT_EQ(Lookup(store, "a", 5, true), -1);
    EXPECT_EQ(Lookup(store, "c", 8, true), 3);
    EXPECT_EQ(store.ReplaceLabel({"b"}, {"d", 4}), S_OK);
    EXPECT_EQ(Lookup(store, "d", 6, true), 4);
    store.RemoveModuleLabels(8);
    EXPECT_EQ(Walk(store, false), (Strings{"d@4#0"}));
}

// Whatever changes came before, a lookup answers as a walk through the orders
// would: the first label in name order with the name (and the module, unless
// 0), the first in address order at the address.
TEST(LabelStore, LookupsAnswerAsAWalkWouldThroughAnyChanges)
{
    std::mt19937 random(7);
    const auto pick = [&random](uint32_t count) { return static_cast<uint32_t>(random() % count); };
    const auto name = [&] { return (pick(2) != 0 ? "L" : "l") + std::to_string(pick(40)); };
    CDataLabelArray store;
    for (int step = 0; step < 3000; ++step) {
        const uint32_t what = pick(100);
        if (what < 55)
            ASSERT_TRUE(store.AddLabel({name(), pick(50)}, 1 + pick(3)));
        else if (what < 70)
            store.RemoveLabel(name());
        else if (what < 71)
            store.RemoveModuleLabels(1 + pick(3));
        else if (what < 76)
            store.ReassignModule(1 + pick(3), 1 + pick(3));
        else if (what < 81)
            store.ReplaceLabel({name()}, {name(), pick(50)});
        else if (what < 82)
            store.Clear();
        else
            store.SetDeferred(pick(2) == 0);

        const std::string wanted = name();
        const uint32_t module = pick(4);
        for (const bool exact : {true, false}) {
            int64_t first = -1;
            for (size_t i = 0; const CDataLabel* label = store.GetLabelByNameIndex(i); ++i) {
                const bool named = exact ? label->NarrowName() == wanted
                                         : strcasecmp(label->NarrowName().c_str(), wanted.c_str()) == 0;
                if (named && (module == 0 || label->ModuleId == module)) {
                    first = label->Record.Address.Value();
                    break;
                }
            }
            ASSERT_EQ(Lookup(store, wanted, module, exact), first) << step << " " << wanted << " " << module;
        }
        LabelRecord at{"", pick(50)};
        std::string firstAt = "none";
        for (size_t i = 0; const LabelRecord* record = store.GetRecordByAddressIndex(i); ++i) {
            if (record->Address == at.Address) {
                firstAt = record->Name;
                break;
            }
        }
        ASSERT_EQ(store.FindByAddress(at) == S_OK ? at.Name : "none", firstAt) << step;
    }
}

} // namespace
