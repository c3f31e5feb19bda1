#include "component/command/symbol/CCmdLabelSymbolSave.h"

#include "component/symbols/CVELLabelManager.h"
#include "component/symbols/SymbolFile.h"
#include "component/util/MessageFormat.h"

namespace
{
constexpr uint32_t TextNoFileName = 5113;
constexpr uint32_t TextDone = 5138;
constexpr uint32_t TextFailed = 5140;
} // namespace

CCmdLabelSymbolSave::CCmdLabelSymbolSave(CDebuggerState& owner, CVELLabelManager& labels,
                                         IQServiceRegistry* host)
    : CCmdLabelSymbol(owner, labels, host, "symbol_save", "ss", "<filename>")
{
}

HRESULT CCmdLabelSymbolSave::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    const auto file = ParseFileName(text, TextNoFileName);
    if (!file)
        return file.Answer(message);
    const bool done = SaveSymbolFile(Labels, file->Path) == S_OK;
    message = FormatMessageText(done ? TextDone : TextFailed, file->Typed.c_str());
    return done ? S_OK : E_FAIL;
}
