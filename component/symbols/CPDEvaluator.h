#pragma once
#include <cstdint>
#include <string>

#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/PlatformFunctions.h"
#include "boundary/interfaces/Workbench.h"

class CDebuggerState;

// The evaluator the component makes for a platform driven by function name:
// it adapts the platform's evaluating functions and its value-to-symbol
// function, and writes numbers in the prefix family (H'0010). It holds the
// session's radix; a new one starts at 16 and the radix outlives a
// disconnection. Integers are 32 bits throughout: 64-bit parsing gives a high
// half of 0 and 64-bit formatting reads the low half, only wider.
class CPDEvaluator : public IQEvaluator2, public IQErrorReporter
{
public:
    // Asks the registry for the evaluator host at once; without one the
    // evaluator is simply never put in front.
    CPDEvaluator(IQServiceRegistry* registry, CDebuggerState& state);
    virtual ~CPDEvaluator();
    CPDEvaluator(const CPDEvaluator&) = delete;
    CPDEvaluator& operator=(const CPDEvaluator&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT GetRadix(int32_t& radix) override;
    // No check of the value: the callers pass 2, 8, 10 or 16.
    HRESULT SetRadix(int32_t radix) override;
    // Without the platform's functions every conversion from text fails, and
    // a failed one leaves the out argument as it was.
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
    // Formatting needs no platform: without it there are just no symbols.
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
    // The value truncated toward zero, then written as an integer.
    HRESULT FloatToText(float value, int32_t radix, std::string& text) override;
    HRESULT DoubleToText(double value, int32_t radix, std::string& text) override;
    // Always hexadecimal. autoSize narrows the width to what the target's
    // highest address needs.
    HRESULT FormatAddress(uint32_t value, VariantBool symbol, VariantBool autoSize, VariantBool prefix,
                          std::string& text) override;

    // IQErrorReporter: the platform's text of its last failure; the code is
    // not looked at.
    HRESULT GetErrorText(HRESULT code, std::string& text) override;

    uint64_t Serial() const { return serial_; }
    // At connection: binds the platform's functions and puts this evaluator
    // in front of the workbench's. At disconnection: the reverse.
    void AttachPlatform();
    void DetachPlatform();

private:
    // The shared step of every conversion from text.
    HRESULT Evaluate(const std::string& text, int32_t radix, uint32_t& value) const;
    template <class T> HRESULT TextToInteger(const std::string& text, int32_t radix, T& value) const;
    HRESULT ValueToText(uint32_t value, uint32_t size, int32_t radix, VariantBool symbol,
                        std::string& text) const;
    // The platform's name of value into text; false, text untouched, when it has none.
    bool SymbolOf(uint32_t value, std::string& text) const;
    void ForgetFunctions();
    void LeaveFront();

    IQServiceRegistry* registry_;
    CDebuggerState& state_;
    IQEvaluatorHost* host_;
    int32_t radix_ = 16;
    PlatformEvalFn eval_ = nullptr;
    PlatformEvalFloatFn evalFloat_ = nullptr;
    PlatformEvalDoubleFn evalDouble_ = nullptr;
    PlatformValToSymFn valueToSymbol_ = nullptr;
    // Set while this evaluator is the one the host hands out, so that leaving
    // twice never takes away another session's.
    bool inFront_ = false;
    uint64_t serial_;
};
