#include "component/command/CCmdCache.h"

#include "component/command/CArgKeyword.h"
#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"
#include "component/frame/CDebuggerState.h"
#include "component/memory/CMemoryManager.h"
#include "component/util/MessageFormat.h"

namespace
{
constexpr uint32_t TextOn = 5149;
constexpr uint32_t TextOff = 5150;
} // namespace

CCmdCache::CCmdCache(IQServiceRegistry* host, CDebuggerState& state)
    : CCmd(host, true, "cache", "", "[<state>]"), state_(state)
{
}

HRESULT CCmdCache::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    IQMemoryManager5* memory = state_.GetMemory();
    if (memory == nullptr) {
        message = MessageNotSupported();
        return E_FAIL;
    }
    CArgKeyword on(false, "off\0on\0", -1);
    std::string_view cursor = text;
    ParseArguments(cursor, {&on});
    if (on.Selected < 0 && !on.Raw.empty()) {
        message = MessageKeywordNotFound(on.Raw, on.KeywordList());
        return E_FAIL;
    }
    if (on.Selected < 0 && HasNoMoreText(cursor)) {
        message = FormatMessageText(Succeeded(memory->GetCacheEnabled()) ? TextOn : TextOff);
        return S_OK;
    }
    if (!HasNoMoreText(cursor)) {
        message = MessageTooMany();
        return E_FAIL;
    }
    memory->SetCacheEnabled(on.Selected == 1 ? VARIANT_TRUE : VARIANT_FALSE);
    return S_OK;
}
