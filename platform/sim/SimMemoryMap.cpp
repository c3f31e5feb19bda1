#include "platform/sim/SimMemoryMap.h"

#include <algorithm>
#include <charconv>

#include "platform/sim/SimText.h"

namespace
{

constexpr uint64_t kAddressSpace = uint64_t{1} << 32;
constexpr uint64_t kPage = 0x1000;

struct Line {
    int number;
    std::vector<std::string_view> tokens;
};

std::vector<std::string_view> Tokens(std::string_view text)
{
    std::vector<std::string_view> tokens;
    size_t pos = 0;
    while (pos < text.size()) {
        const size_t start = text.find_first_not_of(" \t\r\v\f", pos);
        if (start == std::string_view::npos)
            break;
        const size_t end = std::min(text.find_first_of(" \t\r\v\f", start), text.size());
        tokens.push_back(text.substr(start, end - start));
        pos = end;
    }
    return tokens;
}

std::optional<uint64_t> Number(std::string_view text)
{
    int base = 10;
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        text.remove_prefix(2);
        base = 16;
    }
    uint64_t value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (text.empty() || ec != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

std::optional<RegionKind> Kind(std::string_view text)
{
    for (RegionKind kind : {RegionKind::Flash, RegionKind::Ram, RegionKind::Peripheral})
        if (text == RegionKindName(kind))
            return kind;
    return std::nullopt;
}

std::optional<uint8_t> Access(std::string_view text)
{
    uint8_t bits = 0;
    for (char c : text) {
        const uint8_t bit = c == 'r' ? kAccessRead : c == 'w' ? kAccessWrite : c == 'x' ? kAccessExecute : 0;
        if (bit == 0 || (bits & bit) != 0)
            return std::nullopt;
        bits |= bit;
    }
    if (bits == 0)
        return std::nullopt;
    return bits;
}

std::string Quoted(std::string_view text)
{
    std::string quoted;
    quoted.reserve(text.size() + 2);
    quoted += '\'';
    quoted += text;
    quoted += '\'';
    return quoted;
}

// A region with the line it came from, so an overlap can name both lines.
struct Parsed {
    SimRegion region;
    int line;
};

std::optional<std::string> ParseRegion(const Line& line, Parsed& out)
{
    const auto& t = line.tokens;
    if (t.size() < 4 || t.size() > 5)
        return "expected 'kind base size access [name]'";
    const auto kind = Kind(t[0]);
    if (!kind)
        return "unknown region kind " + Quoted(t[0]);
    const auto base = Number(t[1]);
    if (!base)
        return "bad number " + Quoted(t[1]);
    const auto size = Number(t[2]);
    if (!size)
        return "bad number " + Quoted(t[2]);
    if (*base >= kAddressSpace)
        return "base " + Quoted(t[1]) + " beyond 32 bits";
    if (*size == 0)
        return "zero size";
    if (*size > kAddressSpace - *base)
        return "region wraps beyond 32 bits";
    if (*base % kPage != 0 || *size % kPage != 0)
        return "base and size must be multiples of 0x1000";
    const auto access = Access(t[3]);
    if (!access)
        return "bad access " + Quoted(t[3]) + " (use r, w and x)";
    if (*kind == RegionKind::Peripheral && (*access & kAccessExecute) != 0)
        return "peripheral region cannot be executable";
    out.region = SimRegion{std::string(t.size() == 5 ? t[4] : t[0]), static_cast<uint32_t>(*base), *size,
                           *kind, *access};
    out.line = line.number;
    return std::nullopt;
}

std::string LineError(int line, const std::string& reason)
{
    return "line " + std::to_string(line) + ": " + reason;
}

} // namespace

SimMapParse SimMemoryMap::Parse(std::string_view description)
{
    std::vector<Parsed> parsed;
    int number = 0;
    while (!description.empty() || number == 0) {
        ++number;
        const size_t newline = description.find('\n');
        std::string_view text = description.substr(0, newline);
        description.remove_prefix(newline == std::string_view::npos ? description.size() : newline + 1);
        text = text.substr(0, text.find('#'));
        Line line{number, Tokens(text)};
        if (line.tokens.empty())
            continue;
        Parsed region;
        if (auto error = ParseRegion(line, region))
            return {std::nullopt, LineError(number, *error)};
        for (const Parsed& other : parsed) {
            if (region.region.base < other.region.End() && other.region.base < region.region.End())
                return {std::nullopt, LineError(number, "region overlaps " + Quoted(other.region.name) +
                                                            " from line " + std::to_string(other.line))};
        }
        parsed.push_back(std::move(region));
    }
    if (parsed.empty())
        return {std::nullopt, "no regions in the description"};
    SimMemoryMap map;
    for (Parsed& p : parsed)
        map.regions_.push_back(std::move(p.region));
    std::sort(map.regions_.begin(), map.regions_.end(),
              [](const SimRegion& a, const SimRegion& b) { return a.base < b.base; });
    return {std::move(map), {}};
}

const SimRegion* SimMemoryMap::Find(uint32_t address) const
{
    for (const SimRegion& region : regions_)
        if (region.Contains(address))
            return &region;
    return nullptr;
}

const SimRegion* SimMemoryMap::FirstOf(RegionKind kind) const
{
    for (const SimRegion& region : regions_)
        if (region.kind == kind)
            return &region;
    return nullptr;
}

std::string SimMemoryMap::Summary(bool withPeripherals) const
{
    std::string text;
    for (const SimRegion& region : regions_)
        if (withPeripherals || region.kind != RegionKind::Peripheral)
            text += (text.empty() ? "" : ", ") + region.name + " " + SimText::Hex(region.base) + " " +
                    std::to_string(region.size / 1024) + " KiB";
    return text;
}
