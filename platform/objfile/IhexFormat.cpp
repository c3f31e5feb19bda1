#include "platform/objfile/IhexFormat.h"

#include <algorithm>
#include <numeric>

#include "platform/objfile/ObjectCodes.h"

namespace
{

enum RecordType : uint8_t {
    kData = 0,
    kEnd = 1,
    kSegment = 2,
    kSegmentStart = 3,
    kLinear = 4,
    kLinearStart = 5
};

// The data length each record type but data must have.
constexpr size_t kLength[6] = {0, 0, 2, 4, 2, 4};

uint8_t Checksum(const uint8_t* bytes, size_t count)
{
    return static_cast<uint8_t>(0x100 - (std::accumulate(bytes, bytes + count, 0u) & 0xFF));
}

void AppendRecord(std::string& text, RecordType type, uint16_t address, const uint8_t* data, size_t count)
{
    std::vector<uint8_t> record{static_cast<uint8_t>(count)};
    PutBigEndian(record, address, 2);
    record.push_back(type);
    record.insert(record.end(), data, data + count);
    record.push_back(Checksum(record.data(), record.size()));
    AppendRecordLine(text, ":", record);
}

} // namespace

HRESULT ParseIhex(std::string_view text, TextImage& image)
{
    TextImage read;
    uint32_t base = 0;
    for (std::string_view line : RecordLines(text)) {
        const auto bytes = line.front() == ':' ? HexPairs(line.substr(1)) : std::nullopt;
        // Count, two address bytes, type, data, checksum; the sum of all is 0.
        if (!bytes || bytes->size() < 5 || bytes->front() != bytes->size() - 5 ||
            Checksum(bytes->data(), bytes->size() - 1) != bytes->back())
            return OE_MODULE_FORMAT;
        const uint8_t type = (*bytes)[3];
        const uint8_t* data = bytes->data() + 4;
        const size_t count = bytes->size() - 5;
        if (type > kLinearStart || (type != kData && count != kLength[type]))
            return OE_MODULE_FORMAT;
        const uint32_t value = BigEndian(data, count);
        switch (type) {
        case kData: {
            // Addresses wrap inside the 64 KiB the base names.
            const uint32_t offset = BigEndian(bytes->data() + 1, 2);
            const size_t below = std::min<size_t>(count, 0x10000 - offset);
            read.Add(base + offset, data, below);
            read.Add(base, data + below, count - below);
            break;
        }
        case kEnd:
            image = std::move(read);
            return S_OK;
        case kSegment:
            base = value << 4;
            break;
        case kLinear:
            base = value << 16;
            break;
        case kSegmentStart:
            read.entry = ((value >> 16) << 4) + (value & 0xFFFF);
            break;
        default:
            read.entry = value;
        }
    }
    // Without its end record the file was cut short.
    return OE_MODULE_FORMAT;
}

std::string WriteIhex(TargetAddress start, const std::vector<uint8_t>& bytes)
{
    constexpr size_t kLine = 16;
    std::string text;
    std::optional<uint32_t> upper;
    for (size_t at = 0; at < bytes.size();) {
        const uint32_t address = start.Value() + static_cast<uint32_t>(at);
        if (upper != address >> 16) {
            upper = address >> 16;
            const uint8_t high[2] = {static_cast<uint8_t>(*upper >> 8), static_cast<uint8_t>(*upper)};
            AppendRecord(text, kLinear, 0, high, 2);
        }
        const size_t count = std::min({kLine, bytes.size() - at, size_t{0x10000 - (address & 0xFFFF)}});
        AppendRecord(text, kData, static_cast<uint16_t>(address), bytes.data() + at, count);
        at += count;
    }
    AppendRecord(text, kEnd, 0, nullptr, 0);
    return text;
}
