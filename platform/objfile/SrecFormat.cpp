#include "platform/objfile/SrecFormat.h"

#include <algorithm>
#include <numeric>

#include "platform/objfile/ObjectCodes.h"

namespace
{

// The address bytes of each record type S0 to S9; 0 for the unused S4.
constexpr size_t kAddressBytes[10] = {2, 2, 3, 4, 0, 2, 3, 4, 3, 2};

uint8_t Checksum(const uint8_t* bytes, size_t count)
{
    return static_cast<uint8_t>(~std::accumulate(bytes, bytes + count, 0u));
}

void AppendRecord(std::string& text, char type, uint32_t address, size_t addressBytes, const uint8_t* data,
                  size_t count)
{
    std::vector<uint8_t> record{static_cast<uint8_t>(addressBytes + count + 1)};
    PutBigEndian(record, address, addressBytes);
    record.insert(record.end(), data, data + count);
    record.push_back(Checksum(record.data(), record.size()));
    AppendRecordLine(text, std::string{'S', type}, record);
}

} // namespace

HRESULT ParseSrec(std::string_view text, TextImage& image)
{
    TextImage read;
    uint32_t dataRecords = 0;
    const auto lines = RecordLines(text);
    for (std::string_view line : lines) {
        const int type = line.size() >= 2 && line[0] == 'S' ? line[1] - '0' : -1;
        const auto bytes = HexPairs(line.substr(std::min<size_t>(2, line.size())));
        if (type < 0 || type > 9 || kAddressBytes[type] == 0 || !bytes)
            return OE_MODULE_FORMAT;
        const size_t addressBytes = kAddressBytes[type];
        // The count byte counts what follows it: a shorter or longer line is damaged.
        if (bytes->size() < addressBytes + 2 || bytes->front() != bytes->size() - 1 ||
            Checksum(bytes->data(), bytes->size() - 1) != bytes->back())
            return OE_MODULE_FORMAT;
        const uint32_t address = BigEndian(bytes->data() + 1, addressBytes);
        const size_t dataBytes = bytes->size() - addressBytes - 2;
        if (type >= 1 && type <= 3) {
            read.Add(address, bytes->data() + 1 + addressBytes, dataBytes);
            ++dataRecords;
        } else if ((type == 5 || type == 6) && address != (dataRecords & ((1u << (8 * addressBytes)) - 1))) {
            return OE_MODULE_FORMAT;
        } else if (type >= 7) {
            read.entry = address;
        }
    }
    if (lines.empty())
        return OE_MODULE_FORMAT;
    image = std::move(read);
    return S_OK;
}

std::string WriteSrec(TargetAddress start, const std::vector<uint8_t>& bytes)
{
    constexpr size_t kLine = 16;
    std::string text;
    AppendRecord(text, '0', 0, 2, nullptr, 0);
    for (size_t at = 0; at < bytes.size(); at += kLine)
        AppendRecord(text, '3', start.Value() + static_cast<uint32_t>(at), 4, bytes.data() + at,
                     std::min(kLine, bytes.size() - at));
    AppendRecord(text, '7', start.Value(), 4, nullptr, 0);
    return text;
}
