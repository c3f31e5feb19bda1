#include "component/symbols/NumberFormat.h"

#include <cstring>

#include "component/util/MessageFormat.h"

namespace
{

// The digits in each radix that the largest value of `size` bytes needs:
// bits times log10(8), log10(2) and log10(16), over-approximated in integers.
uint32_t WidthFor(uint32_t size, int32_t radix)
{
    switch (radix) {
    case 8:
        return (size * 26 + 9) / 10;
    case 10:
        return (size * 12 + 4) / 5;
    default:
        return size * 2;
    }
}

uint64_t SignExtend(uint64_t value, uint32_t bits)
{
    switch (bits) {
    case 8:
        return static_cast<uint64_t>(static_cast<int64_t>(static_cast<int8_t>(value)));
    case 16:
        return static_cast<uint64_t>(static_cast<int64_t>(static_cast<int16_t>(value)));
    case 32:
        return static_cast<uint64_t>(static_cast<int64_t>(static_cast<int32_t>(value)));
    default:
        return value;
    }
}

std::string BinaryDigits(uint64_t value, uint32_t bits)
{
    std::string digits;
    digits.reserve(bits);
    for (uint32_t i = bits; i > 0; --i)
        digits += ((value >> (i - 1)) & 1) != 0 ? '1' : '0';
    return digits;
}

uint32_t SignificantBits(uint64_t value)
{
    uint32_t bits = 0;
    for (; value != 0; value >>= 1)
        ++bits;
    return bits;
}

bool IsNumberKind(int32_t kind)
{
    switch (kind) {
    case 0:
    case 1:
    case 2:
    case 4:
    case 5:
    case 8:
    case 10:
    case 14:
        return true;
    default:
        return false;
    }
}

// As "%.*s" would copy it: up to `limit` bytes, ending early at a terminator.
std::string Quoted(const uint8_t* data, size_t limit)
{
    const auto* text = reinterpret_cast<const char*>(data);
    return "\"" + std::string(text, strnlen(text, limit)) + "\"";
}

constexpr size_t kMaxPointedText = 1024;

} // namespace

std::string MakeNumberFormat(uint32_t size, int32_t radix, bool prefixed)
{
    if (size == 0 || size > 8)
        return {};
    const char* prefix = nullptr;
    const char* conversion = nullptr;
    switch (radix) {
    case 8:
        prefix = "O'";
        conversion = "lo";
        break;
    case 10:
        prefix = "D'";
        conversion = "lu";
        break;
    case 16:
        prefix = "H'";
        conversion = "lX";
        break;
    default:
        return {};
    }
    return (prefixed ? prefix : "") + std::string("%0") + std::to_string(WidthFor(size, radix)) + conversion;
}

std::string ApplyNumberFormat(const std::string& format, uint32_t value)
{
    if (format.empty())
        return {};
    return MessageFormat::Format(format.c_str(), static_cast<unsigned long>(value));
}

std::string ValueToBinaryText(uint32_t value, uint32_t bits)
{
    return BinaryDigits(value, bits > 32 ? 32 : bits);
}

std::string FormatInteger(uint64_t value, int32_t kind, int32_t radix, uint32_t bits, bool padded)
{
    if (bits > 64)
        bits = 64;
    if (kind == ValueKind::Signed)
        value = SignExtend(value, bits);
    const auto wide = static_cast<unsigned long long>(value);
    switch (radix) {
    case 2: {
        if (padded)
            return "B'" + BinaryDigits(value, bits);
        const uint32_t significant = SignificantBits(value);
        return "B'" + (significant == 0 ? std::string("0") : BinaryDigits(value, significant));
    }
    case 8:
        if (padded)
            return MessageFormat::Format("O'%0*I64o", static_cast<int>((bits + 2) / 3), wide);
        return MessageFormat::Format("O'%I64o", wide);
    case 10:
        if (kind == ValueKind::Signed)
            return MessageFormat::Format("D'%I64d", static_cast<long long>(value));
        return MessageFormat::Format("D'%I64u", wide);
    case 16:
        if (padded)
            return MessageFormat::Format("0x%0*I64x", static_cast<int>((bits + 3) / 4), wide);
        return MessageFormat::Format("0x%I64x", wide);
    default:
        return {};
    }
}

std::string FormatValue(const uint8_t* data, int32_t kind, int32_t radix, uint32_t size, bool padded)
{
    if (data == nullptr)
        return {};
    uint64_t value = 0;
    if (IsNumberKind(kind)) {
        if (size > 8)
            return {};
        for (uint32_t i = 0; i < size; ++i)
            value = (value << 8) | data[i];
    }
    switch (kind) {
    case ValueKind::Boolean:
        return value == 0 ? " FALSE" : " TRUE";
    case ValueKind::Signed:
    case ValueKind::Unsigned: {
        std::string text = FormatInteger(value, kind, radix, size * 8, padded);
        if (size == 1) {
            // "%c" into a C string: a zero byte ends the text there.
            const char c = static_cast<char>(value & 0xFF);
            text += " '";
            if (c != '\0')
                text += std::string(1, c) + "'";
        }
        return text;
    }
    case ValueKind::Floating:
        // Floating values are in the host's own byte order, unlike integers.
        if (size == 4) {
            float f;
            std::memcpy(&f, data, sizeof f);
            return MessageFormat::Format("%-7.7g", static_cast<double>(f));
        }
        if (size == 8) {
            double d;
            std::memcpy(&d, data, sizeof d);
            return MessageFormat::Format("%-15.15lg", d);
        }
        return {};
    case 4:
    case 5:
    case 14: {
        const auto wide = static_cast<unsigned long long>(value);
        if (padded)
            return MessageFormat::Format("0x%0*I64x", static_cast<int>((size * 8 + 3) / 4), wide);
        return MessageFormat::Format("0x%I64x", wide);
    }
    case ValueKind::Text:
        return size == 0 ? std::string() : Quoted(data, size);
    case 8:
    case 10:
        return FormatInteger(value, kind, radix, size * 8, padded);
    case ValueKind::TextPointer: {
        if (data[0] == 0)
            return {};
        const size_t limit = size == 0 || size > kMaxPointedText ? kMaxPointedText : size;
        return Quoted(data, limit);
    }
    default:
        return {};
    }
}
