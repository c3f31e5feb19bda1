#include "component/command/memory/CCmdMemoryFind.h"

#include <utility>

#include "component/command/CArgString.h"
#include "component/command/CmdMessages.h"
#include "component/command/CmdTokens.h"
#include "component/frame/StringTable.h"

namespace
{

constexpr uint32_t AnyFlag = 0xFFFFFFFF;

std::string TrimBlanks(const std::string& text)
{
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace

CCmdMemoryFind::CCmdMemoryFind(IQServiceRegistry* host, MemoryChanged memoryChanged)
    : CCmdMemory(host, "memory_find", "mi", "<start> <end> <string> [<mode>]", std::move(memoryChanged))
{
}

std::optional<std::vector<uint8_t>> CCmdMemoryFind::Pattern(uint64_t value, AccessSize size)
{
    // Only the low 32 bits count. Their digits must fit the size: a byte
    // search for 0x123 is refused instead of quietly looking for 0x23.
    const auto low = static_cast<uint32_t>(value);
    const unsigned bits = 8u * size;
    if (bits < 32 && (low >> bits) != 0)
        return std::nullopt;
    std::vector<uint8_t> pattern(size);
    for (size_t i = 0; i < pattern.size(); ++i) {
        const size_t shift = 8 * (pattern.size() - 1 - i);
        pattern[i] = shift < 32 ? static_cast<uint8_t>(low >> shift) : 0;
    }
    return pattern;
}

HRESULT CCmdMemoryFind::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    IQMemoryManagerCmdLine5* manager = Manager();
    if (manager == nullptr || (manager->GetCanFind() != S_OK && manager->GetCanFindAlternate() != S_OK)) {
        message = NotSupported();
        return S_OK;
    }
    CArgNumberUnsigned start = AddressArgument(*manager);
    CArgNumberUnsigned end = AddressArgument(*manager);
    CArgString string(true, "");
    CArgKeyword mode = ModeArgument();
    std::string_view cursor = text;
    switch (ParseArguments(cursor, {&start, &end, &string, &mode})) {
    case 0:
    case 1:
        message = NotEnough();
        return E_FAIL;
    case 2:
    case 3:
        message = MessageEmpty("<string>");
        return E_FAIL;
    default:
        break;
    }
    if (!HasNoMoreText(cursor)) {
        message = TooMany();
        return E_FAIL;
    }

    const std::string wanted = TrimBlanks(string.Value);
    uint64_t value = 0;
    if (wanted.empty() || !Evaluator.TextToUInt64(wanted, 0, value)) {
        message = MessageInvalid("<string>");
        return E_FAIL;
    }
    const AccessSize size = AccessSizeOf(mode.Selected);
    auto pattern = Pattern(value, size);
    if (!pattern) {
        message = MessageInvalid("<string>");
        return S_OK;
    }
    const std::vector<uint8_t> mask(size, 0xFF);
    TargetAddress found = 0;
    HRESULT hr =
        manager->FindMemory(static_cast<TargetAddress>(start.Value), static_cast<TargetAddress>(end.Value),
                            AnyFlag, AnyFlag, size, pattern->data(), mask.data(), found);
    if (Failed(hr)) {
        message = FailureText(*manager, hr);
        return S_OK;
    }
    message = FormatText("String found at memory address H'%08X", found);
    return S_OK;
}
