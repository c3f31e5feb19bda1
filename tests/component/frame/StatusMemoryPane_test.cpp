// The status window's "Memory" page.
#include <gtest/gtest.h>

#include <cstdio>

#include "component/memory/CStatusMemoryPane.h"
#include "support/RecordingEvaluator.h"
#include "support/StateFixture.h"

namespace
{

// Writes addresses the way a platform may: lower case, no prefix.
struct LowerCaseAddresses : RecordingEvaluator {
    HRESULT FormatAddress(uint32_t v, VariantBool, VariantBool autoSize, VariantBool prefix,
                          std::string& t) override
    {
        char buffer[16];
        std::snprintf(buffer, sizeof buffer, autoSize == VARIANT_TRUE && prefix == VARIANT_FALSE ? "%x" : "?",
                      v);
        t = buffer;
        return S_OK;
    }
};

using StatusMemoryPane = StateFixture;

TEST_F(StatusMemoryPane, OffersItsPageOnceTheStateIsInitialised)
{
    ASSERT_EQ(state->Initialise(&registry, 1), S_OK);
    int32_t count = 0;
    IUnknown** providers = nullptr;
    ASSERT_EQ(registry.GetProviders(Ids::IQStatusClient, count, providers), S_OK);
    ASSERT_EQ(count, 1);
    auto* pane = static_cast<IQStatusClient*>(providers[0]);

    int32_t rows = -1;
    ASSERT_EQ(pane->GetRowCount(Ids::StatusMemoryPage, rows), S_OK);
    ASSERT_EQ(rows, 1) << "no program is loaded: the heading alone";
    std::string text;
    EXPECT_EQ(pane->GetRowText(Ids::StatusMemoryPage, 1, text), E_FAIL);

    const Guid other = Ids::IQStatusClient;
    EXPECT_EQ(pane->GetRowCount(other, rows), S_OK);
    EXPECT_EQ(rows, 0);
    text = "stale";
    EXPECT_EQ(pane->GetRowText(other, 0, text), S_OK);
    EXPECT_EQ(text, "");
    state->Terminate(1);
}

TEST(StatusMemoryPaneRow, FileTailAndRangeInUpperCase)
{
    LowerCaseAddresses evaluator;
    EXPECT_EQ(
        CStatusMemoryPane::AreaRow("/home/dev/firmware/build/blinky.elf", 0x800a000, 0x800bfff, &evaluator),
        "...are/build/blinky.elf\t800A000-800BFFF");
    EXPECT_EQ(CStatusMemoryPane::AreaRow("a.elf", 0, 0xff, &evaluator), "...a.elf\t0-FF");
}

} // namespace
