#pragma once
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <string>

#include "boundary/Ids.h"
#include "boundary/interfaces/Workbench.h"

// A plain number parser standing in for the platform's evaluator: digits in the
// radix asked for (0 for the current one), nothing else. Counts radix changes.
class FakeEvaluator : public IQEvaluator2
{
    using Text = const std::string&;
    using Out = std::string&;

public:
    int32_t radix = 16;
    int sets = 0;

    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        *out = (iid == Ids::IUnknown || iid == Ids::IQEvaluator || iid == Ids::IQEvaluator2)
                   ? static_cast<IQEvaluator2*>(this)
                   : nullptr;
        return *out ? S_OK : E_NOINTERFACE;
    }
    TESSEL_NOT_REFCOUNTED

    HRESULT GetRadix(int32_t& r) override
    {
        r = radix;
        return S_OK;
    }
    HRESULT SetRadix(int32_t r) override
    {
        radix = r;
        ++sets;
        return S_OK;
    }

    HRESULT Parse(const std::string& text, int32_t r, uint64_t max, uint64_t& value)
    {
        if (text.empty() || text[0] == '-' || text[0] == '+' || text[0] == ' ')
            return E_FAIL;
        errno = 0;
        char* end = nullptr;
        unsigned long long v = std::strtoull(text.c_str(), &end, r ? r : radix);
        if (errno != 0 || end == nullptr || *end != '\0' || v > max)
            return E_FAIL;
        value = v;
        return S_OK;
    }
    template <class T> HRESULT ParseTo(const std::string& text, int32_t r, T& out)
    {
        uint64_t v = 0;
        HRESULT hr = Parse(text, r, std::numeric_limits<std::make_unsigned_t<T>>::max(), v);
        if (hr == S_OK)
            out = static_cast<T>(v);
        return hr;
    }
    HRESULT TextToAddress(Text t, uint32_t& v) override { return ParseTo(t, 0, v); }
    HRESULT TextToAddressRadix(Text t, int32_t r, uint32_t& v) override { return ParseTo(t, r, v); }
    HRESULT TextToUInt8(Text t, uint8_t& v) override { return ParseTo(t, 0, v); }
    HRESULT TextToUInt8Radix(Text t, int32_t r, uint8_t& v) override { return ParseTo(t, r, v); }
    HRESULT TextToUInt16(Text t, uint16_t& v) override { return ParseTo(t, 0, v); }
    HRESULT TextToUInt16Radix(Text t, int32_t r, uint16_t& v) override { return ParseTo(t, r, v); }
    HRESULT TextToUInt32(Text t, uint32_t& v) override { return ParseTo(t, 0, v); }
    HRESULT TextToUInt32Radix(Text t, int32_t r, uint32_t& v) override { return ParseTo(t, r, v); }
    HRESULT TextToUInt64(Text t, uint64_t& v) override { return ParseTo(t, 0, v); }
    HRESULT TextToUInt64Radix(Text t, int32_t r, uint64_t& v) override { return ParseTo(t, r, v); }
    HRESULT TextToInt8(Text t, int8_t& v) override { return ParseTo(t, 0, v); }
    HRESULT TextToInt8Radix(Text t, int32_t r, int8_t& v) override { return ParseTo(t, r, v); }
    HRESULT TextToInt16(Text t, int16_t& v) override { return ParseTo(t, 0, v); }
    HRESULT TextToInt16Radix(Text t, int32_t r, int16_t& v) override { return ParseTo(t, r, v); }
    HRESULT TextToInt32(Text t, int32_t& v) override { return ParseTo(t, 0, v); }
    HRESULT TextToInt32Radix(Text t, int32_t r, int32_t& v) override { return ParseTo(t, r, v); }
    HRESULT TextToInt64(Text t, int64_t& v) override { return ParseTo(t, 0, v); }
    HRESULT TextToInt64Radix(Text t, int32_t r, int64_t& v) override { return ParseTo(t, r, v); }

    HRESULT Format(uint64_t v, std::string& text)
    {
        char buffer[32];
        std::snprintf(buffer, sizeof buffer, "H'%llX", static_cast<unsigned long long>(v));
        text = buffer;
        return S_OK;
    }
    HRESULT AddressToText(uint32_t v, int32_t, VariantBool, Out t) override { return Format(v, t); }
    HRESULT AddressToTextHex(uint32_t v, VariantBool, Out t) override { return Format(v, t); }
    HRESULT UInt8ToText(uint8_t v, int32_t, Out t) override { return Format(v, t); }
    HRESULT UInt16ToText(uint16_t v, int32_t, Out t) override { return Format(v, t); }
    HRESULT UInt32ToText(uint32_t v, int32_t, Out t) override { return Format(v, t); }
    HRESULT UInt64ToText(uint64_t v, int32_t, Out t) override { return Format(v, t); }
    HRESULT Int8ToText(int8_t v, int32_t, Out t) override { return Format(uint8_t(v), t); }
    HRESULT Int16ToText(int16_t v, int32_t, Out t) override { return Format(uint16_t(v), t); }
    HRESULT Int32ToText(int32_t v, int32_t, Out t) override { return Format(uint32_t(v), t); }
    HRESULT Int64ToText(int64_t v, int32_t, Out t) override { return Format(uint64_t(v), t); }
    HRESULT TextToFloat(const std::string&, float&) override { return E_FAIL; }
    HRESULT TextToDouble(const std::string&, double&) override { return E_FAIL; }
    HRESULT FloatToText(float v, int32_t, Out t) override { return Format(uint64_t(v), t); }
    HRESULT DoubleToText(double v, int32_t, Out t) override { return Format(uint64_t(v), t); }
    HRESULT FormatAddress(uint32_t v, VariantBool, VariantBool, VariantBool, Out t) override
    {
        return Format(v, t);
    }
};
