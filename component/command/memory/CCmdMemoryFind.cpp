#include "component/command/memory/CCmdMemoryFind.h"

#include <utility>

#include "component/command/CArgString.h"
#include "component/command/CmdMessages.h"
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

Parsed<CCmdMemoryFind::Args> CCmdMemoryFind::Parse(const std::string& text, AddressRange map,
                                                   const CCmdEvaluator& evaluator)
{
    CArgNumberUnsigned start = AddressArgument(map, evaluator, "<start>");
    CArgNumberUnsigned end = AddressArgument(map, evaluator, "<end>");
    // This command tells of its addresses only that they are missing.
    start.Refusal = end.Refusal = MessageNotEnough();
    CArgString string(true, "", "<string>");
    CArgKeyword mode = ModeArgument();
    if (auto refused = ParseLine(text, {&start, &end, &string, &mode}, MessageTooMany()))
        return *refused;

    const std::string wanted = TrimBlanks(string.Value);
    uint64_t value = 0;
    if (wanted.empty() || !evaluator.TextToUInt64(wanted, 0, value))
        return CmdRefusal{MessageInvalid("<string>")};
    auto pattern = Pattern(value, AccessSizeOf(mode.Selected));
    if (!pattern)
        return CmdRefusal{MessageInvalid("<string>"), S_OK};
    return Args{static_cast<uint32_t>(start.Value), static_cast<uint32_t>(end.Value), std::move(*pattern)};
}

HRESULT CCmdMemoryFind::Run(const std::string& text, std::string& message, bool& continuing)
{
    continuing = false;
    message.clear();
    IQMemoryManagerCmdLine5* manager = Manager();
    if (manager == nullptr || (manager->GetCanFind() != S_OK && manager->GetCanFindAlternate() != S_OK)) {
        message = MessageNotSupported();
        return S_OK;
    }
    const auto args = Parse(text, MapBounds(*manager), Evaluator.Snapshot());
    if (!args)
        return args.Answer(message);
    const auto size = static_cast<uint32_t>(args->Pattern.size());
    const std::vector<uint8_t> mask(size, 0xFF);
    TargetAddress found;
    HRESULT hr = manager->FindMemory(args->Start, args->End, AnyFlag, AnyFlag, size, args->Pattern.data(),
                                     mask.data(), found);
    if (Failed(hr)) {
        message = FailureText(*manager, hr);
        return S_OK;
    }
    message = FormatText("String found at memory address H'%08X", found.Value());
    return S_OK;
}
