#include "component/command/CCmdDefaultObjectReader.h"

#include <strings.h>

#include "boundary/Ids.h"
#include "boundary/interfaces/Platform.h"
#include "component/command/CArgString.h"
#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"
#include "component/frame/CDebuggerState.h"
#include "component/util/MessageFormat.h"

namespace
{
constexpr uint32_t TextCurrent = 5127;
constexpr uint32_t TextNoFormat = 5130;
} // namespace

CCmdDefaultObjectReader::CCmdDefaultObjectReader(IQServiceRegistry* host, CDebuggerState& state)
    : CCmd(host, true, "default_object_format", "do", "[<format>]"), state_(state)
{
}

HRESULT CCmdDefaultObjectReader::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    CArgString format(false, {});
    std::string_view cursor = text;
    ParseArguments(cursor, {&format});
    if (!HasNoMoreText(cursor)) {
        message = MessageTooMany();
        return E_FAIL;
    }
    const std::string& current = state_.GetReaderName();
    if (format.UsedDefault) {
        message = FormatMessageText(TextCurrent, current.c_str());
        return S_OK;
    }
    if (strcasecmp(format.Value.c_str(), current.c_str()) == 0)
        return S_OK;
    // The state keeps a name the platform does not know; the user is told instead.
    auto* formats = GetServiceAs<IQPlatformList>(Host, Ids::PlatformList);
    int32_t index = -1;
    if (formats == nullptr || Failed(formats->FindReader(format.Value, index)) ||
        !state_.SetDefaultReader(format.Value)) {
        message = FormatMessageText(TextNoFormat, format.Value.c_str());
        return E_FAIL;
    }
    state_.Broadcast(Event{Ids::EVENT_PLATFORM_CHANGED, 0});
    return S_OK;
}
