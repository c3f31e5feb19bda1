#include "component/command/memory/CCmdMemoryFill.h"

#include <utility>

#include "component/command/CArgExpression.h"
#include "component/command/CmdMessages.h"
#include "component/frame/StringTable.h"

CCmdMemoryFill::CCmdMemoryFill(IQServiceRegistry* host, MemoryChanged memoryChanged)
    : CCmdMemory(host, "memory_fill", "mf", "<start> <end> <data> [<mode>] [<verify>]",
                 std::move(memoryChanged))
{
}

Parsed<CCmdMemoryFill::Args> CCmdMemoryFill::Parse(const std::string& text, AddressRange map,
                                                   const CCmdEvaluator& evaluator)
{
    CArgNumberUnsigned start = AddressArgument(map, evaluator, "<start>");
    CArgNumberUnsigned end = AddressArgument(map, evaluator, "<end>");
    CArgExpression data(true, "<data>");
    CArgKeyword mode = ModeArgument();
    CArgKeyword verify = VerifyArgument();
    if (auto refused = ParseLine(text, {&start, &end, &data, &mode, &verify}, MessageTooMany()))
        return *refused;

    const AccessSize size = AccessSizeOf(mode.Selected);
    const auto typed =
        AddressRange::Between(static_cast<uint32_t>(start.Value), static_cast<uint32_t>(end.Value));
    const auto range = typed ? typed->WholeUnits(size) : std::nullopt;
    if (!range) {
        // The keyword as the user typed it, abbreviation and all.
        const std::string word = mode.UsedDefault ? mode.SelectedKeyword() : mode.Raw;
        return CmdRefusal{
            FormatText("Memory range must at least be big enough to contain a %s", word.c_str())};
    }
    auto value = EvaluateUnit(evaluator.Interface(), mode.Selected, data.Value);
    if (!value)
        return CmdRefusal{MessageInvalid("<data>"), S_OK};
    return Args{*range, std::move(*value), size, VerifyFlagOf(verify)};
}

HRESULT CCmdMemoryFill::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    IQMemoryManagerCmdLine5* manager = Manager();
    if (manager == nullptr || manager->GetCanFill() != S_OK) {
        message = MessageNotSupported();
        return S_OK;
    }
    const auto args = Parse(text, MapBounds(*manager), Evaluator.Snapshot());
    if (!args)
        return args.Answer(message);
    VariantBool failed = VARIANT_FALSE;
    TargetAddress address;
    int32_t written = 0, found = 0;
    HRESULT hr =
        manager->FillMemoryReporting(args->Range.First(), args->Range.Last(), args->Verify, args->Size,
                                     args->Value.data(), failed, address, written, found);
    if (Failed(hr)) {
        message = FailureText(*manager, hr);
        if (FromVariantBool(failed))
            message += FormatText("\r\n\r\nAddress: 0x%08X\r\nValue in memory: %d\r\nValue in file: %d",
                                  address.Value(), found, written);
    }
    NotifyMemoryChanged();
    return S_OK;
}
