#include "platform/eval/ExpressionEvaluator.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "boundary/Ids.h"
#include "boundary/interfaces/Platform.h"
#include "platform/eval/EvalErrors.h"
#include "platform/eval/ExpressionLexer.h"
#include "platform/eval/RadixText.h"

namespace
{

// A signed value of up to 32 bits is written as its sign extension to 32
// bits, as the family's texts have always been.
uint32_t SignExtended(int32_t value)
{
    return static_cast<uint32_t>(value);
}

} // namespace

HRESULT ExpressionEvaluator::QueryInterface(const Guid& iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (iid == Ids::IUnknown || iid == Ids::IQEvaluator || iid == Ids::IQEvaluator2)
        *out = static_cast<IQEvaluator2*>(this);
    else if (iid == Ids::IQErrorReporter)
        *out = static_cast<IQErrorReporter*>(this);
    return *out != nullptr ? S_OK : E_NOINTERFACE;
}

HRESULT ExpressionEvaluator::GetErrorText(HRESULT code, std::string& text)
{
    const char* known = EvalErrorText(code);
    if (known == nullptr)
        return E_FAIL;
    text = known;
    return S_OK;
}

HRESULT ExpressionEvaluator::Report(HRESULT code)
{
    if (Succeeded(code))
        lastError_.clear();
    else if (const char* known = EvalErrorText(code))
        lastError_ = known;
    else
        lastError_ = "Invalid radix";
    return code;
}

int ExpressionEvaluator::Resolve(int32_t radix) const
{
    if (radix == 0)
        return radix_;
    return RadixText::IsRadix(radix) ? radix : -1;
}

HRESULT ExpressionEvaluator::GetRadix(int32_t& radix)
{
    radix = radix_;
    return S_OK;
}

HRESULT ExpressionEvaluator::SetRadix(int32_t radix)
{
    if (!RadixText::IsRadix(radix))
        return Report(E_INVALIDARG);
    radix_ = radix;
    if (registry_ != nullptr)
        registry_->Broadcast(Event{Ids::EVENT_RADIX_CHANGED, radix});
    return Report(S_OK);
}

HRESULT ExpressionEvaluator::Evaluate(const std::string& text, int32_t radix, uint64_t& value)
{
    const int base = Resolve(radix);
    if (base < 0)
        return Report(E_INVALIDARG);
    std::vector<Token> tokens;
    HRESULT hr = ExpressionLexer(base).Tokenize(text, tokens);
    if (Succeeded(hr))
        hr = ExpressionParser(tokens, lookup_).Parse(value);
    return Report(hr);
}

template <class T>
HRESULT ExpressionEvaluator::TextToUnsigned(const std::string& text, int32_t radix, T& value)
{
    uint64_t result = 0;
    const HRESULT hr = Evaluate(text, radix, result);
    if (Failed(hr))
        return hr;
    // A negative value that the width holds as two's complement is taken, so
    // that "-1" fills a long with ones; anything wider is refused rather than cut.
    const auto wide = static_cast<int64_t>(result);
    const bool fitsSigned =
        wide < 0 && wide >= static_cast<int64_t>(std::numeric_limits<std::make_signed_t<T>>::min());
    if (result > std::numeric_limits<T>::max() && !fitsSigned)
        return Report(QE_EVAL_TOO_LARGE);
    value = static_cast<T>(result);
    return S_OK;
}

// The 64-bit result is read as two's complement, so "-1" fits every signed type.
template <class T> HRESULT ExpressionEvaluator::TextToSigned(const std::string& text, int32_t radix, T& value)
{
    uint64_t result = 0;
    const HRESULT hr = Evaluate(text, radix, result);
    if (Failed(hr))
        return hr;
    const auto wide = static_cast<int64_t>(result);
    if (wide < std::numeric_limits<T>::min() || wide > std::numeric_limits<T>::max())
        return Report(QE_EVAL_TOO_LARGE);
    value = static_cast<T>(wide);
    return S_OK;
}

HRESULT ExpressionEvaluator::TextToAddress(const std::string& text, uint32_t& value)
{
    return TextToUnsigned(text, 0, value);
}
HRESULT ExpressionEvaluator::TextToAddressRadix(const std::string& text, int32_t radix, uint32_t& value)
{
    return TextToUnsigned(text, radix, value);
}
HRESULT ExpressionEvaluator::TextToUInt8(const std::string& text, uint8_t& value)
{
    return TextToUnsigned(text, 0, value);
}
HRESULT ExpressionEvaluator::TextToUInt8Radix(const std::string& text, int32_t radix, uint8_t& value)
{
    return TextToUnsigned(text, radix, value);
}
HRESULT ExpressionEvaluator::TextToUInt16(const std::string& text, uint16_t& value)
{
    return TextToUnsigned(text, 0, value);
}
HRESULT ExpressionEvaluator::TextToUInt16Radix(const std::string& text, int32_t radix, uint16_t& value)
{
    return TextToUnsigned(text, radix, value);
}
HRESULT ExpressionEvaluator::TextToUInt32(const std::string& text, uint32_t& value)
{
    return TextToUnsigned(text, 0, value);
}
HRESULT ExpressionEvaluator::TextToUInt32Radix(const std::string& text, int32_t radix, uint32_t& value)
{
    return TextToUnsigned(text, radix, value);
}
HRESULT ExpressionEvaluator::TextToUInt64(const std::string& text, uint64_t& value)
{
    return TextToUnsigned(text, 0, value);
}
HRESULT ExpressionEvaluator::TextToUInt64Radix(const std::string& text, int32_t radix, uint64_t& value)
{
    return TextToUnsigned(text, radix, value);
}
HRESULT ExpressionEvaluator::TextToInt8(const std::string& text, int8_t& value)
{
    return TextToSigned(text, 0, value);
}
HRESULT ExpressionEvaluator::TextToInt8Radix(const std::string& text, int32_t radix, int8_t& value)
{
    return TextToSigned(text, radix, value);
}
HRESULT ExpressionEvaluator::TextToInt16(const std::string& text, int16_t& value)
{
    return TextToSigned(text, 0, value);
}
HRESULT ExpressionEvaluator::TextToInt16Radix(const std::string& text, int32_t radix, int16_t& value)
{
    return TextToSigned(text, radix, value);
}
HRESULT ExpressionEvaluator::TextToInt32(const std::string& text, int32_t& value)
{
    return TextToSigned(text, 0, value);
}
HRESULT ExpressionEvaluator::TextToInt32Radix(const std::string& text, int32_t radix, int32_t& value)
{
    return TextToSigned(text, radix, value);
}
HRESULT ExpressionEvaluator::TextToInt64(const std::string& text, int64_t& value)
{
    return TextToSigned(text, 0, value);
}
HRESULT ExpressionEvaluator::TextToInt64Radix(const std::string& text, int32_t radix, int64_t& value)
{
    return TextToSigned(text, radix, value);
}

HRESULT ExpressionEvaluator::ValueToText(uint64_t value, int size, int32_t radix, std::string& text)
{
    const int base = Resolve(radix);
    if (base < 0)
        return Report(E_INVALIDARG);
    text = RadixText::Fixed(value, base, size);
    return Report(S_OK);
}

// The symbol flag is accepted but no name is shown, as lookups go from name to
// value only.
HRESULT ExpressionEvaluator::AddressToText(uint32_t value, int32_t radix, VariantBool, std::string& text)
{
    return ValueToText(value, 4, radix, text);
}

HRESULT ExpressionEvaluator::AddressToTextHex(uint32_t value, VariantBool symbol, std::string& text)
{
    return AddressToText(value, 16, symbol, text);
}

int ExpressionEvaluator::AddressSize() const
{
    auto* target = GetServiceAs<IQForwardTarget>(registry_, Ids::ForwardTarget);
    uint32_t low = 0, limit = 0;
    if (target == nullptr || Failed(target->Forward(low, limit)))
        return 4;
    return limit < 0x100u ? 1 : limit < 0x10000u ? 2 : limit < 0x1000000u ? 3 : 4;
}

// Always hexadecimal, whatever the radix: addresses are read against the memory map.
HRESULT ExpressionEvaluator::FormatAddress(uint32_t value, VariantBool, VariantBool autoSize,
                                           VariantBool prefix, std::string& text)
{
    const int size = autoSize == VARIANT_TRUE ? AddressSize() : 4;
    text = RadixText::Fixed(value, 16, size, prefix == VARIANT_TRUE);
    return Report(S_OK);
}

HRESULT ExpressionEvaluator::UInt8ToText(uint8_t value, int32_t radix, std::string& text)
{
    return ValueToText(value, 1, radix, text);
}
HRESULT ExpressionEvaluator::UInt16ToText(uint16_t value, int32_t radix, std::string& text)
{
    return ValueToText(value, 2, radix, text);
}
HRESULT ExpressionEvaluator::UInt32ToText(uint32_t value, int32_t radix, std::string& text)
{
    return ValueToText(value, 4, radix, text);
}
HRESULT ExpressionEvaluator::UInt64ToText(uint64_t value, int32_t radix, std::string& text)
{
    return ValueToText(value, 8, radix, text);
}
HRESULT ExpressionEvaluator::Int8ToText(int8_t value, int32_t radix, std::string& text)
{
    return ValueToText(SignExtended(value), 1, radix, text);
}
HRESULT ExpressionEvaluator::Int16ToText(int16_t value, int32_t radix, std::string& text)
{
    return ValueToText(SignExtended(value), 2, radix, text);
}
HRESULT ExpressionEvaluator::Int32ToText(int32_t value, int32_t radix, std::string& text)
{
    return ValueToText(SignExtended(value), 4, radix, text);
}
// A negative 64-bit value in decimal shows its sign, before the prefix so that
// the text reads back as the same value: that text is what the signed form
// adds to the unsigned one. Other radixes show the bits.
HRESULT ExpressionEvaluator::Int64ToText(int64_t value, int32_t radix, std::string& text)
{
    if (value < 0 && Resolve(radix) == 10) {
        const uint64_t magnitude = uint64_t{0} - static_cast<uint64_t>(value);
        text = "-D'" + std::to_string(magnitude);
        return Report(S_OK);
    }
    return ValueToText(static_cast<uint64_t>(value), 8, radix, text);
}

HRESULT ExpressionEvaluator::ParseReal(const std::string& text, double& value)
{
    // strtod would skip leading blanks on its own but not trailing ones; both are allowed.
    const size_t first = text.find_first_not_of(" \t\r\n");
    const size_t last = text.find_last_not_of(" \t\r\n");
    if (first == std::string::npos)
        return Report(QE_EVAL_SYNTAX);
    const std::string trimmed = text.substr(first, last - first + 1);
    char* end = nullptr;
    errno = 0;
    const double result = std::strtod(trimmed.c_str(), &end);
    if (end != trimmed.c_str() + trimmed.size())
        return Report(QE_EVAL_SYNTAX);
    if (errno == ERANGE && std::isinf(result))
        return Report(QE_EVAL_TOO_LARGE);
    value = result;
    return Report(S_OK);
}

HRESULT ExpressionEvaluator::TextToDouble(const std::string& text, double& value)
{
    return ParseReal(text, value);
}

HRESULT ExpressionEvaluator::TextToFloat(const std::string& text, float& value)
{
    double wide = 0;
    const HRESULT hr = ParseReal(text, wide);
    if (Failed(hr))
        return hr;
    if (std::isfinite(wide) && std::fabs(wide) > std::numeric_limits<float>::max())
        return Report(QE_EVAL_TOO_LARGE);
    value = static_cast<float>(wide);
    return S_OK;
}

// A real is written as its integer part, like an integer of its size. A part
// that no integer of that size holds is refused rather than wrapped.
HRESULT ExpressionEvaluator::RealToText(double value, int size, int32_t radix, std::string& text)
{
    if (Resolve(radix) < 0)
        return Report(E_INVALIDARG);
    if (std::isnan(value))
        return Report(QE_EVAL_FLOAT_ERROR);
    const double whole = std::trunc(value);
    // The bounds are powers of two, so they are exact as doubles.
    const double below = size == 4 ? -0x1p31 : -0x1p63;
    const double above = size == 4 ? 0x1p32 : 0x1p64;
    if (!(whole >= below && whole < above))
        return Report(QE_EVAL_TOO_LARGE);
    if (whole >= 0)
        return ValueToText(static_cast<uint64_t>(whole), size, radix, text);
    const auto negative = static_cast<int64_t>(whole);
    const uint64_t bits =
        size == 4 ? SignExtended(static_cast<int32_t>(negative)) : static_cast<uint64_t>(negative);
    return ValueToText(bits, size, radix, text);
}

HRESULT ExpressionEvaluator::FloatToText(float value, int32_t radix, std::string& text)
{
    return RealToText(value, 4, radix, text);
}

HRESULT ExpressionEvaluator::DoubleToText(double value, int32_t radix, std::string& text)
{
    return RealToText(value, 8, radix, text);
}
