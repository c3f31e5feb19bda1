#include "component/command/memory/CCmdMemoryTest.h"

#include <utility>

#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"

CCmdMemoryTest::CCmdMemoryTest(IQServiceRegistry* host, MemoryChanged memoryChanged)
    : CCmdMemory(host, "memory_test", "mt", "<start> <end>", std::move(memoryChanged))
{
}

HRESULT CCmdMemoryTest::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    IQMemoryManagerCmdLine5* manager = Manager();
    if (manager == nullptr || manager->GetCanTest() != S_OK) {
        message = NotSupported();
        return S_OK;
    }
    CArgNumberUnsigned start = AddressArgument(*manager);
    CArgNumberUnsigned end = AddressArgument(*manager);
    std::string_view cursor = text;
    switch (ParseArguments(cursor, {&start, &end})) {
    case 0:
        message = ArgumentMessage(start, "<start>");
        return E_FAIL;
    case 1:
        message = ArgumentMessage(end, "<end>");
        return E_FAIL;
    default:
        break;
    }
    if (!HasNoMoreText(cursor)) {
        message = TooMany();
        return E_FAIL;
    }
    HRESULT hr =
        manager->TestMemory(static_cast<TargetAddress>(start.Value), static_cast<TargetAddress>(end.Value));
    NotifyMemoryChanged();
    if (Failed(hr)) {
        message = FailureText(*manager, hr);
        return E_FAIL;
    }
    message = "Test successful";
    return S_OK;
}
