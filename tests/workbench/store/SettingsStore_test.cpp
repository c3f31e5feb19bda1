#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <tuple>
#include <vector>

#include "boundary/Ids.h"
#include "support/StoreOps.h"
#include "workbench/ServiceRegistry.h"

namespace
{

// Each value's own round trip is the persistence test's; here, what lies between values.
TEST(SettingsStore, KeepsValuesOfOneNameInDifferentPlacesApart)
{
    SettingsStore store;
    ASSERT_EQ(store.SetPlatform("w", "p", "s", "sim"), S_OK);
    ASSERT_EQ(store.SetProperty("Platform", "prop", "w", "p", "s"), S_OK);
    ASSERT_EQ(store.SetString("Platform", "global"), S_OK);
    ASSERT_EQ(store.SetNumber("Platform", 7), S_OK);
    ASSERT_EQ(store.SetProperty("FIRST_CONNECTION_TAG", "NO", "w", "p", "s"), S_OK);
    std::string platform, property, global, text;
    int32_t number = 0;
    EXPECT_EQ(store.GetPlatform("w", "p", "s", platform) |
                  store.GetProperty("Platform", "w", "p", "s", property) |
                  store.GetString("Platform", global) | store.GetNumber("Platform", number),
              S_OK);
    EXPECT_EQ(std::tuple(platform, property, global, number), std::tuple("sim", "prop", "global", 7));
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
    EXPECT_EQ(GetServiceAs<IQDebugSettingsStore>(&registry, Ids::IQDebugSettingsStore),
              static_cast<IQDebugSettingsStore*>(&store));
    EXPECT_EQ(GetServiceAs<IQSessionData>(&registry, Ids::IQSessionData),
              static_cast<IQSessionData*>(&store));
    EXPECT_EQ(GetServiceAs<IQTargetRegistry>(&registry, Ids::IQTargetRegistry),
              static_cast<IQTargetRegistry*>(&store));

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
