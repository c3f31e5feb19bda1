#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "workbench/ConsoleMessageBox.h"

namespace
{

struct ShowCase {
    const char* name;
    MessageIcon icon;
    std::string text;
    HRESULT expected;
    std::string output;
};

class MessageBoxShow : public ::testing::TestWithParam<ShowCase>
{
};

TEST_P(MessageBoxShow, WritesPrefixedLines)
{
    std::ostringstream out;
    ConsoleMessageBox box(out, nullptr, false);
    EXPECT_EQ(box.ShowMessage(GetParam().text, GetParam().icon), GetParam().expected);
    EXPECT_EQ(out.str(), GetParam().output);
}

INSTANTIATE_TEST_SUITE_P(
    MessageBoxShow, MessageBoxShow,
    ::testing::Values(
        ShowCase{"Stop", MessageIcon::Stop, "No target", S_OK, "Error: No target\n"},
        ShowCase{"Warning", MessageIcon::Warning, "Slow link", S_OK, "Warning: Slow link\n"},
        ShowCase{"Information", MessageIcon::Information, "Done", S_OK, "Done\n"},
        ShowCase{"Question", MessageIcon::Question, "Hm", S_OK, "Hm\n"},
        ShowCase{"EveryLinePrefixed", MessageIcon::Stop, "one\ntwo", S_OK, "Error: one\nError: two\n"},
        ShowCase{"ClosingNewlineEndsTheLine", MessageIcon::Warning, "one\r\n", S_OK, "Warning: one\n"},
        ShowCase{"BlankLineKept", MessageIcon::Information, "a\n\nb", S_OK, "a\n\nb\n"},
        ShowCase{"UnknownIconWritesNothing", static_cast<MessageIcon>(9), "x", E_INVALIDARG, ""}),
    [](const auto& info) { return std::string(info.param.name); });

struct AskCase {
    const char* name;
    bool hasInput;
    bool interactive;
    std::string input;
    VariantBool defaultAnswer;
    VariantBool expected;
    std::string output;
};

class MessageBoxAsk : public ::testing::TestWithParam<AskCase>
{
};

TEST_P(MessageBoxAsk, AnswersAsTheUserOrTheDefaultSays)
{
    const auto& c = GetParam();
    std::ostringstream out;
    std::istringstream in(c.input);
    ConsoleMessageBox box(out, c.hasInput ? &in : nullptr, c.interactive);
    VariantBool answer = 0x1234;
    EXPECT_EQ(box.AskYesNo("Reload?", c.defaultAnswer, answer), S_OK);
    EXPECT_EQ(answer, c.expected);
    EXPECT_EQ(out.str(), c.output);
}

constexpr VariantBool Y = VARIANT_TRUE, N = VARIANT_FALSE;

INSTANTIATE_TEST_SUITE_P(
    MessageBoxBatch, MessageBoxAsk,
    ::testing::Values(AskCase{"NoInputDefaultYes", false, true, "", Y, Y, "Reload? [y/n] y (default)\n"},
                      AskCase{"NoInputDefaultNo", false, true, "", N, N, "Reload? [y/n] n (default)\n"},
                      AskCase{"NotInteractiveIgnoresInput", true, false, "y\n", N, N,
                              "Reload? [y/n] n (default)\n"}),
    [](const auto& info) { return std::string(info.param.name); });

INSTANTIATE_TEST_SUITE_P(
    MessageBoxInteractive, MessageBoxAsk,
    ::testing::Values(AskCase{"Y", true, true, "y\n", N, Y, "Reload? [y/n] "},
                      AskCase{"YesAnyCase", true, true, "YeS\n", N, Y, "Reload? [y/n] "},
                      AskCase{"NoWithBlanks", true, true, "  no \n", Y, N, "Reload? [y/n] "},
                      AskCase{"EmptyLineTakesDefault", true, true, "\n", N, N, "Reload? [y/n] "},
                      AskCase{"EndOfInputTakesDefault", true, true, "", Y, Y, "Reload? [y/n] y (default)\n"},
                      AskCase{"InvalidAsksAgain", true, true, "maybe\nn\n", Y, N,
                              "Reload? [y/n] Please answer y or n.\nReload? [y/n] "},
                      AskCase{"ThreeInvalidTakeDefault", true, true, "a\nb\nc\ny\n", N, N,
                              "Reload? [y/n] Please answer y or n.\nReload? [y/n] Please answer y or n.\n"
                              "Reload? [y/n] Please answer y or n.\nNo valid answer; taking n (default)\n"}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
