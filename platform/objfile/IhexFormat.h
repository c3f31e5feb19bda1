#pragma once
#include "platform/objfile/TextImage.h"

// Intel HEX: 00 data, 01 end of file, 02 extended segment and 04 extended
// linear address, 03 and 05 start address.
HRESULT ParseIhex(std::string_view text, TextImage& image);
// 04 and 00 records of up to 16 bytes, never crossing 64 KiB, and the 01 record.
std::string WriteIhex(TargetAddress start, const std::vector<uint8_t>& bytes);

inline constexpr TextFormat IhexText{"ihex", ParseIhex, WriteIhex};
