#include "component/command/memory/CCmdMemoryMove.h"

#include <utility>

#include "component/command/CmdMessages.h"

CCmdMemoryMove::CCmdMemoryMove(IQServiceRegistry* host, MemoryChanged memoryChanged)
    : CCmdMemory(host, "memory_move", "mv", "<start> <end> <destination> [<verify>] [<mode>]",
                 std::move(memoryChanged))
{
}

Parsed<CCmdMemoryMove::Args> CCmdMemoryMove::Parse(const std::string& text, AddressRange map,
                                                   const CCmdEvaluator& evaluator)
{
    CArgNumberUnsigned start = AddressArgument(map, evaluator, "<start>");
    CArgNumberUnsigned end = AddressArgument(map, evaluator, "<end>");
    CArgNumberUnsigned destination = AddressArgument(map, evaluator, "<dest>");
    CArgKeyword verify = VerifyArgument();
    CArgKeyword mode = ModeArgument();
    if (auto refused = ParseLine(text, {&start, &end, &destination, &verify, &mode}, MessageTooMany()))
        return *refused;
    return Args{static_cast<uint32_t>(start.Value), static_cast<uint32_t>(end.Value),
                static_cast<uint32_t>(destination.Value), VerifyFlagOf(verify), AccessSizeOf(mode.Selected)};
}

HRESULT CCmdMemoryMove::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    IQMemoryManagerCmdLine5* manager = Manager();
    if (manager == nullptr || manager->GetCanCopy() != S_OK) {
        message = MessageNotSupported();
        return S_OK;
    }
    const auto args = Parse(text, MapBounds(*manager), Evaluator.Snapshot());
    if (!args)
        return args.Answer(message);
    uint8_t first = 0, second = 0;
    TargetAddress address;
    HRESULT hr = manager->CopyMemory(args->Start, args->End, args->Destination, args->Verify, args->Size,
                                     first, second, address);
    if (Failed(hr))
        message = FailureText(*manager, hr);
    NotifyMemoryChanged();
    return S_OK;
}
