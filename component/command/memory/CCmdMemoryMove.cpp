#include "component/command/memory/CCmdMemoryMove.h"

#include <utility>

#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"

CCmdMemoryMove::CCmdMemoryMove(IQServiceRegistry* host, MemoryChanged memoryChanged)
    : CCmdMemory(host, "memory_move", "mv", "<start> <end> <destination> [<verify>] [<mode>]",
                 std::move(memoryChanged))
{
}

HRESULT CCmdMemoryMove::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    IQMemoryManagerCmdLine5* manager = Manager();
    if (manager == nullptr || manager->GetCanCopy() != S_OK) {
        message = NotSupported();
        return S_OK;
    }
    CArgNumberUnsigned start = AddressArgument(*manager);
    CArgNumberUnsigned end = AddressArgument(*manager);
    CArgNumberUnsigned destination = AddressArgument(*manager);
    CArgKeyword verify = VerifyArgument();
    CArgKeyword mode = ModeArgument();
    std::string_view cursor = text;
    switch (ParseArguments(cursor, {&start, &end, &destination, &verify, &mode})) {
    case 0:
        message = ArgumentMessage(start, "<start>");
        return E_FAIL;
    case 1:
        message = ArgumentMessage(end, "<end>");
        return E_FAIL;
    case 2:
        message = ArgumentMessage(destination, "<dest>");
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
    uint8_t first = 0, second = 0;
    TargetAddress address = 0;
    HRESULT hr =
        manager->CopyMemory(static_cast<TargetAddress>(start.Value), static_cast<TargetAddress>(end.Value),
                            static_cast<TargetAddress>(destination.Value), VerifyFlagOf(verify),
                            AccessSizeOf(mode.Selected), first, second, address);
    if (Failed(hr))
        message = FailureText(*manager, hr);
    NotifyMemoryChanged();
    return S_OK;
}
