#include "platform/objfile/TextImage.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>

void TextImage::Add(uint32_t address, const uint8_t* bytes, size_t count)
{
    if (count == 0)
        return;
    if (blocks.empty() || uint64_t{blocks.back().address.Value()} + blocks.back().bytes.size() != address)
        blocks.push_back({address, {}});
    blocks.back().bytes.insert(blocks.back().bytes.end(), bytes, bytes + count);
}

HRESULT ReadWholeFile(const std::string& path, std::string& text)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return QE_FILE_NOT_FOUND;
    text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return in.bad() ? QE_FILE_READ : S_OK;
}

std::vector<std::string_view> RecordLines(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\t'))
            line.remove_suffix(1);
        if (!line.empty())
            lines.push_back(line);
    }
    return lines;
}

std::optional<std::vector<uint8_t>> HexPairs(std::string_view digits)
{
    if (digits.size() % 2 != 0)
        return std::nullopt;
    std::vector<uint8_t> bytes;
    bytes.reserve(digits.size() / 2);
    for (const char* at = digits.data(); at != digits.data() + digits.size(); at += 2) {
        uint8_t byte = 0;
        // Unsigned, so no sign is taken; and both digits must be read.
        if (std::from_chars(at, at + 2, byte, 16).ptr != at + 2)
            return std::nullopt;
        bytes.push_back(byte);
    }
    return bytes;
}

void AppendRecordLine(std::string& text, std::string_view lead, const std::vector<uint8_t>& record)
{
    static constexpr char kDigits[] = "0123456789ABCDEF";
    text += lead;
    for (uint8_t b : record) {
        text += kDigits[b >> 4];
        text += kDigits[b & 0xF];
    }
    text += "\r\n";
}

uint32_t BigEndian(const uint8_t* bytes, size_t count)
{
    uint32_t value = 0;
    for (size_t i = 0; i < count; ++i)
        value = value << 8 | bytes[i];
    return value;
}

void PutBigEndian(std::vector<uint8_t>& bytes, uint32_t value, size_t count)
{
    for (size_t i = count; i-- > 0;)
        bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
}
