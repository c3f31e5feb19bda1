#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "boundary/Ids.h"
#include "support/StoreOps.h"
#include "workbench/ServiceRegistry.h"

namespace
{

std::string Named(const char* name)
{
    return name;
}

class TextValue : public ::testing::TestWithParam<TextOp>
{
};

TEST_P(TextValue, ReadsBackWhatWasWrittenAndNothingBeforeThat)
{
    const TextOp& op = GetParam();
    SettingsStore store;
    std::string out = "stale";
    EXPECT_EQ(op.get(store, kKey, out), S_FALSE);
    EXPECT_EQ(out, "");
    for (const std::string& value :
         {std::string("<none>"), std::string(""), std::string("a\0\xc3\xa9|b", 5)}) {
        ASSERT_EQ(op.set(store, kKey, value), S_OK) << store.LastError();
        out = "stale";
        EXPECT_EQ(op.get(store, kShouted, out), S_OK) << "sessions are found without regard to case";
        EXPECT_EQ(out, value);
    }
    if (op.keyedBySession) {
        EXPECT_EQ(op.get(store, kOtherSession, out), S_FALSE);
        EXPECT_EQ(out, "");
    }
    EXPECT_TRUE(store.LastError().empty()) << store.LastError();
}

INSTANTIATE_TEST_SUITE_P(SettingsStore, TextValue, ::testing::ValuesIn(TextOps()),
                         [](const auto& info) { return Named(info.param.name); });

struct NumberCase {
    NumberOp op;
    std::vector<int64_t> values;
};

class NumberValue : public ::testing::TestWithParam<NumberCase>
{
};

// Either form of truth value comes back exactly as written: only the reader
// decides whether 1, 0xFFFF or anything else counts as true.
TEST_P(NumberValue, ReadsBackExactlyAndZeroBeforeAnyWrite)
{
    const auto& [op, values] = GetParam();
    SettingsStore store;
    int64_t out = -5;
    EXPECT_EQ(op.get(store, kKey, out), S_FALSE);
    EXPECT_EQ(out, 0);
    for (int64_t value : values) {
        ASSERT_EQ(op.set(store, kKey, value), S_OK) << store.LastError();
        EXPECT_EQ(op.get(store, kKey, out), S_OK);
        EXPECT_EQ(out, value);
        if (op.keyedBySession) {
            EXPECT_EQ(op.get(store, kShouted, out), S_OK);
            EXPECT_EQ(out, value);
            EXPECT_EQ(op.get(store, kOtherSession, out), S_FALSE);
        }
    }
}

std::vector<NumberCase> NumberCases()
{
    std::vector<NumberCase> cases;
    for (auto& op : FlagOps())
        cases.push_back({op, {0xFFFF, 0, 1, 0x8000}});
    for (auto& op : IntOps())
        cases.push_back({op, {1, 0, -1, 0xFFFF, INT32_MIN, INT32_MAX}});
    return cases;
}

INSTANTIATE_TEST_SUITE_P(SettingsStore, NumberValue, ::testing::ValuesIn(NumberCases()),
                         [](const auto& info) { return Named(info.param.op.name); });

class VariantValue : public ::testing::TestWithParam<VariantOp>
{
};

TEST_P(VariantValue, KeepsEveryVariantExactly)
{
    const VariantOp& op = GetParam();
    SettingsStore store;
    Variant out = Variant::String("stale");
    EXPECT_EQ(op.get(store, kKey, out), S_FALSE);
    EXPECT_EQ(out, Variant());
    Variant nested =
        Variant::Array(VT_ARRAY | VT_VARIANT, {StringList({"a"}), Variant::Array(VT_ARRAY_UINT)});
    for (const Variant& value :
         {StringList({"$PROJ_DIR$\\out\\a.elf", "-1", "elf", "0", "1", "4", "1"}),
          Variant::Array(VT_ARRAY_BSTR), Variant(),
          Variant::Array(VT_ARRAY_UINT, {Variant::UInt(0xFFFFFFFF)}), nested, Variant::String("x")}) {
        ASSERT_EQ(op.set(store, kKey, value), S_OK) << store.LastError();
        out = Variant::String("stale");
        EXPECT_EQ(op.get(store, kShouted, out), S_OK);
        EXPECT_EQ(out, value);
    }
}

INSTANTIATE_TEST_SUITE_P(SettingsStore, VariantValue, ::testing::ValuesIn(VariantOps()),
                         [](const auto& info) { return Named(info.param.name); });

TEST(SettingsStore, KeepsValuesOfOneNameInDifferentPlacesApart)
{
    SettingsStore store;
    ASSERT_EQ(store.SetPlatform("w", "p", "s", "sim"), S_OK);
    ASSERT_EQ(store.SetProperty("Platform", "prop", "w", "p", "s"), S_OK);
    ASSERT_EQ(store.SetString("Platform", "global"), S_OK);
    ASSERT_EQ(store.SetNumber("Platform", 7), S_OK);
    ASSERT_EQ(store.SetProperty("FIRST_CONNECTION_TAG", "NO", "w", "p", "s"), S_OK);
    std::string text;
    int32_t number = 0;
    EXPECT_EQ(store.GetPlatform("w", "p", "s", text), S_OK);
    EXPECT_EQ(text, "sim");
    EXPECT_EQ(store.GetProperty("Platform", "w", "p", "s", text), S_OK);
    EXPECT_EQ(text, "prop");
    EXPECT_EQ(store.GetString("Platform", text), S_OK);
    EXPECT_EQ(text, "global");
    EXPECT_EQ(store.GetNumber("Platform", number), S_OK);
    EXPECT_EQ(number, 7);
    // Property tags and global keys are exact.
    EXPECT_EQ(store.GetProperty("first_connection_tag", "w", "p", "s", text), S_FALSE);
    EXPECT_EQ(store.GetString("platform", text), S_FALSE);
}

// The component casts what the registry hands out straight to the interface,
// so each identifier must lead to its own face.
TEST(SettingsStore, RegistersEachFaceWhereTheComponentLooks)
{
    SettingsStore store;
    ServiceRegistry registry;
    ASSERT_EQ(store.Register(registry), S_OK);
    auto* settings = GetServiceAs<IQDebugSettingsStore>(&registry, Ids::IQDebugSettingsStore);
    auto* data = GetServiceAs<IQSessionData>(&registry, Ids::IQSessionData);
    auto* properties = GetServiceAs<IQTargetRegistry>(&registry, Ids::IQTargetRegistry);
    ASSERT_TRUE(settings && data && properties);
    EXPECT_EQ(settings->SetPlatform("w", "p", "s", "sim"), S_OK);
    EXPECT_EQ(data->SaveValue("w", "p", "s", StringList({"b"})), S_OK);
    EXPECT_EQ(
        properties->SetProperty("RESET_CPU_AFTER_DOWNLOAD_TAG", "VARIANT_TRUE_STORE_TAG", "w", "p", "s"),
        S_OK);
    std::string text;
    Variant value;
    EXPECT_EQ(store.GetPlatform("W", "P", "S", text), S_OK);
    EXPECT_EQ(text, "sim");
    EXPECT_EQ(store.LoadValue("w", "p", "s", value), S_OK);
    EXPECT_EQ(value, StringList({"b"}));
    EXPECT_EQ(store.GetProperty("RESET_CPU_AFTER_DOWNLOAD_TAG", "w", "p", "s", text), S_OK);
    EXPECT_EQ(text, "VARIANT_TRUE_STORE_TAG");

    EXPECT_EQ(store.Unregister(registry), S_OK);
    for (const Guid& id : {Ids::IQDebugSettingsStore, Ids::IQSessionData, Ids::IQTargetRegistry}) {
        IUnknown* out = nullptr;
        EXPECT_EQ(registry.GetService(id, &out), E_FAIL);
    }
}

TEST(SettingsStore, UnregisterLeavesASuccessorAlone)
{
    SettingsStore first, second;
    ServiceRegistry registry;
    ASSERT_EQ(first.Register(registry), S_OK);
    ASSERT_EQ(second.Register(registry), S_OK);
    EXPECT_EQ(first.Unregister(registry), S_FALSE);
    EXPECT_EQ(GetServiceAs<IQTargetRegistry>(&registry, Ids::IQTargetRegistry),
              static_cast<IQTargetRegistry*>(&second));
}

TEST(SettingsStore, BatchListIsChangedWhereItIsStored)
{
    SettingsStore store;
    auto append = [&](const char* entry) {
        return store.UpdateCommandFiles("w", "p", "s", [&](Variant& files) {
            Variant list = files.Type() == VT_EMPTY ? Variant::Array(VT_ARRAY_BSTR) : files;
            list.Elements().push_back(Variant::String(entry));
            files = list;
        });
    };
    ASSERT_EQ(append("a.qdc"), S_OK);
    ASSERT_EQ(append("0"), S_OK);
    Variant files;
    EXPECT_EQ(store.GetCommandFiles("W", "P", "S", files), S_OK);
    EXPECT_EQ(files, StringList({"a.qdc", "0"}));
}

TEST(SettingsStore, WithoutADatabaseRunsInMemoryAndSaysSoUnlessChosen)
{
    EXPECT_EQ(SettingsStore().LastError(), "");
    SettingsStore store(std::shared_ptr<Database>{});
    EXPECT_TRUE(store.InMemory());
    EXPECT_NE(store.LastError().find("kept in memory"), std::string::npos) << store.LastError();
    std::string text;
    EXPECT_EQ(store.SetPlatform("w", "p", "s", "sim"), S_OK);
    EXPECT_EQ(store.GetPlatform("w", "p", "s", text), S_OK);
    EXPECT_EQ(text, "sim");
}

} // namespace
