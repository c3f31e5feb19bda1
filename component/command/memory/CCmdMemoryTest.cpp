#include "component/command/memory/CCmdMemoryTest.h"

#include <utility>

#include "component/command/CmdMessages.h"

CCmdMemoryTest::CCmdMemoryTest(IQServiceRegistry* host, MemoryChanged memoryChanged)
    : CCmdMemory(host, "memory_test", "mt", "<start> <end>", std::move(memoryChanged))
{
}

Parsed<CCmdMemoryTest::Args> CCmdMemoryTest::Parse(const std::string& text, AddressRange map,
                                                   const CCmdEvaluator& evaluator)
{
    CArgNumberUnsigned start = AddressArgument(map, evaluator, "<start>");
    CArgNumberUnsigned end = AddressArgument(map, evaluator, "<end>");
    if (auto refused = ParseLine(text, {&start, &end}, MessageTooMany()))
        return *refused;
    return Args{static_cast<uint32_t>(start.Value), static_cast<uint32_t>(end.Value)};
}

HRESULT CCmdMemoryTest::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    IQMemoryManagerCmdLine5* manager = Manager();
    if (manager == nullptr || manager->GetCanTest() != S_OK) {
        message = MessageNotSupported();
        return S_OK;
    }
    const auto args = Parse(text, MapBounds(*manager), Evaluator.Snapshot());
    if (!args)
        return args.Answer(message);
    HRESULT hr = manager->TestMemory(args->Start, args->End);
    NotifyMemoryChanged();
    if (Failed(hr)) {
        message = FailureText(*manager, hr);
        return E_FAIL;
    }
    message = "Test successful";
    return S_OK;
}
