// Text arguments: plain strings, file names and unevaluated expressions.
#include <gtest/gtest.h>

#include <filesystem>

#include "component/command/CArgExpression.h"
#include "component/command/CArgString.h"
#include "component/command/CArgStringFileNameEx.h"

namespace
{

TEST(CArgString, AnEmptyTokenTakesTheDefaultAndFailsOnlyWhenRequired)
{
    for (bool required : {true, false}) {
        SCOPED_TRACE(required);
        CArgString arg(required, "dflt");
        EXPECT_EQ(arg.Parse("", 0), !required);
        EXPECT_EQ(arg.Error, required ? 2 : 0);
        EXPECT_EQ(arg.Value, "dflt");
        EXPECT_TRUE(arg.UsedDefault);

        EXPECT_TRUE(arg.Parse("\"a b\"", 1));
        EXPECT_EQ(arg.Value, "\"a b\"") << "quotes stay";
        EXPECT_EQ(arg.Raw, "\"a b\"");
        EXPECT_EQ(arg.Error, 0);
        EXPECT_FALSE(arg.UsedDefault);
    }
}

std::string ExpandWorkspace(const std::string& text)
{
    std::string out = text;
    if (auto at = out.find("$(WORKSPACE)"); at != std::string::npos)
        out.replace(at, 12, "/ws");
    return out;
}

struct PathCase {
    const char* token;
    bool expand, strip, collapse, absolute;
    std::string path;
};

TEST(CArgStringFileNameEx, EachStepActsOnlyWhenItsFlagIsSet)
{
    const PathCase cases[] = {
        {"a\\b\\c.x", false, false, false, false, "a/b/c.x"},
        {"\"my file.x\"", false, true, false, false, "my file.x"},
        {"\"my file.x\"", false, false, false, false, "\"my file.x\""},
        {"\"", false, true, false, false, "\""},
        {"a//b///c", false, false, true, false, "a/b/c"},
        {"a//b", false, false, false, false, "a//b"},
        {"\\\\server\\share\\\\x", false, false, true, false, "//server/share/x"},
        {"//", false, false, true, false, "/"},
        {"$(WORKSPACE)\\out.mot", true, false, false, false, "/ws/out.mot"},
        {"$(WORKSPACE)\\out.mot", false, false, false, false, "$(WORKSPACE)/out.mot"},
        {"out/../x.mot", true, false, false, true, std::filesystem::current_path().string() + "/x.mot"},
        {"./x.mot", true, false, false, true, std::filesystem::current_path().string() + "/x.mot"},
        {"out/../x.mot", false, false, false, true, "out/../x.mot"},
        {"/a/../b", true, false, false, true, "/a/../b"},
        {"\"$(WORKSPACE)//x\"", true, true, true, true, "/ws/x"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.token);
        CArgStringFileNameEx arg(nullptr, true, "", c.expand, c.strip, c.collapse, c.absolute,
                                 ExpandWorkspace);
        EXPECT_TRUE(arg.Parse(c.token, 0));
        EXPECT_EQ(arg.Value, c.token) << "the text as typed is kept";
        EXPECT_EQ(arg.Path, c.path);
    }
}

TEST(CArgStringFileNameEx, AMissingNameKeepsTheStringsOutcomeAndWorksOnTheDefault)
{
    CArgStringFileNameEx required(nullptr, true, "", true, true, true, true);
    EXPECT_FALSE(required.Parse("", 0));
    EXPECT_EQ(required.Error, 2);
    EXPECT_EQ(required.Path, "") << "an empty name is not made into the directory";

    CArgStringFileNameEx optional(nullptr, false, "d\\e.x", false, false, false, false);
    EXPECT_TRUE(optional.Parse("", 0));
    EXPECT_TRUE(optional.UsedDefault);
    EXPECT_EQ(optional.Path, "d/e.x");
}

TEST(CArgExpression, AQuotedTokenIsNoExpression)
{
    CArgExpression required(true), optional(false);
    EXPECT_TRUE(required.Parse("a+1", 0));
    EXPECT_EQ(required.Value, "a+1");
    EXPECT_FALSE(required.Parse("\"a\"", 1));
    EXPECT_EQ(required.Error, 2);
    EXPECT_EQ(required.Raw, "\"a\"");
    EXPECT_EQ(required.Value, "");
    EXPECT_FALSE(required.Parse("", 0));

    EXPECT_TRUE(optional.Parse("\"a\"", 1));
    EXPECT_EQ(optional.Value, "");
    EXPECT_EQ(optional.Error, 0);
    EXPECT_FALSE(optional.UsedDefault) << "the quoted token is consumed";
}

} // namespace
