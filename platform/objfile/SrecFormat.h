#pragma once
#include "platform/objfile/TextImage.h"

// Motorola S-records: S0 header, S1/S2/S3 data with 16-, 24- and 32-bit
// addresses, S5/S6 record counts, S7/S8/S9 start address.
HRESULT ParseSrec(std::string_view text, TextImage& image);
// An S0 header, S3 data records of 16 bytes, and an S7 giving start.
std::string WriteSrec(TargetAddress start, const std::vector<uint8_t>& bytes);

inline constexpr TextFormat SrecText{"srec", ParseSrec, WriteSrec};
