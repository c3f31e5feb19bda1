#include "component/command/file/CCmdFileVerify.h"

#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"
#include "component/frame/CDebuggerState.h"
#include "component/util/MessageFormat.h"

namespace
{
constexpr uint32_t TextNotConnected = 5123;
constexpr uint32_t TextNoFileName = 5124;
constexpr uint32_t TextNoFormat = 5126;
constexpr uint32_t TextCannotVerify = 5155;
constexpr uint32_t TextTargetCannotVerify = 57738;
constexpr CCmdFile::StatusTexts kStatusTexts{5141, 5142, 5143};
} // namespace

CCmdFileVerify::CCmdFileVerify(IQServiceRegistry* host, CDebuggerState& debugger)
    : CCmdFile(host, debugger, "file_verify", "fv", "[<format>] <filename> [<offset>] [<mode>]")
{
}

HRESULT CCmdFileVerify::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    std::string_view cursor = text;
    if (!Begin(cursor, TextNotConnected, message))
        return E_FAIL;
    if (Debugger.CanVerifyMemory() != S_OK) {
        std::string target;
        Debugger.GetTargetText1(target);
        message = FormatMessageText(TextTargetCannotVerify, target.c_str());
        return E_FAIL;
    }
    CArgStringFileNameEx file = FileNameArgument(false);
    CArgNumberUnsigned offset = NumberArgument(false, "<offset>");
    CArgKeyword mode = ModeArgument();
    // An offset out of range stops the line as a missing name would.
    if (ParseArguments(cursor, {&file, &offset, &mode}) < 3) {
        message = FormatMessageText(TextNoFileName);
        return E_FAIL;
    }
    if (!HasNoMoreText(cursor)) {
        message = MessageTooMany();
        return E_FAIL;
    }
    const std::optional<int32_t> index = FindFormat(Format);
    const std::optional<bool> verifies = index ? FormatHas(*index, READER_VERIFIES) : std::nullopt;
    if (!verifies || !*verifies) {
        message = FormatMessageText(verifies ? TextCannotVerify : TextNoFormat, Format.c_str());
        return E_FAIL;
    }
    const int32_t status = Debugger.VerifyMemory(Format, file.Path, static_cast<uint32_t>(offset.Value),
                                                 AccessSizeOf(mode), true);
    return AnswerStatus(status, kStatusTexts, file.Value, message);
}
