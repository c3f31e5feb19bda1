#include "component/command/memory/CCmdMemoryEdit.h"

#include <utility>

#include "component/command/CArgExpression.h"
#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"

namespace
{

// Whether the unit of size bytes at address lies wholly at or below last,
// without running past the top of the address space.
bool UnitFits(TargetAddress address, uint32_t size, TargetAddress last)
{
    const auto unit = AddressRange::Sized(address, size);
    return unit && unit->Last() <= last;
}

} // namespace

CCmdMemoryEdit::CCmdMemoryEdit(IQServiceRegistry* host, MemoryChanged memoryChanged)
    : CCmdMemory(host, "memory_edit", "me", "<address> [<mode>] [<verify>]", std::move(memoryChanged))
{
}

Parsed<CCmdMemoryEdit::Args> CCmdMemoryEdit::Parse(const std::string& text, AddressRange map,
                                                   const CCmdEvaluator& evaluator)
{
    CArgNumberUnsigned address = AddressArgument(map, evaluator, "<address>");
    CArgKeyword mode = ModeArgument();
    CArgKeyword verify = VerifyArgument();
    if (auto refused = ParseLine(text, {&address, &mode, &verify}, MessageNotValid()))
        return *refused;
    const TargetAddress start(static_cast<uint32_t>(address.Value));
    if (!UnitFits(start, AccessSizeOf(mode.Selected), map.Last()))
        return CmdRefusal{MessageInvalid("<address>")};
    return Args{start, mode.Selected, VerifyFlagOf(verify)};
}

HRESULT CCmdMemoryEdit::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    Mode = -1;
    Manager = CCmdMemory::Manager();
    if (Manager == nullptr) {
        message = MessageNotSupported();
        return S_OK;
    }
    const AddressRange map = MapBounds(*Manager);
    const auto args = Parse(text, map, Evaluator.Snapshot());
    if (!args)
        return args.Answer(message);
    Mode = args->Mode;
    UnitSize = AccessSizeOf(Mode);
    Verify = args->Verify;
    Current = args->Start;
    Last = map.Last();
    BuildPrompt();
    continuing = true;
    return S_OK;
}

HRESULT CCmdMemoryEdit::Continue(const std::string& line, std::string& message, bool& continuing)
{
    message.clear();
    std::string_view cursor = line;
    int32_t quoteKind = 0;
    CArgExpression input(false);
    const std::string token = ReadToken(cursor, quoteKind);
    input.Parse(token, quoteKind);
    if (input.Value == "." || Manager == nullptr) {
        Finish(continuing);
        return S_OK;
    }
    if (input.Value == "^") {
        // No lower limit: stepping back from address 0 goes on at the top.
        Current = Current.WrappingSub(UnitSize);
        BuildPrompt();
        return S_OK;
    }
    if (!input.Value.empty()) {
        auto value = EvaluateUnit(Evaluator.Interface(), Mode, input.Value);
        if (!value) {
            message = MessageNotValid();
            return S_OK;
        }
        HRESULT hr = Manager->WriteMemoryValuesVerified(Current, Current.WrappingAdd(UnitSize - 1), Verify,
                                                        static_cast<AccessSize>(UnitSize), value->data());
        if (Failed(hr)) {
            message = FailureText(*Manager, hr);
            return S_OK;
        }
        NotifyMemoryChanged();
    }
    if (!StepOn()) {
        message = "End of address range reached. Edit will now stop.";
        Finish(continuing);
        return S_OK;
    }
    BuildPrompt();
    return S_OK;
}

void CCmdMemoryEdit::Finish(bool& continuing)
{
    continuing = false;
    Manager = nullptr;
    Mode = -1;
}

bool CCmdMemoryEdit::StepOn()
{
    const auto next = Current.CheckedAdd(UnitSize);
    if (!next || !UnitFits(*next, UnitSize, Last))
        return false;
    Current = *next;
    return true;
}

void CCmdMemoryEdit::BuildPrompt()
{
    IQEvaluator2* evaluator = Evaluator.Interface();
    Prompt = AddressText(evaluator, Current);
    std::vector<uint8_t> unit(UnitSize);
    if (Failed(Manager->ReadMemoryValues(Current, Current.WrappingAdd(UnitSize - 1),
                                         static_cast<AccessSize>(UnitSize), unit.data())))
        return;
    if (auto value = FormatUnit(evaluator, Mode, unit.data(), 0))
        Prompt += " " + *value;
}
