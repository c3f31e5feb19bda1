#pragma once
#include <functional>
#include <string>

#include "platform/eval/ExpressionEvaluator.h"

// The platform's own evaluator, counting the radix changes asked of it and
// calling `onText` whenever it writes a byte.
class RecordingEvaluator : public ExpressionEvaluator
{
public:
    int sets = 0;
    std::function<void()> onText;

    // What a registry holds it as.
    IQEvaluator2* Service() { return this; }
    int32_t Radix()
    {
        int32_t radix = 0;
        GetRadix(radix);
        return radix;
    }
    HRESULT SetRadix(int32_t radix) override
    {
        ++sets;
        return ExpressionEvaluator::SetRadix(radix);
    }
    HRESULT UInt8ToText(uint8_t value, int32_t radix, std::string& text) override
    {
        if (onText)
            onText();
        return ExpressionEvaluator::UInt8ToText(value, radix, text);
    }
};
