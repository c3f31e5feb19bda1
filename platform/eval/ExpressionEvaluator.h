#pragma once
#include <cstdint>
#include <string>

#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/Workbench.h"
#include "platform/eval/ExpressionParser.h"

// Expressions to numbers and numbers to text in the session's radix. Texts
// have the radix prefix and a fixed width by the value's size, so that they
// line up in columns; a signed value up to 32 bits is written as the 32-bit
// pattern of its sign extension (Int8ToText(-1, 16) is "H'FFFFFFFF").
// Failures answer the evaluator's own codes (see EvalErrors.h), or
// E_INVALIDARG for a radix other than 0, 2, 8, 10 and 16; nothing throws.
class ExpressionEvaluator : public IQEvaluator2, public IQErrorReporter
{
public:
    // The registry hears of radix changes; it may be null.
    explicit ExpressionEvaluator(IQServiceRegistry* registry = nullptr) : registry_(registry) {}

    void SetLabelLookup(LabelLookup lookup) { lookup_ = std::move(lookup); }
    // Empty when the last operation succeeded.
    const std::string& LastErrorText() const { return lastError_; }
    // The whole text as one 64-bit value; the core of every TextTo operation.
    HRESULT Evaluate(const std::string& text, int32_t radix, uint64_t& value);

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT GetErrorText(HRESULT code, std::string& text) override;

    HRESULT GetRadix(int32_t& radix) override;
    HRESULT SetRadix(int32_t radix) override;
    HRESULT TextToAddress(const std::string& text, uint32_t& value) override;
    HRESULT TextToAddressRadix(const std::string& text, int32_t radix, uint32_t& value) override;
    HRESULT TextToUInt8(const std::string& text, uint8_t& value) override;
    HRESULT TextToUInt8Radix(const std::string& text, int32_t radix, uint8_t& value) override;
    HRESULT TextToUInt16(const std::string& text, uint16_t& value) override;
    HRESULT TextToUInt16Radix(const std::string& text, int32_t radix, uint16_t& value) override;
    HRESULT TextToUInt32(const std::string& text, uint32_t& value) override;
    HRESULT TextToUInt32Radix(const std::string& text, int32_t radix, uint32_t& value) override;
    HRESULT TextToUInt64(const std::string& text, uint64_t& value) override;
    HRESULT TextToUInt64Radix(const std::string& text, int32_t radix, uint64_t& value) override;
    HRESULT TextToInt8(const std::string& text, int8_t& value) override;
    HRESULT TextToInt8Radix(const std::string& text, int32_t radix, int8_t& value) override;
    HRESULT TextToInt16(const std::string& text, int16_t& value) override;
    HRESULT TextToInt16Radix(const std::string& text, int32_t radix, int16_t& value) override;
    HRESULT TextToInt32(const std::string& text, int32_t& value) override;
    HRESULT TextToInt32Radix(const std::string& text, int32_t radix, int32_t& value) override;
    HRESULT TextToInt64(const std::string& text, int64_t& value) override;
    HRESULT TextToInt64Radix(const std::string& text, int32_t radix, int64_t& value) override;
    HRESULT AddressToText(uint32_t value, int32_t radix, VariantBool symbol, std::string& text) override;
    HRESULT AddressToTextHex(uint32_t value, VariantBool symbol, std::string& text) override;
    HRESULT UInt8ToText(uint8_t value, int32_t radix, std::string& text) override;
    HRESULT UInt16ToText(uint16_t value, int32_t radix, std::string& text) override;
    HRESULT UInt32ToText(uint32_t value, int32_t radix, std::string& text) override;
    HRESULT UInt64ToText(uint64_t value, int32_t radix, std::string& text) override;
    HRESULT Int8ToText(int8_t value, int32_t radix, std::string& text) override;
    HRESULT Int16ToText(int16_t value, int32_t radix, std::string& text) override;
    HRESULT Int32ToText(int32_t value, int32_t radix, std::string& text) override;
    HRESULT Int64ToText(int64_t value, int32_t radix, std::string& text) override;
    HRESULT TextToFloat(const std::string& text, float& value) override;
    HRESULT TextToDouble(const std::string& text, double& value) override;
    HRESULT FloatToText(float value, int32_t radix, std::string& text) override;
    HRESULT DoubleToText(double value, int32_t radix, std::string& text) override;
    HRESULT FormatAddress(uint32_t value, VariantBool symbol, VariantBool autoSize, VariantBool prefix,
                          std::string& text) override;

private:
    template <class T> HRESULT TextToUnsigned(const std::string& text, int32_t radix, T& value);
    template <class T> HRESULT TextToSigned(const std::string& text, int32_t radix, T& value);
    // The prefixed text of a value of `size` bytes, fixed width (see RadixText).
    HRESULT ValueToText(uint64_t value, int size, int32_t radix, std::string& text);
    HRESULT RealToText(double value, int size, int32_t radix, std::string& text);
    // 1 to 4 bytes, by the target's highest address; 4 when no target says.
    int AddressSize() const;
    HRESULT ParseReal(const std::string& text, double& value);
    HRESULT Report(HRESULT code);
    // 0 stands for the current radix; -1 for one that is not accepted.
    int Resolve(int32_t radix) const;

    IQServiceRegistry* registry_;
    LabelLookup lookup_;
    int32_t radix_ = 16;
    std::string lastError_;
};
