#pragma once
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

#include "support/FakeEvaluator.h"

// The evaluator as the command line sees it on an older platform: fixed-width
// texts with the radix's prefix ("H'0012", "D'00018"), upper-case hexadecimal,
// for the operations the memory commands use; radixes 10 and 16 are enough
// here. Parsing is the plain digits of FakeEvaluator.
class PrefixEvaluator : public FakeEvaluator
{
public:
    // Called at every number text made.
    std::function<void()> onText;

    // The one text of the family: an unsigned 32-bit value shown at the width
    // of size bytes. radix 0 is the current radix.
    HRESULT Text(uint32_t value, int size, int32_t r, std::string& text) const
    {
        if (onText)
            onText();
        r = r != 0 ? r : radix;
        char buffer[64] = {};
        switch (r) {
        case 10:
            std::snprintf(buffer, sizeof buffer, "D'%0*u", (size * 12 + 4) / 5, value);
            break;
        case 16:
            std::snprintf(buffer, sizeof buffer, "H'%0*X", size * 2, value);
            break;
        default:
            return E_FAIL;
        }
        text = buffer;
        return S_OK;
    }
    // Floating values are shown truncated to an integer; one that no
    // integer holds has no text.
    HRESULT Real(double v, int size, int32_t r, std::string& t) const
    {
        if (!std::isfinite(v) || std::fabs(v) >= 9.2e18)
            return E_FAIL;
        return Text(static_cast<uint32_t>(static_cast<int64_t>(v)), size, r, t);
    }

    HRESULT UInt8ToText(uint8_t v, int32_t r, std::string& t) override { return Text(v, 1, r, t); }
    HRESULT UInt16ToText(uint16_t v, int32_t r, std::string& t) override { return Text(v, 2, r, t); }
    HRESULT Int32ToText(int32_t v, int32_t r, std::string& t) override
    {
        return Text(static_cast<uint32_t>(v), 4, r, t);
    }
    HRESULT FloatToText(float v, int32_t r, std::string& t) override { return Real(v, 4, r, t); }
    HRESULT DoubleToText(double v, int32_t r, std::string& t) override { return Real(v, 8, r, t); }
    HRESULT FormatAddress(uint32_t v, VariantBool, VariantBool, VariantBool prefix, std::string& t) override
    {
        char buffer[16];
        std::snprintf(buffer, sizeof buffer, prefix ? "H'%08X" : "%08X", v);
        t = buffer;
        return S_OK;
    }

    template <class T> HRESULT ParseFloating(const std::string& text, T& value)
    {
        char* end = nullptr;
        value = static_cast<T>(std::strtod(text.c_str(), &end));
        return !text.empty() && *end == '\0' ? S_OK : E_FAIL;
    }
    HRESULT TextToFloat(const std::string& t, float& v) override { return ParseFloating(t, v); }
    HRESULT TextToDouble(const std::string& t, double& v) override { return ParseFloating(t, v); }
};
