#include "component/command/memory/CCmdMemoryDisplay.h"

#include <utility>

#include "boundary/ScopeGuard.h"
#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"

namespace
{

constexpr uint64_t DefaultLength = 0x100;
constexpr uint64_t MaximumLength = 0x4000;
constexpr size_t RowBytes = 16;

// Whether nothing follows the second token of the line.
bool EndsAfterSecondToken(std::string_view text)
{
    int32_t quoteKind = 0;
    ReadToken(text, quoteKind);
    ReadToken(text, quoteKind);
    return HasNoMoreText(text);
}

} // namespace

CCmdMemoryDisplay::CCmdMemoryDisplay(IQServiceRegistry* host, MemoryChanged memoryChanged)
    : CCmdMemory(host, "memory_display", "md", "<address> [<length>] [<mode>]", std::move(memoryChanged))
{
}

Parsed<CCmdMemoryDisplay::Args> CCmdMemoryDisplay::Parse(const std::string& text, AddressRange map,
                                                         const CCmdEvaluator& evaluator)
{
    CArgNumberUnsigned address = AddressArgument(map, evaluator, "<address>");
    CArgNumberUnsigned length(false, 0, &evaluator, DefaultLength, 0, MaximumLength, "<length>");
    CArgKeyword mode = ModeArgument();
    if (auto refused = ParseLine(text, {&address, &length, &mode}, MessageNotValid())) {
        // A length out of range alone reads as a line of no known form; with
        // more after it, the range is worth telling.
        if (length.Error == CArg::ErrorRange && EndsAfterSecondToken(text))
            refused->Message = MessageNotValid();
        return *refused;
    }

    const TargetAddress first(static_cast<uint32_t>(address.Value));
    const AccessSize size = AccessSizeOf(mode.Selected);
    const uint64_t end = uint64_t{first.Value()} + length.Value - 1;
    // One byte past the map is let through, and so is one past the top of
    // the address space; a map up to the top has no limit of its own.
    const bool leavesMap = map.Last() != TargetAddress::Top() && end > uint64_t{map.Last().Value()} + 1;
    const bool wraps = end > TargetAddress::SpaceSize;
    if (leavesMap || wraps || length.Value < size)
        return CmdRefusal{MessageInvalid("<length>")};
    const auto bytes = static_cast<uint32_t>(length.Value - length.Value % size);
    return Args{first, first.WrappingAdd(bytes - 1), bytes, mode.Selected};
}

HRESULT CCmdMemoryDisplay::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    IQMemoryManagerCmdLine5* manager = Manager();
    if (manager == nullptr) {
        message = MessageNotSupported();
        return S_OK;
    }
    const CCmdEvaluator evaluator = Evaluator.Snapshot();
    const auto args = Parse(text, MapBounds(*manager), evaluator);
    if (!args)
        return args.Answer(message);
    std::vector<uint8_t> values(args->Bytes);
    HRESULT hr = manager->ReadMemoryValues(args->First, args->Last, AccessSizeOf(args->Mode), values.data());
    if (Failed(hr)) {
        message = FailureText(*manager, hr);
        return S_OK;
    }
    message = Rows(evaluator.Interface(), args->First, values, args->Mode);
    return S_OK;
}

std::string CCmdMemoryDisplay::Rows(IQEvaluator2* evaluator, TargetAddress address,
                                    const std::vector<uint8_t>& values, int32_t mode)
{
    const size_t size = AccessSizeOf(mode);
    // Characters need no radix: an "ascii" display leaves the session alone.
    int32_t saved = 16;
    const bool hex = mode != ModeAscii && evaluator != nullptr && evaluator->GetRadix(saved) == S_OK;
    if (hex)
        evaluator->SetRadix(16);
    ScopeGuard restore([&] {
        if (hex)
            evaluator->SetRadix(saved);
    });
    std::string text;
    for (size_t offset = 0; offset < values.size(); offset += size) {
        const auto at = address.CheckedAdd(offset);
        if (!at)
            break;
        if (offset % RowBytes == 0) {
            if (offset != 0)
                text += "\r\n";
            text += AddressText(evaluator, *at) + "  ";
        }
        text += FormatUnit(evaluator, mode, values.data() + offset, 16).value_or("");
        if (mode != ModeAscii)
            text += ' ';
    }
    return text;
}
