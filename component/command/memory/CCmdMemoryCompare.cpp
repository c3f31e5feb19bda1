#include "component/command/memory/CCmdMemoryCompare.h"

#include <utility>

#include "component/command/CmdMessages.h"

CCmdMemoryCompare::CCmdMemoryCompare(IQServiceRegistry* host, MemoryChanged memoryChanged)
    : CCmdMemory(host, "memory_compare", "mc", "<start> <end> <destination> [<mode>]",
                 std::move(memoryChanged))
{
}

Parsed<CCmdMemoryCompare::Args> CCmdMemoryCompare::Parse(const std::string& text, AddressRange map,
                                                         const CCmdEvaluator& evaluator)
{
    CArgNumberUnsigned start = AddressArgument(map, evaluator, "<start>");
    CArgNumberUnsigned end = AddressArgument(map, evaluator, "<end>");
    CArgNumberUnsigned destination = AddressArgument(map, evaluator, "<dest>");
    CArgKeyword mode = ModeArgument();
    if (auto refused = ParseLine(text, {&start, &end, &destination, &mode}, MessageTooMany()))
        return *refused;
    return Args{static_cast<uint32_t>(start.Value), static_cast<uint32_t>(end.Value),
                static_cast<uint32_t>(destination.Value), AccessSizeOf(mode.Selected)};
}

HRESULT CCmdMemoryCompare::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    IQMemoryManagerCmdLine5* manager = Manager();
    if (manager == nullptr || manager->GetCanCompare() != S_OK) {
        message = MessageNotSupported();
        return S_OK;
    }
    const CCmdEvaluator evaluator = Evaluator.Snapshot();
    const auto args = Parse(text, MapBounds(*manager), evaluator);
    if (!args)
        return args.Answer(message);
    uint8_t first = 0, second = 0;
    TargetAddress address;
    HRESULT hr =
        manager->CompareMemory(args->Start, args->End, args->Destination, args->Size, first, second, address);
    if (Failed(hr)) {
        message = FailureText(*manager, hr);
        // Only a manager that explains its codes says where the ranges differ.
        if (HasErrorReporter(*manager))
            message += ". Address: " + AddressText(evaluator.Interface(), address);
        return S_OK;
    }
    message = "Compare successful";
    return S_OK;
}
