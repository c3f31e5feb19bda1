#include "component/command/file/CCmdFileUnload.h"

#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"
#include "component/frame/CDebuggerState.h"
#include "component/util/MessageFormat.h"

namespace
{
constexpr uint32_t TextNoFileName = 5151;
constexpr uint32_t TextNoReader = 5152;
constexpr uint32_t TextNotConnected = 5153;
constexpr uint32_t TextNotInList = 5154;
} // namespace

CCmdFileUnload::CCmdFileUnload(IQServiceRegistry* host, CDebuggerState& debugger)
    : CCmdFile(host, debugger, "file_unload", "fu", "[<format>] <filename> [<offset>]")
{
}

HRESULT CCmdFileUnload::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    std::string_view cursor = text;
    if (!Begin(cursor, TextNotConnected, message))
        return E_FAIL;
    CArgStringFileNameEx file = FileNameArgument(true);
    CArgNumberUnsigned offset = NumberArgument(false, "<offset>");
    const int count = ParseArguments(cursor, {&file, &offset});
    if (count < 2) {
        message = FormatMessageText(count == 0 ? TextNoReader : TextNoFileName);
        return E_FAIL;
    }
    if (!HasNoMoreText(cursor)) {
        message = MessageTooMany();
        return E_FAIL;
    }
    std::optional<uint32_t> at;
    if (!offset.UsedDefault)
        at = static_cast<uint32_t>(offset.Value);
    const ProgramList& programs = Debugger.GetPrograms();
    for (int32_t index = 0; index < programs.Count(); ++index) {
        if (programs.At(index)->Matches(file.Path, Format, at)) {
            Debugger.UnloadProgramAt(index);
            return S_OK;
        }
    }
    message = FormatMessageText(TextNotInList);
    return S_OK;
}
