#include "component/command/memory/CCmdMemoryDisplay.h"

#include <utility>

#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"

namespace
{

constexpr uint64_t DefaultLength = 0x100;
constexpr uint64_t MaximumLength = 0x4000;
constexpr uint64_t AddressSpaceEnd = 0xFFFFFFFF;
constexpr size_t RowBytes = 16;

// Switches the session to radix 16 for its lifetime, so that every way out
// of a display gives the user's radix back.
class HexRadix
{
public:
    explicit HexRadix(IQEvaluator2* evaluator) : evaluator_(evaluator)
    {
        if (evaluator_ == nullptr || evaluator_->GetRadix(saved_) != S_OK) {
            evaluator_ = nullptr;
            return;
        }
        evaluator_->SetRadix(16);
    }
    ~HexRadix()
    {
        if (evaluator_ != nullptr)
            evaluator_->SetRadix(saved_);
    }
    HexRadix(const HexRadix&) = delete;
    HexRadix& operator=(const HexRadix&) = delete;

private:
    IQEvaluator2* evaluator_;
    int32_t saved_ = 16;
};

} // namespace

CCmdMemoryDisplay::CCmdMemoryDisplay(IQServiceRegistry* host, MemoryChanged memoryChanged)
    : CCmdMemory(host, "memory_display", "md", "<address> [<length>] [<mode>]", std::move(memoryChanged))
{
}

HRESULT CCmdMemoryDisplay::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    IQMemoryManagerCmdLine5* manager = Manager();
    if (manager == nullptr) {
        message = NotSupported();
        return S_OK;
    }
    CArgNumberUnsigned address = AddressArgument(*manager);
    CArgNumberUnsigned length(false, 0, &Evaluator, DefaultLength, 0, MaximumLength);
    CArgKeyword mode = ModeArgument();
    std::string_view cursor = text;
    switch (ParseArguments(cursor, {&address, &length, &mode})) {
    case 0:
        message = ArgumentMessage(address, "<address>");
        return E_FAIL;
    case 1: {
        // Only a length out of range stops here. Alone it reads as a line of
        // no known form; with more after it, the range is worth telling.
        int32_t quoteKind = 0;
        ReadToken(cursor, quoteKind);
        message = HasNoMoreText(cursor) ? NotValid() : ArgumentMessage(length, "<length>");
        return E_FAIL;
    }
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

    const auto first = static_cast<TargetAddress>(address.Value);
    const AccessSize size = AccessSizeOf(mode.Selected);
    auto bytes = static_cast<TargetAddress>(length.Value);
    TargetAddress last = first + bytes - 1;
    const uint64_t highest = HighestAddress(*manager);
    // One byte past the map is let through; a map up to the top has no limit.
    const bool leavesMap = highest != AddressSpaceEnd && uint64_t{last} > highest + 1;
    const bool wraps = last < first && last != 0;
    if (leavesMap || wraps || bytes < size) {
        message = MessageInvalid("<length>");
        return E_FAIL;
    }
    bytes -= bytes % size;
    last = first + bytes - 1;

    std::vector<uint8_t> values(bytes);
    HRESULT hr = manager->ReadMemoryValues(first, last, size, values.data());
    if (Failed(hr)) {
        message = FailureText(*manager, hr);
        return S_OK;
    }
    message = Rows(first, values, mode.Selected);
    return S_OK;
}

std::string CCmdMemoryDisplay::Rows(TargetAddress address, const std::vector<uint8_t>& values,
                                    int32_t mode) const
{
    const size_t size = AccessSizeOf(mode);
    // Characters need no radix: an "ascii" display leaves the session alone.
    std::optional<HexRadix> hex;
    if (mode != ModeAscii)
        hex.emplace(Evaluator.Interface());
    std::string text;
    for (size_t offset = 0; offset < values.size(); offset += size) {
        const uint64_t at = uint64_t{address} + offset;
        if (at > AddressSpaceEnd)
            break;
        if (offset % RowBytes == 0) {
            if (offset != 0)
                text += "\r\n";
            text += AddressText(static_cast<TargetAddress>(at)) + "  ";
        }
        text += FormatUnit(mode, values.data() + offset, 16).value_or("");
        if (mode != ModeAscii)
            text += ' ';
    }
    return text;
}
