#include "component/command/symbol/CCmdLabelSymbolAdd.h"

#include "component/command/CArgNumberUnsigned.h"
#include "component/command/CArgString.h"
#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"
#include "component/symbols/CVELLabelManager.h"
#include "component/util/MessageFormat.h"

namespace
{
constexpr uint32_t TextNoName = 5110;
constexpr uint32_t TextAddFailed = 57784;
} // namespace

CCmdLabelSymbolAdd::CCmdLabelSymbolAdd(CDebuggerState& owner, CVELLabelManager& labels,
                                       IQServiceRegistry* host)
    : CCmdLabelSymbol(owner, labels, host, "symbol_add", "sa", "<name> <address>")
{
}

Parsed<CCmdLabelSymbolAdd::Args> CCmdLabelSymbolAdd::Parse(const std::string& text,
                                                           const CCmdEvaluator& evaluator)
{
    CArgString name(true, {}, "<name>");
    CArgNumberUnsigned address(true, 0, &evaluator, 0, 0, 0xFFFFFFFF, "<address>");
    std::string_view cursor = text;
    const int taken = ParseArguments(cursor, {&name, &address});
    if (taken == 0)
        return CmdRefusal{FormatMessageText(TextNoName)};
    // Whatever stopped the address, the message names what was typed for it.
    if (taken == 1)
        return CmdRefusal{MessageRange(address.Raw, 0, 0xFFFFFFFF)};
    if (!HasNoMoreText(cursor))
        return CmdRefusal{MessageTooMany()};
    return Args{name.Value, static_cast<uint32_t>(address.Value)};
}

HRESULT CCmdLabelSymbolAdd::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    const auto args = Parse(text, Evaluator.Snapshot());
    if (!args)
        return args.Answer(message);
    const LabelRecord wanted{args->Name, args->Address};
    LabelRecord found = wanted;
    const HRESULT hr = Labels.FindLabelByName(found, 0) == S_OK ? Labels.ReplaceLabel(found, wanted)
                                                                : Labels.AddLabel(wanted);
    if (Failed(hr)) {
        message = FormatMessageText(TextAddFailed);
        return E_FAIL;
    }
    NotifyLabelsChanged();
    return S_OK;
}
