#include "component/command/memory/CCmdMemory.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <utility>

#include "boundary/Ids.h"
#include "boundary/interfaces/Component.h"
#include "component/command/CmdMessages.h"

namespace
{

constexpr uint32_t AllAreas = 0xFFFFFFFF;

template <class T> T Load(const uint8_t* unit)
{
    T value;
    std::memcpy(&value, unit, sizeof value);
    return value;
}

template <class T> std::vector<uint8_t> Store(T value)
{
    std::vector<uint8_t> bytes(sizeof value);
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

// Runs one evaluating operation and keeps its value only if it succeeded.
template <class T, class Op> std::optional<std::vector<uint8_t>> Evaluated(Op op)
{
    T value{};
    if (op(value) != S_OK)
        return std::nullopt;
    return Store(value);
}

// A real that the evaluator's integer texts cannot show.
std::string RealText(double value)
{
    if (std::isnan(value))
        return "NaN";
    if (std::isinf(value))
        return value < 0 ? "-Inf" : "Inf";
    char text[32];
    std::snprintf(text, sizeof text, "%.6G", value);
    return text;
}

std::string AsciiText(uint8_t c)
{
    if (c == 0)
        return ".";
    // Only what the C locale calls printable, so a row keeps its width.
    if (c < 0x20 || c > 0x7E)
        return "?";
    return std::string(1, static_cast<char>(c));
}

} // namespace

std::string WithoutHexPrefix(std::string text)
{
    if (text.size() >= 2 && (text[0] == 'H' || text[0] == 'h') && text[1] == '\'')
        text.erase(0, 2);
    return text;
}

CCmdMemory::CCmdMemory(IQServiceRegistry* host, std::string fullName, std::string abbreviation,
                       std::string parameterText, MemoryChanged memoryChanged)
    : CCmd(host, true, std::move(fullName), std::move(abbreviation), std::move(parameterText)),
      memoryChanged_(std::move(memoryChanged))
{
}

IQMemoryManagerCmdLine5* CCmdMemory::Manager() const
{
    return GetServiceAs<IQMemoryManagerCmdLine5>(Host, Ids::IQMemoryManagerCmdLine5);
}

CArgKeyword CCmdMemory::ModeArgument()
{
    return CArgKeyword(false, std::vector<std::string>{"byte", "word", "long", "ascii", "single", "double"},
                       ModeByte);
}

CArgKeyword CCmdMemory::VerifyArgument()
{
    return CArgKeyword(false, std::vector<std::string>{"verify", "noverify"}, 0);
}

AccessSize CCmdMemory::AccessSizeOf(int32_t mode)
{
    switch (mode) {
    case ModeWord:
        return 2;
    case ModeLong:
    case ModeSingle:
        return 4;
    case ModeDouble:
        return 8;
    default:
        return 1;
    }
}

VariantBool CCmdMemory::VerifyFlagOf(const CArgKeyword& verify)
{
    return verify.Selected == 1 ? VARIANT_FALSE : VARIANT_TRUE;
}

CArgNumberUnsigned CCmdMemory::AddressArgument(AddressRange map, const CCmdEvaluator& evaluator,
                                               std::string name)
{
    return CArgNumberUnsigned(true, 0, &evaluator, 0, map.First().Value(), map.Last().Value(),
                              std::move(name));
}

AddressRange CCmdMemory::MapBounds(IQMemoryManagerCmdLine5& manager)
{
    TargetAddress low, high;
    if (Failed(manager.GetAreaBounds(AllAreas, low, high)))
        return AddressRange(0, 0);
    return AddressRange::Between(low, high).value_or(AddressRange(0, 0));
}

std::string CCmdMemory::FailureText(IQMemoryManagerCmdLine5& manager, HRESULT hr)
{
    return ErrorTextFor(&manager, hr);
}

bool CCmdMemory::HasErrorReporter(IQMemoryManagerCmdLine5& manager)
{
    return QueryAs<IQErrorReporter>(&manager, Ids::IQErrorReporter) != nullptr;
}

std::optional<std::string> CCmdMemory::FormatUnit(IQEvaluator2* evaluator, int32_t mode, const uint8_t* unit,
                                                  int32_t radix)
{
    if (mode == ModeAscii)
        return AsciiText(unit[0]);
    if (mode == ModeSingle || mode == ModeDouble) {
        const double real = mode == ModeSingle ? Load<float>(unit) : Load<double>(unit);
        if (!std::isfinite(real))
            return RealText(real);
    }
    if (evaluator == nullptr)
        return std::nullopt;
    std::string text;
    HRESULT hr = E_FAIL;
    switch (mode) {
    case ModeByte:
        hr = evaluator->UInt8ToText(unit[0], radix, text);
        break;
    case ModeWord:
        hr = evaluator->UInt16ToText(Load<uint16_t>(unit), radix, text);
        break;
    case ModeLong:
        hr = evaluator->Int32ToText(Load<int32_t>(unit), radix, text);
        break;
    case ModeSingle:
        hr = evaluator->FloatToText(Load<float>(unit), radix, text);
        break;
    case ModeDouble:
        hr = evaluator->DoubleToText(Load<double>(unit), radix, text);
        break;
    default:
        break;
    }
    if (hr != S_OK && (mode == ModeSingle || mode == ModeDouble))
        return RealText(mode == ModeSingle ? Load<float>(unit) : Load<double>(unit));
    if (hr != S_OK)
        return std::nullopt;
    return WithoutHexPrefix(std::move(text));
}

std::optional<std::vector<uint8_t>> CCmdMemory::EvaluateUnit(IQEvaluator2* evaluator, int32_t mode,
                                                             const std::string& text)
{
    if (mode == ModeAscii) {
        if (text.size() != 1)
            return std::nullopt;
        return std::vector<uint8_t>{static_cast<uint8_t>(text[0])};
    }
    if (evaluator == nullptr)
        return std::nullopt;
    switch (mode) {
    case ModeByte:
        return Evaluated<uint8_t>([&](uint8_t& v) { return evaluator->TextToUInt8Radix(text, 0, v); });
    case ModeWord:
        return Evaluated<uint16_t>([&](uint16_t& v) { return evaluator->TextToUInt16Radix(text, 0, v); });
    case ModeLong:
        return Evaluated<uint32_t>([&](uint32_t& v) { return evaluator->TextToUInt32Radix(text, 0, v); });
    case ModeSingle:
        return Evaluated<float>([&](float& v) { return evaluator->TextToFloat(text, v); });
    case ModeDouble:
        return Evaluated<double>([&](double& v) { return evaluator->TextToDouble(text, v); });
    default:
        return std::nullopt;
    }
}

std::string CCmdMemory::AddressText(IQEvaluator2* evaluator, TargetAddress address)
{
    std::string text;
    if (evaluator == nullptr ||
        evaluator->FormatAddress(address.Value(), VARIANT_FALSE, VARIANT_FALSE, VARIANT_FALSE, text) !=
            S_OK ||
        text.empty())
        return "Invalid address";
    return WithoutHexPrefix(std::move(text));
}

void CCmdMemory::NotifyMemoryChanged() const
{
    if (memoryChanged_)
        memoryChanged_();
}
