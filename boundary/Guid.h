#pragma once
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

// A 16-byte identity, written in the usual "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}"
// text. In memory it has the conventional layout of such an identity: a 32-bit
// field and two 16-bit fields in the machine's byte order, then eight bytes,
// so that a host which fills in that structure hands us an identity we know.
// Compared byte by byte.
struct Guid {
    std::array<uint8_t, 16> bytes{};

    static constexpr Guid FromText(std::string_view text)
    {
        Guid g;
        // A malformed literal is a compile-time error when used in a constexpr context.
        if (!Decode(text, g))
            throw "malformed GUID text";
        return g;
    }

    // For runtime text (stored values): no throw, an empty optional-like result.
    static bool TryParse(std::string_view text, Guid& out);
    std::string ToText() const;

    constexpr bool IsNull() const
    {
        for (auto b : bytes)
            if (b != 0)
                return false;
        return true;
    }

    friend constexpr bool operator==(const Guid& a, const Guid& b) { return a.bytes == b.bytes; }

private:
    static constexpr int Nibble(char c)
    {
        if (c >= '0' && c <= '9')
            return c - '0';
        if (c >= 'A' && c <= 'F')
            return c - 'A' + 10;
        if (c >= 'a' && c <= 'f')
            return c - 'a' + 10;
        return -1;
    }
    // Where the n-th byte of the text (the most significant first within each of
    // the three leading fields) lives in memory.
    static constexpr size_t Place(size_t n)
    {
        if constexpr (std::endian::native == std::endian::big)
            return n;
        if (n < 4)
            return 3 - n;
        if (n < 8)
            return n ^ 1;
        return n;
    }
    // "{8-4-4-4-12}" hex digits.
    static constexpr bool Decode(std::string_view text, Guid& out)
    {
        if (text.size() != 38 || text.front() != '{' || text.back() != '}')
            return false;
        for (size_t dash : {9u, 14u, 19u, 24u})
            if (text[dash] != '-')
                return false;
        Guid g;
        size_t at = 0;
        for (size_t i = 1; i + 1 < text.size();) {
            if (text[i] == '-') {
                ++i;
                continue;
            }
            int hi = Nibble(text[i]), lo = Nibble(text[i + 1]);
            if (hi < 0 || lo < 0)
                return false;
            g.bytes[Place(at++)] = static_cast<uint8_t>(hi << 4 | lo);
            i += 2;
        }
        out = g;
        return true;
    }
};

static_assert(sizeof(Guid) == 16, "an identity crosses the boundary as 16 bytes");

consteval Guid operator""_guid(const char* text, size_t n)
{
    return Guid::FromText({text, n});
}

inline bool Guid::TryParse(std::string_view text, Guid& out)
{
    return Decode(text, out);
}

inline std::string Guid::ToText() const
{
    static constexpr char hex[] = "0123456789ABCDEF";
    std::string s = "{";
    for (size_t i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            s += '-';
        s += hex[bytes[Place(i)] >> 4];
        s += hex[bytes[Place(i)] & 15];
    }
    s += '}';
    return s;
}

template <> struct std::hash<Guid> {
    size_t operator()(const Guid& g) const noexcept
    {
        size_t h = 1469598103934665603ull;
        for (auto b : g.bytes)
            h = (h ^ b) * 1099511628211ull;
        return h;
    }
};
