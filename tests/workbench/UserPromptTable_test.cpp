#include <gtest/gtest.h>

#include <set>
#include <string>
#include <tuple>

#include "boundary/Ids.h"
#include "support/Recording.h"
#include "workbench/ServiceRegistry.h"
#include "workbench/UserPromptTableService.h"
#include "workbench/store/SettingsStore.h"

namespace
{

constexpr Guid kOwner = "{22222222-0000-0000-0000-000000000001}"_guid;
constexpr Guid kOtherOwner = "{22222222-0000-0000-0000-000000000002}"_guid;
constexpr Guid kUnknownKey = "{22222222-0000-0000-0000-0000000000FF}"_guid;

using AskMethod = HRESULT (IQUserPromptTable::*)(Guid, const std::string&, VariantBool&);

TEST(PromptTable, AsksOnlyWhileEnabledAndAnswersYesWhenNot)
{
    // state: 'e' enabled, 'd' disabled, 'u' no such key; reply: what the message box answers.
    struct Case {
        char state;
        VariantBool reply;
        HRESULT expected;
        VariantBool answer;
    };
    const Case cases[] = {{'e', VARIANT_TRUE, S_OK, VARIANT_TRUE},
                          {'e', VARIANT_FALSE, S_OK, VARIANT_FALSE},
                          {'d', VARIANT_FALSE, S_OK, VARIANT_TRUE},
                          {'u', VARIANT_TRUE, E_FAIL, VARIANT_FALSE}};
    for (AskMethod method : {&IQUserPromptTable::AskYesNo, &IQUserPromptTable::AskYesNoReload})
        for (const auto& c : cases) {
            RecordingMessageBox box;
            box.reply = c.reply;
            UserPromptTableService table(&box);
            Guid key = kUnknownKey;
            if (c.state != 'u') {
                ASSERT_EQ(table.AddPrompt(kOwner, "reload", ToVariantBool(c.state == 'e'), key), S_OK);
            }
            VariantBool answer = 0x1234;
            IQUserPromptTable& asInterface = table;
            EXPECT_EQ((asInterface.*method)(key, "Reload the file?", answer), c.expected);
            EXPECT_EQ(answer, c.answer);
            const size_t asked = c.state == 'e' ? 1 : 0;
            EXPECT_EQ(box.shown, std::vector<std::string>(asked, "Reload the file?"));
            EXPECT_EQ(box.defaults, std::vector<VariantBool>(asked, VARIANT_TRUE));
        }
}

TEST(PromptTable, EnableListDeleteAndRemoveAllOfOwner)
{
    RecordingMessageBox box;
    UserPromptTableService table(&box);
    Guid a, b, c, unchanged = kUnknownKey;
    EXPECT_EQ(table.AddPrompt(kOwner, "", VARIANT_TRUE, unchanged), E_INVALIDARG);
    EXPECT_EQ(unchanged, kUnknownKey);
    table.AddPrompt(kOwner, "a", VARIANT_TRUE, a);
    table.AddPrompt(kOtherOwner, "b", VARIANT_FALSE, b);
    table.AddPrompt(kOwner, "c", VARIANT_TRUE, c);
    EXPECT_EQ(
        std::tuple(table.IsPromptEnabled(a), table.IsPromptEnabled(b), table.IsPromptEnabled(kUnknownKey)),
        std::tuple(1, 0, 0));
    EXPECT_EQ(table.SetPromptEnabled(a, 0), S_OK);
    EXPECT_EQ(table.SetPromptEnabled(b, 5), S_OK);
    EXPECT_EQ(std::pair(table.IsPromptEnabled(a), table.IsPromptEnabled(b)), std::pair(0, 1))
        << "any non-zero enables";
    EXPECT_EQ(table.SetPromptEnabled(kUnknownKey, 1), E_FAIL);
    EXPECT_EQ(table.SetPromptEnabled(b, 0), S_OK);

    std::set<std::string> keys{a.ToText(), b.ToText(), c.ToText()};
    for (int i = 0; i < 300; ++i) {
        Guid key;
        table.AddPrompt(kOtherOwner, "q" + std::to_string(i), VARIANT_TRUE, key);
        EXPECT_FALSE(key.IsNull());
        keys.insert(key.ToText());
    }
    EXPECT_EQ(keys.size(), 303u) << "keys are unique";
    const auto list = table.List();
    ASSERT_EQ(list.size(), 303u);
    EXPECT_EQ(std::tie(list[1].key, list[1].owner, list[1].name, list[1].enabled),
              std::tuple(b, kOtherOwner, std::string("b"), false));

    EXPECT_EQ(table.DeletePrompt(a), S_OK);
    EXPECT_EQ(table.DeletePrompt(a), E_FAIL);
    EXPECT_EQ(table.DeletePrompt(kUnknownKey), E_FAIL);
    VariantBool answer = VARIANT_TRUE;
    EXPECT_EQ(table.AskYesNo(a, "?", answer), E_FAIL);
    EXPECT_EQ(answer, VARIANT_FALSE);

    EXPECT_EQ(table.RemoveAllOf(kOwner), 1u);
    ASSERT_EQ(table.List().size(), 301u);
    EXPECT_EQ(table.List()[0].key, b);
}

// A warning switched off by its "no" stays off for the next table on the same
// store (the next run); a "yes", another owner or another name stays as its default.
TEST(PromptTable, AWarningSwitchedOffStaysOffInTheNextRun)
{
    const std::string text = "The command batch file 'a.qdc' does not exist.";
    const std::vector<std::string> asked{text, "Show this warning again?"};
    struct Case {
        VariantBool reply;
        Guid owner;
        const char* name;
        bool shownNextRun;
    };
    const Case cases[] = {{VARIANT_FALSE, kOwner, "missing", false},
                          {VARIANT_TRUE, kOwner, "missing", true},
                          {VARIANT_FALSE, kOtherOwner, "missing", true},
                          {VARIANT_FALSE, kOwner, "other", true}};
    for (const auto& c : cases) {
        SettingsStore store;
        ServiceRegistry registry;
        ASSERT_EQ(store.Register(registry), S_OK);
        for (int run = 0; run < 2; ++run) {
            RecordingMessageBox box;
            box.reply = c.reply;
            UserPromptTableService table(&box, &registry);
            Guid key;
            table.AddPrompt(run == 0 ? kOwner : c.owner, run == 0 ? "missing" : c.name, VARIANT_TRUE, key);
            const HRESULT hr = table.ShowWarning(key, text);
            const bool shown = run == 0 || c.shownNextRun;
            EXPECT_EQ(hr, shown ? S_OK : S_FALSE) << c.name;
            EXPECT_EQ(box.shown, shown ? asked : std::vector<std::string>{}) << c.name;
            EXPECT_EQ(box.defaults, std::vector<VariantBool>(shown ? 1 : 0, VARIANT_TRUE));
        }
    }
}

} // namespace
