#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "boundary/Ids.h"
#include "support/TempFolder.h"
#include "workbench/Workbench.h"
#include "workbench/store/SettingsStore.h"

namespace
{

// The service answers from whichever store is registered: what one run wrote,
// the next run of the workspace reads; with no store open nothing is kept. The
// workbench's prompts keep the user's choices there too.
TEST(RecentListService, ValuesOutliveTheStoreAndMissingOnesFail)
{
    TempFolder folder;
    std::ostringstream out;
    Workbench bench(out, nullptr, false);
    auto* lists = GetServiceAs<IQRecentListStore>(&bench.Registry(), Ids::RecentListService);
    ASSERT_NE(lists, nullptr);
    std::string value = "left";
    Guid key;
    EXPECT_EQ(lists->WriteValue("MRU Program Open", "File1", "/fw/a.bin"), E_FAIL);
    {
        SettingsStore store(folder / "workspace.db");
        store.Register(bench.Registry());
        EXPECT_EQ(lists->WriteValue("MRU Program Open", "File1", "/fw/a.bin"), S_OK);
        EXPECT_EQ(lists->WriteValue("MRU Program Open", "Browse", ""), S_OK);
        ASSERT_EQ(bench.Prompts().AddPrompt(Ids::Component, "Missing", VARIANT_TRUE, key), S_OK);
        bench.Prompts().SetPromptEnabled(key, 0);
        store.Unregister(bench.Registry());
    }
    EXPECT_EQ(lists->ReadValue("MRU Program Open", "File1", value), E_FAIL);

    SettingsStore store(folder / "workspace.db");
    store.Register(bench.Registry());
    EXPECT_EQ(lists->ReadValue("MRU Program Open", "File1", value), S_OK);
    EXPECT_EQ(value, "/fw/a.bin");
    EXPECT_EQ(lists->ReadValue("MRU Program Open", "Browse", value), S_OK);
    EXPECT_EQ(value, "");
    EXPECT_EQ(lists->ReadValue("MRU Program Save", "File1", value), E_FAIL);
    EXPECT_EQ(lists->ReadValue("MRU Program Open", "File2", value), E_FAIL);
    ASSERT_EQ(bench.Prompts().AddPrompt(Ids::Component, "Missing", VARIANT_TRUE, key), S_OK);
    EXPECT_EQ(bench.Prompts().IsPromptEnabled(key), 0);
    store.Unregister(bench.Registry());
}

} // namespace
