#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "boundary/Ids.h"
#include "workbench/ErrorTableService.h"

namespace
{

constexpr HRESULT kCode = MakeResult(0x80040300u);
constexpr HRESULT kOther = MakeResult(0x80040301u);

enum class Op { Add, Remove, Get };

struct Step {
    Op op;
    HRESULT code;
    std::string text; // Add: the text; Get: the text expected afterwards
    HRESULT expected;
};

struct ErrorCase {
    const char* name;
    std::vector<Step> steps;
};

class ErrorTableRules : public ::testing::TestWithParam<ErrorCase>
{
};

TEST_P(ErrorTableRules, FollowsTheSteps)
{
    ErrorTableService table;
    int n = 0;
    for (const Step& step : GetParam().steps) {
        SCOPED_TRACE("step " + std::to_string(n++));
        switch (step.op) {
        case Op::Add:
            EXPECT_EQ(table.AddText(step.code, step.text), step.expected);
            break;
        case Op::Remove:
            EXPECT_EQ(table.RemoveText(step.code), step.expected);
            break;
        case Op::Get: {
            std::string text = "untouched";
            EXPECT_EQ(table.GetText(step.code, text), step.expected);
            EXPECT_EQ(text, step.text);
            break;
        }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(ErrorTable, ErrorTableRules,
                         ::testing::Values(ErrorCase{"UnknownCodeLeavesTextAlone",
                                                     {{Op::Get, kCode, "untouched", E_FAIL}}},
                                           ErrorCase{"AddedTextIsFound",
                                                     {{Op::Add, kCode, "Target lost", S_OK},
                                                      {Op::Get, kCode, "Target lost", S_OK},
                                                      {Op::Get, kOther, "untouched", E_FAIL}}},
                                           ErrorCase{"LaterAddReplaces",
                                                     {{Op::Add, kCode, "old", S_OK},
                                                      {Op::Add, kCode, "new", S_OK},
                                                      {Op::Get, kCode, "new", S_OK}}},
                                           ErrorCase{"RemoveThenGone",
                                                     {{Op::Add, kCode, "x", S_OK},
                                                      {Op::Remove, kCode, "", S_OK},
                                                      {Op::Get, kCode, "untouched", E_FAIL},
                                                      {Op::Remove, kCode, "", E_FAIL}}},
                                           ErrorCase{"EmptyTextIsRefusedAndKeepsTheOld",
                                                     {{Op::Add, kCode, "kept", S_OK},
                                                      {Op::Add, kCode, "", E_INVALIDARG},
                                                      {Op::Get, kCode, "kept", S_OK}}}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(ErrorTable, AnswersItsServiceIdentity)
{
    ErrorTableService table;
    void* out = nullptr;
    EXPECT_EQ(table.QueryInterface(Ids::ErrorTable, &out), S_OK);
    EXPECT_EQ(out, static_cast<IQErrorTable*>(&table));
    EXPECT_EQ(table.QueryInterface(Ids::UserPromptTable, &out), E_NOINTERFACE);
    EXPECT_EQ(table.QueryInterface(Ids::IUnknown, nullptr), E_POINTER);
}

} // namespace
