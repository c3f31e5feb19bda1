// Choosing a keyword from a fixed list.
#include <gtest/gtest.h>

#include "component/command/CArgKeyword.h"

namespace
{

struct KeywordCase {
    std::vector<std::string> keywords;
    bool required;
    const char* token;
    int32_t quoteKind;
    bool result;
    int32_t selected;
    int32_t error;
    bool usedDefault;
};

TEST(CArgKeyword, ExactMatchWinsAndOtherwiseTheLastPrefix)
{
    const std::vector<std::string> onOff{"on", "off"}, offOn{"off", "on"}, onOnward{"on", "onward"};
    const KeywordCase cases[] = {
        {onOff, true, "o", 0, true, 1, 0, false},      {offOn, true, "o", 0, true, 1, 0, false},
        {onOff, true, "of", 0, true, 1, 0, false},     {onOff, true, "on", 0, true, 0, 0, false},
        {onOnward, true, "on", 0, true, 0, 0, false},  {onOnward, true, "onw", 0, true, 1, 0, false},
        {onOff, true, "OF", 0, true, 1, 0, false},     {onOff, true, "On", 0, true, 0, 0, false},
        {onOff, true, "offf", 0, false, -1, 3, false}, {onOff, true, "\"on\"", 1, false, -1, 3, false},
        {onOff, true, "", 0, false, -1, 2, false},     {onOff, false, "", 0, true, 1, 0, true},
        {onOff, false, "x", 0, true, 1, 0, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.token) + " of " + c.keywords.front() + ",...");
        CArgKeyword arg(c.required, c.keywords, 1);
        const bool result = arg.Parse(c.token, c.quoteKind);
        EXPECT_EQ(std::tie(result, arg.Selected, arg.Error, arg.UsedDefault, arg.Raw),
                  std::make_tuple(c.result, c.selected, c.error, c.usedDefault, std::string(c.token)));
    }
}

TEST(CArgKeyword, ReparsingForgetsTheLastOutcome)
{
    CArgKeyword arg(true, "byte\0word\0long\0", 0);
    EXPECT_FALSE(arg.Parse("quad", 0));
    EXPECT_TRUE(arg.Parse("w", 0));
    EXPECT_EQ(arg.Error, 0);
    EXPECT_EQ(arg.SelectedKeyword(), "word");
}

TEST(CArgKeyword, ZeroEndedListGivesTheKeywordsAndTheirMessageList)
{
    CArgKeyword arg(false, "byte\0word\0long\0", 0);
    EXPECT_EQ(arg.Keywords, (std::vector<std::string>{"byte", "word", "long"}));
    EXPECT_EQ(arg.SelectedKeyword(), "") << "nothing selected before a parse";
    EXPECT_EQ(CArgKeyword(false, "", 0).KeywordList(), "()");
}

} // namespace
