#include <gtest/gtest.h>

#include <string>

#include "workbench/ErrorTableService.h"

namespace
{

constexpr HRESULT kCode = MakeResult(0x80040300u);
constexpr HRESULT kOther = MakeResult(0x80040301u);

std::string TextOf(ErrorTableService& table, HRESULT code, HRESULT expected)
{
    std::string text = "untouched";
    EXPECT_EQ(table.GetText(code, text), expected);
    return text;
}

TEST(ErrorTable, KeepsTheLatestTextOfACodeUntilRemoved)
{
    ErrorTableService table;
    EXPECT_EQ(TextOf(table, kCode, E_FAIL), "untouched");
    EXPECT_EQ(table.AddText(kCode, "old"), S_OK);
    EXPECT_EQ(table.AddText(kCode, "Target lost"), S_OK);
    EXPECT_EQ(table.AddText(kCode, ""), E_INVALIDARG) << "an empty text keeps the old";
    EXPECT_EQ(TextOf(table, kCode, S_OK), "Target lost");
    EXPECT_EQ(TextOf(table, kOther, E_FAIL), "untouched");
    EXPECT_EQ(table.RemoveText(kCode), S_OK);
    EXPECT_EQ(table.RemoveText(kCode), E_FAIL);
    EXPECT_EQ(TextOf(table, kCode, E_FAIL), "untouched");
}

} // namespace
