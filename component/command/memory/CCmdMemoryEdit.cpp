#include "component/command/memory/CCmdMemoryEdit.h"

#include <utility>

#include "component/command/CArgExpression.h"
#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"

namespace
{

constexpr uint64_t AddressSpaceEnd = 0xFFFFFFFF;

// Whether the unit of size bytes at address lies wholly at or below last,
// without wrapping past the top of the address space.
bool UnitFits(TargetAddress address, uint32_t size, TargetAddress last)
{
    const uint64_t end = uint64_t{address} + size - 1;
    return end <= AddressSpaceEnd && end <= last;
}

} // namespace

CCmdMemoryEdit::CCmdMemoryEdit(IQServiceRegistry* host, MemoryChanged memoryChanged)
    : CCmdMemory(host, "memory_edit", "me", "<address> [<mode>] [<verify>]", std::move(memoryChanged))
{
}

HRESULT CCmdMemoryEdit::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    Mode = -1;
    Verify = VARIANT_TRUE;
    Current = Last = 0;
    UnitSize = 0;
    Manager = CCmdMemory::Manager();
    if (Manager == nullptr) {
        message = NotSupported();
        return S_OK;
    }
    Last = HighestAddress(*Manager);
    CArgNumberUnsigned address = AddressArgument(*Manager);
    CArgKeyword mode = ModeArgument();
    CArgKeyword verify = VerifyArgument();
    std::string_view cursor = text;
    switch (ParseArguments(cursor, {&address, &mode, &verify})) {
    case 0:
        message = ArgumentMessage(address, "<address>");
        return E_FAIL;
    case 3:
        break;
    default:
        message = UnknownError();
        return E_FAIL;
    }
    if (!HasNoMoreText(cursor)) {
        message = NotValid();
        return E_FAIL;
    }
    UnitSize = AccessSizeOf(mode.Selected);
    const auto start = static_cast<TargetAddress>(address.Value);
    if (!UnitFits(start, UnitSize, Last)) {
        message = MessageInvalid("<address>");
        return E_FAIL;
    }
    Mode = mode.Selected;
    Verify = VerifyFlagOf(verify);
    Current = start;
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
        Current -= UnitSize;
        BuildPrompt();
        return S_OK;
    }
    if (!input.Value.empty()) {
        auto value = EvaluateUnit(Mode, input.Value);
        if (!value) {
            message = NotValid();
            return S_OK;
        }
        HRESULT hr = Manager->WriteMemoryValuesVerified(Current, Current + UnitSize - 1, Verify,
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
    const TargetAddress previous = Current;
    Current += UnitSize;
    return Current > previous && Current <= Last && UnitFits(Current, UnitSize, Last);
}

void CCmdMemoryEdit::BuildPrompt()
{
    Prompt = AddressText(Current);
    std::vector<uint8_t> unit(UnitSize);
    if (Failed(Manager->ReadMemoryValues(Current, Current + UnitSize - 1, static_cast<AccessSize>(UnitSize),
                                         unit.data())))
        return;
    if (auto value = FormatUnit(Mode, unit.data(), 0))
        Prompt += " " + *value;
}
