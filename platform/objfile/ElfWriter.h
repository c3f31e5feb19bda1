#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "boundary/TargetAddress.h"

// An ELF32 little-endian Arm executable holding bytes at start: one loadable
// segment placed there (physical and virtual address alike), one section
// with the same bytes, and start as the entry.
std::string ElfFileOf(TargetAddress start, const std::vector<uint8_t>& bytes);
