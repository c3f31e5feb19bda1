#include "component/command/CCmdRadix.h"

#include "component/command/CArgKeyword.h"
#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"
#include "component/frame/CDebuggerState.h"
#include "component/frame/StringTable.h"

namespace
{

uint32_t CurrentRadixText(int32_t radix)
{
    switch (radix) {
    case 2:
        return 5009;
    case 8:
        return 5010;
    case 10:
        return 5011;
    case 16:
        return 5012;
    default:
        return 5008;
    }
}

} // namespace

CCmdRadix::CCmdRadix(IQServiceRegistry* host, CDebuggerState& state)
    : CCmd(host, true, "radix", "ra", "[<radix>]"), state_(state)
{
}

HRESULT CCmdRadix::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    CArgKeyword radix(false, "hex\0dec\0oct\0bin\0", -1);
    std::string_view cursor = text;
    ParseArguments(cursor, {&radix});
    if (radix.Selected < 0 && !radix.Raw.empty()) {
        message = MessageKeywordNotFound(radix.Raw, radix.KeywordList());
        return E_FAIL;
    }
    if (radix.Selected < 0) {
        // No word at all: say what the radix is.
        int32_t current = 0;
        IQEvaluator2* evaluator = Evaluator.Interface();
        if (evaluator == nullptr || Failed(evaluator->GetRadix(current)))
            current = 0;
        message = StringTable::Load(CurrentRadixText(current));
        return S_OK;
    }
    if (!HasNoMoreText(cursor)) {
        message = MessageTooMany();
        return E_FAIL;
    }
    static constexpr int32_t kRadixes[] = {16, 10, 8, 2};
    state_.SetRadix(kRadixes[radix.Selected]);
    return S_OK;
}
