#include "component/command/file/CCmdFileSave.h"

#include <strings.h>

#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"
#include "component/frame/CDebuggerState.h"
#include "component/util/MessageFormat.h"

namespace
{
constexpr uint32_t TextNoFileName = 5113;
constexpr uint32_t TextNotConnected = 5115;
constexpr uint32_t TextNoFormat = 5116;
constexpr uint32_t TextCannotWrite = 5117;
constexpr CCmdFile::StatusTexts kStatusTexts{5138, 5139, 5140};
} // namespace

CCmdFileSave::CCmdFileSave(IQServiceRegistry* host, CDebuggerState& debugger)
    : CCmdFile(host, debugger, "file_save", "fs", "[<format>] <filename> <start> <end> [<mode>]")
{
}

HRESULT CCmdFileSave::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    std::string_view cursor = text;
    if (!Begin(cursor, TextNotConnected, message))
        return E_FAIL;
    CArgStringFileNameEx file = FileNameArgument(false);
    CArgNumberUnsigned start = NumberArgument(true, "<start>");
    CArgNumberUnsigned end = NumberArgument(true, "<end>");
    CArgKeyword mode = ModeArgument();
    const int count = ParseArguments(cursor, {&file, &start, &end, &mode});
    if (count == 0) {
        message = FormatMessageText(TextNoFileName);
        return E_FAIL;
    }
    if (count == 1 || count == 2) {
        // Missing or not a number, it is told as out of range, with the token
        // as typed (or nothing) where the parameter's name would stand.
        const CArgNumberUnsigned& refused = count == 1 ? start : end;
        message = MessageRange(refused.Raw, refused.Minimum, refused.Maximum);
        return E_FAIL;
    }
    if (count != 4) {
        message = MessageUnknownError();
        return E_FAIL;
    }
    if (!HasNoMoreText(cursor)) {
        message = MessageTooMany();
        return E_FAIL;
    }
    message = RefuseFormat();
    if (!message.empty())
        return E_FAIL;
    const int32_t status = Debugger.SaveMemory(TargetAddress(static_cast<uint32_t>(start.Value)),
                                               TargetAddress(static_cast<uint32_t>(end.Value)), file.Path,
                                               Format, AccessSizeOf(mode));
    return AnswerStatus(status, kStatusTexts, file.Value, message);
}

std::string CCmdFileSave::RefuseFormat() const
{
    bool named = false;
    std::string name;
    for (int32_t index = 0; FormatService != nullptr && Succeeded(FormatService->GetReaderName(index, name));
         ++index) {
        if (strcasecmp(name.c_str(), Format.c_str()) != 0)
            continue;
        named = true;
        if (FormatHas(index, READER_SAVES_MEMORY).value_or(false))
            return FindFormat(Format) ? std::string() : FormatMessageText(TextNoFormat, Format.c_str());
    }
    return FormatMessageText(named ? TextCannotWrite : TextNoFormat, Format.c_str());
}
