#include "component/command/symbol/CCmdLabelSymbolView.h"

#include "component/symbols/CVELLabelManager.h"
#include "component/util/MessageFormat.h"

namespace
{
constexpr uint32_t TextOneFound = 5041;
constexpr uint32_t TextManyFound = 5042;
} // namespace

CCmdLabelSymbolView::CCmdLabelSymbolView(CDebuggerState& owner, CVELLabelManager& labels,
                                         IQServiceRegistry* host)
    : CCmdLabelSymbol(owner, labels, host, "symbol_view", "sv", "[<pattern>]")
{
}

HRESULT CCmdLabelSymbolView::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    const auto pattern = ParseOptionalText(text);
    if (!pattern)
        return pattern.Answer(message);
    uint32_t count = 0;
    if (Failed(Labels.GetLabelCount(count)))
        return S_OK;
    IQEvaluator2* evaluator = Evaluator.Interface();
    int shown = 0;
    for (uint32_t index = 0; index < count; ++index) {
        const LabelRecord* record = nullptr;
        if (Labels.GetLabelPointer(index, record) != S_OK || record->Name.find(*pattern) == std::string::npos)
            continue;
        std::string address;
        if (evaluator != nullptr)
            evaluator->UInt32ToText(record->Address.Value(), 16, address);
        message += address + " " + record->Name + "\n";
        ++shown;
    }
    message += FormatMessageText(shown == 1 ? TextOneFound : TextManyFound, shown);
    return S_OK;
}
