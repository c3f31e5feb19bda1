#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "workbench/ConsoleMessageBox.h"

namespace
{

TEST(ConsoleMessageBox, WritesEveryLineWithItsIconsPrefixAndCountsErrors)
{
    struct Case {
        MessageIcon icon;
        std::string text;
        HRESULT expected;
        std::string output;
    };
    const Case cases[] = {
        {MessageIcon::Stop, "No target", S_OK, "Error: No target\n"},
        {MessageIcon::Warning, "Slow link", S_OK, "Warning: Slow link\n"},
        {MessageIcon::Information, "Done", S_OK, "Done\n"},
        {MessageIcon::Question, "Hm", S_OK, "Hm\n"},
        {MessageIcon::Stop, "one\ntwo", S_OK, "Error: one\nError: two\n"},
        {MessageIcon::Warning, "one\r\n", S_OK, "Warning: one\n"},
        {MessageIcon::Information, "a\n\nb", S_OK, "a\n\nb\n"},
        {MessageIcon::Information, "\x1b[31mred", S_OK, "^[[31mred\n"},
        {static_cast<MessageIcon>(9), "x", E_INVALIDARG, ""},
    };
    std::ostringstream out;
    ConsoleMessageBox box(out, nullptr, false);
    for (const auto& c : cases) {
        out.str("");
        EXPECT_EQ(box.ShowMessage(c.text, c.icon), c.expected);
        EXPECT_EQ(out.str(), c.output);
    }
    EXPECT_EQ(box.Errors(), 2);
}

TEST(ConsoleMessageBox, AnswersAsTheUserOrTheDefaultSays)
{
    constexpr VariantBool Y = VARIANT_TRUE, N = VARIANT_FALSE;
    struct Case {
        bool hasInput, interactive;
        std::string input;
        VariantBool defaultAnswer, expected;
        std::string output;
    };
    const std::string again = "Reload? [y/n] Please answer y or n.\n";
    const Case cases[] = {
        {false, true, "", Y, Y, "Reload? [y/n] y (default)\n"},
        {false, true, "", N, N, "Reload? [y/n] n (default)\n"},
        {true, false, "y\n", N, N, "Reload? [y/n] n (default)\n"},
        {true, true, "y\n", N, Y, "Reload? [y/n] "},
        {true, true, "YeS\n", N, Y, "Reload? [y/n] "},
        {true, true, "  no \n", Y, N, "Reload? [y/n] "},
        {true, true, "\n", N, N, "Reload? [y/n] "},
        {true, true, "", Y, Y, "Reload? [y/n] y (default)\n"},
        {true, true, "maybe\nn\n", Y, N, again + "Reload? [y/n] "},
        {true, true, "a\nb\nc\ny\n", N, N, again + again + again + "No valid answer; taking n (default)\n"},
    };
    for (const auto& c : cases) {
        std::ostringstream out;
        std::istringstream in(c.input);
        ConsoleMessageBox box(out, c.hasInput ? &in : nullptr, c.interactive);
        VariantBool answer = 0x1234;
        EXPECT_EQ(box.AskYesNo("Reload?", c.defaultAnswer, answer), S_OK);
        EXPECT_EQ(answer, c.expected) << c.input;
        EXPECT_EQ(out.str(), c.output) << c.input;
    }
}

} // namespace
