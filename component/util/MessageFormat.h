#pragma once
#include <cstdarg>
#include <cstdint>
#include <string>
#include <string_view>

// The stored messages write 64-bit conversions with an "I64" length prefix
// ("%I64X"), which the C library here does not know; it wants "%llX".
namespace MessageFormat
{

// Rewrites every "%I64" length prefix to "ll", flags and width kept; "%%" and
// everything else pass unchanged.
std::string TranslateFormat64(std::string_view format);

// vsnprintf after translation. An unusable format gives an empty string.
std::string FormatV(std::string_view format, va_list args);

// A stored format filled in. The caller passes arguments of the types the
// translated format asks for: unsigned long long for "%I64X" and "%I64u".
std::string Format(const char* format, ...);

} // namespace MessageFormat

// The text of a string-table number, filled in as MessageFormat::Format does.
// An unknown number gives an empty string.
std::string FormatMessageText(uint32_t stringId, ...);
