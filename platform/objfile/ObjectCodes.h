#pragma once
#include <string>

#include "boundary/HResult.h"

// The object reader's own codes, with the texts it answers for them.
constexpr HRESULT OE_MODULE_VERSION = MakeResult(0x80043001u);
constexpr HRESULT OE_MODULE_FORMAT = MakeResult(0x80043002u);
constexpr HRESULT OE_MODULE_NOT_ABSOLUTE = MakeResult(0x80043004u);
constexpr HRESULT OE_MODULE_CPU = MakeResult(0x80043005u);
constexpr HRESULT OE_LINE_NO_ADDRESS = MakeResult(0x80043010u);
constexpr HRESULT OE_LINE_NOT_FOUND = MakeResult(0x80043011u);
constexpr HRESULT OE_FUNCTION_NOT_FOUND = MakeResult(0x80043040u);
constexpr HRESULT OE_NOT_FOUND = MakeResult(0x80040211u);
constexpr HRESULT OE_USER_ABORTED = MakeResult(0x80040209u);
constexpr HRESULT OE_NOT_ENOUGH_MEMORY = MakeResult(0x80040207u);
constexpr HRESULT OE_FILE_WRITE = MakeResult(0x80040217u);
constexpr HRESULT OE_INVALID_PARAMETER = MakeResult(0x80042019u);
constexpr HRESULT OE_VERIFY_FAILED = MakeResult(0x80042022u);
constexpr HRESULT OE_READ_FAILED = MakeResult(0x80043092u);
constexpr HRESULT OE_WRITE_FAILED = MakeResult(0x80043093u);

// Empty for a code that is not the reader's.
std::string ObjectCodeText(HRESULT code);
// As IQErrorReporter answers: E_FAIL for a code that is not the reader's.
HRESULT ObjectErrorText(HRESULT code, std::string& text);
