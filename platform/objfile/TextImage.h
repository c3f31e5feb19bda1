#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "boundary/HResult.h"
#include "platform/objfile/BlockTransfer.h"

// What an object file of text records holds: its data in file order, a record
// that follows on the one before joined to it, and the start address when the
// file names one.
struct TextImage {
    std::vector<DataBlock> blocks;
    std::optional<uint32_t> entry;

    void Add(uint32_t address, const uint8_t* bytes, size_t count);
};

// A text record format: parse checks the whole text before it hands out
// anything; write makes the records of bytes that begin at start.
struct TextFormat {
    const char* name;
    HRESULT (*parse)(std::string_view text, TextImage& image);
    std::string (*write)(TargetAddress start, const std::vector<uint8_t>& bytes);
};

// The file's bytes; QE_FILE_NOT_FOUND or QE_FILE_READ.
HRESULT ReadWholeFile(const std::string& path, std::string& text);
// The lines of a text without their line ends and trailing blanks; empty lines are left out.
std::vector<std::string_view> RecordLines(std::string_view text);
// Pairs of hex digits, either case; nothing for an odd count or any other character.
std::optional<std::vector<uint8_t>> HexPairs(std::string_view digits);
// A line of the lead text and two uppercase hex digits per byte of the record.
void AppendRecordLine(std::string& text, std::string_view lead, const std::vector<uint8_t>& record);
// A big-endian number of the first count bytes.
uint32_t BigEndian(const uint8_t* bytes, size_t count);
// The number's low count bytes, most significant first.
void PutBigEndian(std::vector<uint8_t>& bytes, uint32_t value, size_t count);
