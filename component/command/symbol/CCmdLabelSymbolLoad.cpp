#include "component/command/symbol/CCmdLabelSymbolLoad.h"

#include "component/symbols/CVELLabelManager.h"
#include "component/symbols/SymbolFile.h"
#include "component/util/MessageFormat.h"

namespace
{
constexpr uint32_t TextNoFileName = 5107;
constexpr uint32_t TextDone = 5135;
constexpr uint32_t TextFailed = 5137;
} // namespace

CCmdLabelSymbolLoad::CCmdLabelSymbolLoad(CDebuggerState& owner, CVELLabelManager& labels,
                                         IQServiceRegistry* host)
    : CCmdLabelSymbol(owner, labels, host, "symbol_load", "sl", "<filename>")
{
}

HRESULT CCmdLabelSymbolLoad::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    const auto file = ParseFileName(text, TextNoFileName);
    if (!file)
        return file.Answer(message);
    const bool done = LoadSymbolFile(Labels, file->Path, Host) == S_OK;
    message = FormatMessageText(done ? TextDone : TextFailed, file->Typed.c_str());
    return done ? S_OK : E_FAIL;
}
