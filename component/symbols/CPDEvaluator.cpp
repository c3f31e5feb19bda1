#include "component/symbols/CPDEvaluator.h"

#include <cmath>
#include <cstdint>

#include "boundary/Ids.h"
#include "component/frame/CDebuggerState.h"
#include "component/symbols/NumberFormat.h"
#include "component/util/ObjectSerial.h"

namespace
{

bool IsPlatformRadix(int32_t radix)
{
    return radix == 2 || radix == 8 || radix == 10 || radix == 16;
}

uint32_t SignExtended(int32_t value)
{
    return static_cast<uint32_t>(value);
}

// Toward zero, then the low 32 bits; values outside what 64 bits hold are
// clamped first, so no input is undefined.
uint32_t TruncatedLow32(double value)
{
    if (std::isnan(value))
        return 0;
    constexpr double kTwoTo63 = 9223372036854775808.0;
    if (value >= kTwoTo63)
        return static_cast<uint32_t>(INT64_MAX);
    if (value < -kTwoTo63)
        return static_cast<uint32_t>(INT64_MIN);
    return static_cast<uint32_t>(static_cast<int64_t>(value));
}

// The highest address of the target decides how many bytes an address needs.
uint32_t AddressSizeFor(uint32_t limit)
{
    if (limit < 0x100)
        return 1;
    if (limit < 0x10000)
        return 2;
    if (limit < 0x1000000)
        return 3;
    return 4;
}

} // namespace

CPDEvaluator::CPDEvaluator(IQServiceRegistry* registry, CDebuggerState& state)
    : registry_(registry), state_(state),
      host_(GetServiceAs<IQEvaluatorHost>(registry, Ids::IQEvaluatorHost)), serial_(NextObjectSerial())
{
}

CPDEvaluator::~CPDEvaluator()
{
    LeaveFront();
}

HRESULT CPDEvaluator::QueryInterface(const Guid& iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    if (iid == Ids::IQErrorReporter) {
        *out = static_cast<IQErrorReporter*>(this);
        return S_OK;
    }
    return AnswerFrom({Ids::IUnknown, Ids::IQEvaluator, Ids::IQEvaluator2}, iid,
                      static_cast<IQEvaluator2*>(this), out);
}

void CPDEvaluator::AttachPlatform()
{
    ForgetFunctions();
    if (auto* functions = GetServiceAs<IQPlatformFunctions>(registry_, Ids::IQPlatformFunctions)) {
        eval_ = LookUpPlatformFunction<PlatformEvalFn>(*functions, "EXP_Eval");
        evalFloat_ = LookUpPlatformFunction<PlatformEvalFloatFn>(*functions, "EXP_Eval_FLOAT");
        evalDouble_ = LookUpPlatformFunction<PlatformEvalDoubleFn>(*functions, "EXP_Eval_DOUBLE");
        valueToSymbol_ = LookUpPlatformFunction<PlatformValToSymFn>(*functions, "LOAD_ValToSym");
    }
    if (host_ != nullptr && host_->SetEvaluator(this) == S_OK)
        inFront_ = true;
}

void CPDEvaluator::DetachPlatform()
{
    // The functions die with the platform.
    ForgetFunctions();
    LeaveFront();
}

void CPDEvaluator::ForgetFunctions()
{
    eval_ = nullptr;
    evalFloat_ = nullptr;
    evalDouble_ = nullptr;
    valueToSymbol_ = nullptr;
}

void CPDEvaluator::LeaveFront()
{
    if (inFront_ && host_ != nullptr)
        host_->ClearEvaluator();
    inFront_ = false;
}

HRESULT CPDEvaluator::GetRadix(int32_t& radix)
{
    radix = radix_;
    return S_OK;
}

HRESULT CPDEvaluator::SetRadix(int32_t radix)
{
    radix_ = radix;
    if (registry_ != nullptr)
        registry_->Broadcast(Event{Ids::EVENT_RADIX_CHANGED, radix});
    return S_OK;
}

HRESULT CPDEvaluator::Evaluate(const std::string& text, int32_t radix, uint32_t& value) const
{
    if (eval_ == nullptr)
        return E_FAIL;
    if (radix == 0)
        radix = radix_;
    // A radix the platform has no digits for is left to its own default.
    if (!IsPlatformRadix(radix))
        radix = 0;
    uint32_t result = 0;
    if (eval_(text.c_str(), radix, 0, &result) == 0)
        return E_FAIL;
    value = result;
    return S_OK;
}

template <class T> HRESULT CPDEvaluator::TextToInteger(const std::string& text, int32_t radix, T& value) const
{
    uint32_t result = 0;
    if (Failed(Evaluate(text, radix, result)))
        return E_FAIL;
    // Narrow types keep the low bits; 64-bit ones get a high half of 0, never the sign.
    value = static_cast<T>(result);
    return S_OK;
}

HRESULT CPDEvaluator::TextToAddress(const std::string& text, uint32_t& value)
{
    return TextToInteger(text, 0, value);
}
HRESULT CPDEvaluator::TextToAddressRadix(const std::string& text, int32_t radix, uint32_t& value)
{
    return TextToInteger(text, radix, value);
}
HRESULT CPDEvaluator::TextToUInt8(const std::string& text, uint8_t& value)
{
    return TextToInteger(text, 0, value);
}
HRESULT CPDEvaluator::TextToUInt8Radix(const std::string& text, int32_t radix, uint8_t& value)
{
    return TextToInteger(text, radix, value);
}
HRESULT CPDEvaluator::TextToUInt16(const std::string& text, uint16_t& value)
{
    return TextToInteger(text, 0, value);
}
HRESULT CPDEvaluator::TextToUInt16Radix(const std::string& text, int32_t radix, uint16_t& value)
{
    return TextToInteger(text, radix, value);
}
HRESULT CPDEvaluator::TextToUInt32(const std::string& text, uint32_t& value)
{
    return TextToInteger(text, 0, value);
}
HRESULT CPDEvaluator::TextToUInt32Radix(const std::string& text, int32_t radix, uint32_t& value)
{
    return TextToInteger(text, radix, value);
}
HRESULT CPDEvaluator::TextToUInt64(const std::string& text, uint64_t& value)
{
    return TextToInteger(text, 0, value);
}
HRESULT CPDEvaluator::TextToUInt64Radix(const std::string& text, int32_t radix, uint64_t& value)
{
    return TextToInteger(text, radix, value);
}
HRESULT CPDEvaluator::TextToInt8(const std::string& text, int8_t& value)
{
    return TextToInteger(text, 0, value);
}
HRESULT CPDEvaluator::TextToInt8Radix(const std::string& text, int32_t radix, int8_t& value)
{
    return TextToInteger(text, radix, value);
}
HRESULT CPDEvaluator::TextToInt16(const std::string& text, int16_t& value)
{
    return TextToInteger(text, 0, value);
}
HRESULT CPDEvaluator::TextToInt16Radix(const std::string& text, int32_t radix, int16_t& value)
{
    return TextToInteger(text, radix, value);
}
HRESULT CPDEvaluator::TextToInt32(const std::string& text, int32_t& value)
{
    return TextToInteger(text, 0, value);
}
HRESULT CPDEvaluator::TextToInt32Radix(const std::string& text, int32_t radix, int32_t& value)
{
    return TextToInteger(text, radix, value);
}
HRESULT CPDEvaluator::TextToInt64(const std::string& text, int64_t& value)
{
    return TextToInteger(text, 0, value);
}
HRESULT CPDEvaluator::TextToInt64Radix(const std::string& text, int32_t radix, int64_t& value)
{
    return TextToInteger(text, radix, value);
}

HRESULT CPDEvaluator::TextToFloat(const std::string& text, float& value)
{
    float result = 0;
    if (evalFloat_ == nullptr || evalFloat_(text.c_str(), &result) == 0)
        return E_FAIL;
    value = result;
    return S_OK;
}

HRESULT CPDEvaluator::TextToDouble(const std::string& text, double& value)
{
    double result = 0;
    if (evalDouble_ == nullptr || evalDouble_(text.c_str(), &result) == 0)
        return E_FAIL;
    value = result;
    return S_OK;
}

bool CPDEvaluator::SymbolOf(uint32_t value, std::string& text) const
{
    if (valueToSymbol_ == nullptr)
        return false;
    // The text stays the platform's: copy it before anything else calls in.
    const char* name = valueToSymbol_(0, value);
    if (name == nullptr || *name == '\0')
        return false;
    text = name;
    return true;
}

HRESULT CPDEvaluator::ValueToText(uint32_t value, uint32_t size, int32_t radix, VariantBool symbol,
                                  std::string& text) const
{
    if (radix == 0)
        radix = radix_;
    if (symbol == VARIANT_TRUE && SymbolOf(value, text))
        return S_OK;
    std::string result = radix == 2 ? "B'" + ValueToBinaryText(value, size * 8)
                                    : ApplyNumberFormat(MakeNumberFormat(size, radix, true), value);
    if (result.empty())
        return E_FAIL;
    text = std::move(result);
    return S_OK;
}

HRESULT CPDEvaluator::AddressToText(uint32_t value, int32_t radix, VariantBool symbol, std::string& text)
{
    return ValueToText(value, 4, radix, symbol, text);
}
HRESULT CPDEvaluator::AddressToTextHex(uint32_t value, VariantBool symbol, std::string& text)
{
    return AddressToText(value, 16, symbol, text);
}
HRESULT CPDEvaluator::UInt8ToText(uint8_t value, int32_t radix, std::string& text)
{
    return ValueToText(value, 1, radix, VARIANT_FALSE, text);
}
HRESULT CPDEvaluator::UInt16ToText(uint16_t value, int32_t radix, std::string& text)
{
    return ValueToText(value, 2, radix, VARIANT_FALSE, text);
}
HRESULT CPDEvaluator::UInt32ToText(uint32_t value, int32_t radix, std::string& text)
{
    return ValueToText(value, 4, radix, VARIANT_FALSE, text);
}
HRESULT CPDEvaluator::UInt64ToText(uint64_t value, int32_t radix, std::string& text)
{
    return ValueToText(static_cast<uint32_t>(value), 8, radix, VARIANT_FALSE, text);
}
HRESULT CPDEvaluator::Int8ToText(int8_t value, int32_t radix, std::string& text)
{
    return ValueToText(SignExtended(value), 1, radix, VARIANT_FALSE, text);
}
HRESULT CPDEvaluator::Int16ToText(int16_t value, int32_t radix, std::string& text)
{
    return ValueToText(SignExtended(value), 2, radix, VARIANT_FALSE, text);
}
HRESULT CPDEvaluator::Int32ToText(int32_t value, int32_t radix, std::string& text)
{
    return ValueToText(SignExtended(value), 4, radix, VARIANT_FALSE, text);
}
HRESULT CPDEvaluator::Int64ToText(int64_t value, int32_t radix, std::string& text)
{
    return ValueToText(static_cast<uint32_t>(value), 8, radix, VARIANT_FALSE, text);
}
HRESULT CPDEvaluator::FloatToText(float value, int32_t radix, std::string& text)
{
    return ValueToText(TruncatedLow32(value), 4, radix, VARIANT_FALSE, text);
}
HRESULT CPDEvaluator::DoubleToText(double value, int32_t radix, std::string& text)
{
    return ValueToText(TruncatedLow32(value), 8, radix, VARIANT_FALSE, text);
}

HRESULT CPDEvaluator::FormatAddress(uint32_t value, VariantBool symbol, VariantBool autoSize,
                                    VariantBool prefix, std::string& text)
{
    if (symbol == VARIANT_TRUE && SymbolOf(value, text))
        return S_OK;
    uint32_t size = 4;
    if (autoSize == VARIANT_TRUE) {
        uint32_t low = 0;
        uint32_t limit = 0xFFFFFFFF;
        if (Succeeded(state_.ForwardToService(low, limit)))
            size = AddressSizeFor(limit);
    }
    text = ApplyNumberFormat(MakeNumberFormat(size, 16, prefix == VARIANT_TRUE), value);
    return S_OK;
}

HRESULT CPDEvaluator::GetErrorText(HRESULT, std::string& text)
{
    auto* functions = GetServiceAs<IQPlatformFunctions>(registry_, Ids::IQPlatformFunctions);
    return functions != nullptr ? functions->GetLastErrorText(text) : E_FAIL;
}
