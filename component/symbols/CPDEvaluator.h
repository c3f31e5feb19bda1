#pragma once
#include <cstdint>

#include "boundary/interfaces/Workbench.h"

class CDebuggerState;

// The evaluator the component makes for a platform driven by function name.
// It holds the session's radix; a new one starts at 16.
class CPDEvaluator : public IQEvaluator2
{
public:
    CPDEvaluator(IQServiceRegistry* registry, CDebuggerState& state);
    virtual ~CPDEvaluator() = default;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT GetRadix(int32_t& radix) override;
    // No check of the value: the callers pass 2, 8, 10 or 16.
    HRESULT SetRadix(int32_t radix) override;
    // The platform's evaluating functions are found when it attaches; without
    // them every conversion from text fails.
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

    uint64_t Serial() const { return serial_; }
    void AttachPlatform() { attached_ = true; }
    void DetachPlatform() { attached_ = false; }
    bool Attached() const { return attached_; }

private:
    IQServiceRegistry* registry_;
    CDebuggerState& state_;
    int32_t radix_ = 16;
    uint64_t serial_;
    bool attached_ = false;
};
