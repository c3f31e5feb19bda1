#include "component/command/memory/CCmdMemoryFill.h"

#include <utility>

#include "component/command/CArgExpression.h"
#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"
#include "component/frame/StringTable.h"

CCmdMemoryFill::CCmdMemoryFill(IQServiceRegistry* host, MemoryChanged memoryChanged)
    : CCmdMemory(host, "memory_fill", "mf", "<start> <end> <data> [<mode>] [<verify>]",
                 std::move(memoryChanged))
{
}

HRESULT CCmdMemoryFill::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    IQMemoryManagerCmdLine5* manager = Manager();
    if (manager == nullptr || manager->GetCanFill() != S_OK) {
        message = NotSupported();
        return S_OK;
    }
    CArgNumberUnsigned start = AddressArgument(*manager);
    CArgNumberUnsigned end = AddressArgument(*manager);
    CArgExpression data(true);
    CArgKeyword mode = ModeArgument();
    CArgKeyword verify = VerifyArgument();
    std::string_view cursor = text;
    switch (ParseArguments(cursor, {&start, &end, &data, &mode, &verify})) {
    case 0:
        message = ArgumentMessage(start, "<start>");
        return E_FAIL;
    case 1:
        message = ArgumentMessage(end, "<end>");
        return E_FAIL;
    case 2:
        message = MessageEmpty("<data>");
        return E_FAIL;
    case 5:
        break;
    default:
        message = UnknownError();
        return E_FAIL;
    }
    if (!HasNoMoreText(cursor)) {
        message = TooMany();
        return E_FAIL;
    }

    const auto first = static_cast<TargetAddress>(start.Value);
    auto last = static_cast<TargetAddress>(end.Value);
    const AccessSize size = AccessSizeOf(mode.Selected);
    const TargetAddress rest = (last - first + 1) % size;
    if (first + rest > last) {
        // The keyword as the user typed it, abbreviation and all.
        const std::string typed = mode.UsedDefault ? mode.SelectedKeyword() : mode.Raw;
        message = FormatText("Memory range must at least be big enough to contain a %s", typed.c_str());
        return E_FAIL;
    }
    last -= rest;

    auto value = EvaluateUnit(mode.Selected, data.Value);
    if (!value) {
        message = MessageInvalid("<data>");
        return S_OK;
    }
    VariantBool failed = VARIANT_FALSE;
    TargetAddress address = 0;
    int32_t written = 0, found = 0;
    HRESULT hr = manager->FillMemoryReporting(first, last, VerifyFlagOf(verify), size, value->data(), failed,
                                              address, written, found);
    if (Failed(hr)) {
        message = FailureText(*manager, hr);
        if (FromVariantBool(failed))
            message += FormatText("\r\n\r\nAddress: 0x%08X\r\nValue in memory: %d\r\nValue in file: %d",
                                  address, found, written);
    }
    NotifyMemoryChanged();
    return S_OK;
}
