#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <tuple>
#include <vector>

#include "boundary/Ids.h"
#include "support/StoreOps.h"
#include "support/TempFolder.h"
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
// so each identifier must lead to its own face; a store going away leaves a
// successor's registration alone.
TEST(SettingsStore, RegistersEachFaceWhereTheComponentLooks)
{
    SettingsStore store, successor;
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
    ASSERT_EQ(store.Register(registry), S_OK);
    ASSERT_EQ(successor.Register(registry), S_OK);
    EXPECT_EQ(store.Unregister(registry), S_FALSE);
    EXPECT_EQ(GetServiceAs<IQTargetRegistry>(&registry, Ids::IQTargetRegistry),
              static_cast<IQTargetRegistry*>(&successor));
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

// Why a file is refused is the database's business; here, that the store goes on.
TEST(SettingsStore, WithoutADatabaseRunsInMemoryAndSaysSoUnlessChosen)
{
    EXPECT_EQ(SettingsStore().LastError(), "");
    TempFolder dir;
    const auto file = dir.WriteFile("workspace.db", "[settings]\n");
    const std::pair<std::shared_ptr<SettingsStore>, std::string> cases[] = {
        {std::make_shared<SettingsStore>(std::shared_ptr<Database>{}), "No store database was given. "},
        {std::make_shared<SettingsStore>(file), "Cannot open the store '" + file.string() + "'"}};
    for (const auto& [store, reason] : cases) {
        EXPECT_TRUE(store->InMemory());
        EXPECT_EQ(store->LastError().rfind(reason, 0), 0u) << store->LastError();
        EXPECT_NE(store->LastError().find("kept in memory for this session"), std::string::npos);
        std::string text;
        EXPECT_EQ(store->SetPlatform("w", "p", "s", "sim"), S_OK);
        EXPECT_EQ(store->GetPlatform("w", "p", "s", text), S_OK);
        EXPECT_EQ(text, "sim");
    }
}

} // namespace
