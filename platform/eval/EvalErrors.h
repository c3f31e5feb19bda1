#pragma once
#include "boundary/HResult.h"

// Codes the evaluator answers; their texts are given through IQErrorReporter.
constexpr HRESULT QE_EVAL_SYNTAX = MakeResult(0x80040901u);
constexpr HRESULT QE_EVAL_DIVIDE_BY_ZERO = MakeResult(0x80040904u);
constexpr HRESULT QE_EVAL_TOO_LARGE = MakeResult(0x80040908u);
constexpr HRESULT QE_EVAL_FLOAT_ERROR = MakeResult(0x80040910u);
constexpr HRESULT QE_EVAL_UNDEFINED_SYMBOL = MakeResult(0x80041013u);

// Null for a code that is not the evaluator's own.
inline const char* EvalErrorText(HRESULT code)
{
    switch (code) {
    case QE_EVAL_SYNTAX:
        return "Syntax error";
    case QE_EVAL_DIVIDE_BY_ZERO:
        return "Divide by zero";
    case QE_EVAL_TOO_LARGE:
        return "Result is too large for requested value";
    case QE_EVAL_FLOAT_ERROR:
        return "Float error";
    case QE_EVAL_UNDEFINED_SYMBOL:
        return "Undefined symbol";
    default:
        return nullptr;
    }
}
