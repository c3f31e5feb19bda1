// Cutting a line into tokens and feeding them to arguments.
#include <gtest/gtest.h>

#include "component/command/CArg.h"
#include "component/command/CmdTokens.h"

namespace
{

struct TokenCase {
    const char* line;
    const char* token;
    int32_t quoteKind;
    const char* rest;
};

TEST(ReadToken, QuotesBracesAndBlanksAsTheLineIsWritten)
{
    const TokenCase cases[] = {
        {"", "", 0, ""},
        {"   ", "", 0, ""},
        {"  abc def", "abc", 0, " def"},
        {"a\tb c", "a\tb", 0, " c"},
        {"\tx", "\tx", 0, ""},
        {"\"a\"\"b\" c", "\"a\"b\"", 1, " c"},
        {"\"a b\"c d", "\"a b\"", 1, "c d"},
        {"\"open to end", "\"open to end", 1, ""},
        {"\"\"", "\"\"", 1, ""},
        {"{a b} c", "a b", 0, " c"},
        {"{a{b}c", "a{b", 0, "c"},
        {"{unclosed brace", "unclosed brace", 0, ""},
        {"{}", "", 0, ""},
        {"x{y}", "x{y}", 0, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        std::string_view cursor = c.line;
        int32_t quoteKind = -1;
        EXPECT_EQ(ReadToken(cursor, quoteKind), c.token);
        EXPECT_EQ(quoteKind, c.quoteKind);
        EXPECT_EQ(cursor, c.rest);
    }
}

// An argument that answers as scripted and remembers what it was given.
class ScriptedArg : public CArg
{
public:
    ScriptedArg(bool result, bool usesDefault) : CArg(false), result_(result), usesDefault_(usesDefault) {}
    bool Parse(const std::string& text, int32_t quoteKind) override
    {
        seen = text + (quoteKind ? " (quoted)" : "");
        UsedDefault = usesDefault_;
        return result_;
    }
    std::string seen = "-";

private:
    bool result_, usesDefault_;
};

TEST(ParseArguments, CountsSuccessesAndStopsAtTheFirstRefusal)
{
    ScriptedArg a(true, false), b(false, false), c(true, false);
    std::string_view cursor = "one  two three";
    EXPECT_EQ(ParseArguments(cursor, {&a, &b, &c}), 1);
    EXPECT_EQ((std::vector<std::string>{a.seen, b.seen, c.seen}),
              (std::vector<std::string>{"one", "two", "-"}));
    EXPECT_EQ(cursor, "  two three") << "the refused token is put back";
}

TEST(ParseArguments, AnArgumentThatTookItsDefaultPassesTheTokenOn)
{
    ScriptedArg a(true, true), b(true, false), c(true, false);
    std::string_view cursor = "\"one\" two";
    EXPECT_EQ(ParseArguments(cursor, {&a, &b, &c}), 3);
    EXPECT_EQ((std::vector<std::string>{a.seen, b.seen, c.seen}),
              (std::vector<std::string>{"\"one\" (quoted)", "\"one\" (quoted)", "two"}));
    EXPECT_EQ(cursor, "");
}

TEST(ParseArguments, ANullEntryEndsTheListAndLeavesTheRest)
{
    ScriptedArg a(true, false), b(true, false);
    std::string_view cursor = "one two";
    EXPECT_EQ(ParseArguments(cursor, {&a, nullptr, &b}), 1);
    EXPECT_EQ(b.seen, "-");
    EXPECT_EQ(cursor, " two");
    EXPECT_FALSE(HasNoMoreText(cursor));
    EXPECT_FALSE(HasNoMoreText("\n")) << "only blanks and tabs count as nothing";
}

} // namespace
