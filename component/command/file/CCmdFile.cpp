#include "component/command/file/CCmdFile.h"

#include "boundary/Ids.h"
#include "boundary/interfaces/ObjectReader.h"
#include "component/command/CArgString.h"
#include "component/command/CmdTokens.h"
#include "component/frame/CDebuggerState.h"
#include "component/util/MessageFormat.h"

CCmdFile::CCmdFile(IQServiceRegistry* host, CDebuggerState& debugger, std::string fullName,
                   std::string abbreviation, std::string parameterText)
    : CCmd(host, true, std::move(fullName), std::move(abbreviation), std::move(parameterText)),
      Debugger(debugger), FormatService(GetServiceAs<IQPlatformList>(host, Ids::PlatformList))
{
}

bool CCmdFile::Begin(std::string_view& cursor, uint32_t notConnectedText, std::string& message)
{
    if (!Debugger.IsConnected()) {
        message = FormatMessageText(notConnectedText);
        return false;
    }
    ParseFormat(cursor);
    return true;
}

void CCmdFile::ParseFormat(std::string_view& cursor)
{
    std::string_view ahead = cursor;
    CArgString word(true, {});
    if (ParseArguments(ahead, {&word}) == 1 && FindFormat(word.Value)) {
        Format = word.Value;
        FormatIsDefault = false;
        cursor = ahead;
        return;
    }
    Format = Debugger.GetReaderName();
    FormatIsDefault = true;
}

std::optional<int32_t> CCmdFile::FindFormat(const std::string& name) const
{
    int32_t index = -1;
    if (FormatService == nullptr || Failed(FormatService->FindReader(name, index)))
        return std::nullopt;
    return index;
}

std::optional<bool> CCmdFile::FormatHas(int32_t index, ReaderAttribute attribute) const
{
    VariantBool flag = VARIANT_FALSE;
    if (FormatService == nullptr || Failed(FormatService->GetReaderAttribute(index, attribute, flag)))
        return std::nullopt;
    return flag != VARIANT_FALSE;
}

CArgStringFileNameEx CCmdFile::FileNameArgument(bool asTyped) const
{
    CDebuggerState& debugger = Debugger;
    return CArgStringFileNameEx(
        Host, true, {}, !asTyped, true, true, !asTyped,
        [&debugger](const std::string& text) { return debugger.ExpandForSession(text); });
}

CArgNumberUnsigned CCmdFile::NumberArgument(bool required, std::string name) const
{
    return CArgNumberUnsigned(required, 0, &Evaluator, 0, 0, 0xFFFFFFFFu, std::move(name));
}

CArgKeyword CCmdFile::ModeArgument()
{
    return CArgKeyword(false, std::vector<std::string>{"byte", "word", "long", "ascii", "single", "double"},
                       0);
}

int32_t CCmdFile::AccessSizeOf(const CArgKeyword& mode)
{
    static constexpr int32_t kSizes[] = {1, 2, 4, 1, 4, 8};
    return mode.Selected >= 0 && mode.Selected < 6 ? kSizes[mode.Selected] : 1;
}

HRESULT CCmdFile::AnswerStatus(int32_t status, StatusTexts texts, const std::string& file,
                               std::string& message)
{
    const uint32_t text = status == TASK_DONE        ? texts.done
                          : status == TASK_CANCELLED ? texts.cancelled
                                                     : texts.failed;
    message = FormatMessageText(text, file.c_str());
    return status == TASK_DONE ? S_OK : E_FAIL;
}
