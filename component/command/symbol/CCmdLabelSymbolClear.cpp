#include "component/command/symbol/CCmdLabelSymbolClear.h"

#include "component/symbols/CVELLabelManager.h"
#include "component/util/MessageFormat.h"

namespace
{
constexpr uint32_t TextNotCleared = 57785;
constexpr uint32_t TextNameNotCleared = 5108;
} // namespace

CCmdLabelSymbolClear::CCmdLabelSymbolClear(CDebuggerState& owner, CVELLabelManager& labels,
                                           IQServiceRegistry* host)
    : CCmdLabelSymbol(owner, labels, host, "symbol_clear", "sc", "[<name>]")
{
}

HRESULT CCmdLabelSymbolClear::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    const auto name = ParseOptionalText(text);
    if (!name)
        return name.Answer(message);
    if (name->empty() ? Failed(Labels.ClearLabels()) : Failed(Labels.RemoveLabel(*name))) {
        message = name->empty() ? FormatMessageText(TextNotCleared)
                                : FormatMessageText(TextNameNotCleared, name->c_str());
        return S_OK;
    }
    NotifyLabelsChanged();
    return S_OK;
}
