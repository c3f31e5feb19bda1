#include "component/command/symbol/CCmdLabelSymbol.h"

#include "boundary/Event.h"
#include "boundary/Ids.h"
#include "component/command/CArgString.h"
#include "component/command/CArgStringFileNameEx.h"
#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"
#include "component/util/MessageFormat.h"

CCmdLabelSymbol::CCmdLabelSymbol(CDebuggerState& owner, CVELLabelManager& labels, IQServiceRegistry* host,
                                 std::string fullName, std::string abbreviation, std::string parameterText)
    : CCmd(host, true, std::move(fullName), std::move(abbreviation), std::move(parameterText)), Owner(owner),
      Labels(labels)
{
}

void CCmdLabelSymbol::NotifyLabelsChanged() const
{
    if (Host != nullptr)
        Host->Broadcast(Event{Ids::EVENT_LABELS_CHANGED, 0});
}

Parsed<std::string> CCmdLabelSymbol::ParseOptionalText(const std::string& text)
{
    CArgString value(false, {});
    if (auto refused = ParseLine(text, {&value}, MessageTooMany()))
        return *refused;
    return value.Value;
}

Parsed<CCmdLabelSymbol::FileName> CCmdLabelSymbol::ParseFileName(const std::string& text,
                                                                 uint32_t noNameText) const
{
    CArgStringFileNameEx name(Host, true, {}, true, true, true, true);
    std::string_view cursor = text;
    if (ParseArguments(cursor, {&name}) == 0)
        return CmdRefusal{FormatMessageText(noNameText)};
    if (!HasNoMoreText(cursor))
        return CmdRefusal{MessageTooMany()};
    return FileName{name.Value, name.Path};
}
