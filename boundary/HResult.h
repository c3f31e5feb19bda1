#pragma once
#include <cstdint>

// Result codes cross every interface of the system. Negative is failure; some
// operations answer 1 for a plain "no", so callers say whether they test for
// "not negative" (Succeeded) or for exactly S_OK.
using HRESULT = int32_t;

constexpr HRESULT MakeResult(uint32_t bits)
{
    return static_cast<HRESULT>(bits);
}

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOTIMPL = MakeResult(0x80004001u);
constexpr HRESULT E_NOINTERFACE = MakeResult(0x80004002u);
constexpr HRESULT E_POINTER = MakeResult(0x80004003u);
constexpr HRESULT E_FAIL = MakeResult(0x80004005u);
constexpr HRESULT E_OUTOFMEMORY = MakeResult(0x8007000Eu);
constexpr HRESULT E_INVALIDARG = MakeResult(0x80070057u);

constexpr bool Failed(HRESULT hr)
{
    return hr < 0;
}
constexpr bool Succeeded(HRESULT hr)
{
    return hr >= 0;
}

// Codes the component answers without a row of its own in the error table.
constexpr HRESULT QE_DLL_ERROR = MakeResult(0x80040201u);
constexpr HRESULT QE_FILE_NOT_FOUND = MakeResult(0x80040202u);
constexpr HRESULT QE_NOT_IMPLEMENTED = MakeResult(0x80040208u);
constexpr HRESULT QE_FILE_READ = MakeResult(0x80040216u);
constexpr HRESULT QE_NOT_CONNECTED = MakeResult(0x80040218u);
constexpr HRESULT QE_DOWNLOAD_ABORTED = MakeResult(0x80040219u);
