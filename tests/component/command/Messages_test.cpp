// The framework's messages: 64-bit formats, argument errors and manager failures.
#include <gtest/gtest.h>

#include "boundary/interfaces/Component.h"
#include "component/command/CArgKeyword.h"
#include "component/command/CArgNumberUnsigned.h"
#include "component/command/CArgString.h"
#include "component/command/CmdMessages.h"
#include "component/command/CmdParse.h"
#include "component/util/MessageFormat.h"
#include "support/PlainObject.h"

namespace
{

TEST(MessageFormat, I64LengthPrefixesBecomeLongLong)
{
    const std::pair<const char*, const char*> cases[] = {
        {"%I64X %I64x %I64u %I64i %I64d", "%llX %llx %llu %lli %lld"},
        {"%08I64X", "%08llX"},
        {"%-4I64u|", "%-4llu|"},
        {"100%% %I64X", "100%% %llX"},
        {"%%I64X", "%%I64X"},
        {"%s %d I64", "%s %d I64"},
        {"%I6", "%I6"},
        {"end %", "end %"},
    };
    for (const auto& [in, out] : cases)
        EXPECT_EQ(MessageFormat::TranslateFormat64(in), out) << in;
}

TEST(MessageFormat, StoredTextsAreFilledWithSixtyFourBitValues)
{
    EXPECT_EQ(MessageFormat::Format("H'%I64X (%I64u)", 0x123456789ABull, 0x123456789ABull),
              "H'123456789AB (1250999896491)");
    EXPECT_EQ(FormatMessageText(30011, -5), "Unknown error code -5");
    EXPECT_EQ(FormatMessageText(1), "") << "an unknown number gives no text";
}

// The ordinary texts of an argument's errors are typed in the transcript cases;
// these are the ones a case cannot reach.
TEST(ArgumentMessage, ARefusalOfItsOwnWinsAndAStringHasNoRange)
{
    CArgNumberUnsigned address(true, 0, nullptr, 0, 0, 0xFFFFFFFF, "<address>");
    EXPECT_EQ(ArgumentMessage(address), "");
    CArgKeyword mode(true, "byte\0word\0", 0, "<mode>");
    ASSERT_FALSE(mode.Parse("quad", 0));
    mode.Refusal = "Not enough parameters";
    EXPECT_EQ(ArgumentMessage(mode), "Not enough parameters");

    CArgString name(true, "", "3");
    name.Error = CArg::ErrorRange;
    EXPECT_EQ(ArgumentMessage(name), "Parameter '3' is invalid");
}

// The parse of a line against its arguments, without any command.
TEST(ParseLine, TheFirstArgumentThatStopsTheLineExplainsItself)
{
    const std::pair<const char*, const char*> cases[] = {
        {"", "Parameter '<name>' is empty"},
        {"n", "Parameter '<mode>' is empty"},
        {"n dword", "Parameter 'dword' is not found. Input keyword(byte,word,long)"},
        {"n w extra", "Too many parameters"},
        {"n w \t", nullptr},
    };
    for (const auto& [line, message] : cases) {
        SCOPED_TRACE(line);
        CArgString name(true, "", "<name>");
        CArgKeyword mode(true, "byte\0word\0long\0", 0, "<mode>");
        const auto refused = ParseLine(line, {&name, &mode}, "Too many parameters");
        ASSERT_EQ(refused.has_value(), message != nullptr);
        if (refused) {
            EXPECT_EQ(refused->Message, message);
            EXPECT_EQ(refused->Result, E_FAIL);
        }
    }
}

// Explains two codes, one with an empty text; for any other it fails but
// leaves a text behind, which a caller must not show.
struct TwoCodeReporter : IQErrorReporter {
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerFrom({Ids::IUnknown, Ids::IQErrorReporter}, iid, this, out);
    }
    TESSEL_NOT_REFCOUNTED
    HRESULT GetErrorText(HRESULT code, std::string& text) override
    {
        text = code == E_FAIL ? "Target lost" : code == E_INVALIDARG ? "" : "no text";
        return code == E_FAIL || code == E_INVALIDARG ? S_OK : E_FAIL;
    }
};

TEST(ErrorTextFor, TheManagersOwnTextOrTheNumber)
{
    TwoCodeReporter reporter;
    EXPECT_EQ(ErrorTextFor(&reporter, E_FAIL), "Target lost");
    EXPECT_EQ(ErrorTextFor(&reporter, E_INVALIDARG), "Unknown error code -2147024809");
    EXPECT_EQ(ErrorTextFor(&reporter, E_NOTIMPL), "Unknown error code -2147467263");
    PlainObject silent;
    EXPECT_EQ(ErrorTextFor(&silent, E_FAIL), "Unknown error code -2147467259");
    EXPECT_EQ(ErrorTextFor(nullptr, E_FAIL), "Unknown error code -2147467259");
}

} // namespace
