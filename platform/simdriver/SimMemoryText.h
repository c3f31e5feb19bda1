#pragma once
#include <cstdint>
#include <string>

#include "boundary/Flags.h"

// The pieces of the simulator memory's failure details, so that every address
// and byte in them looks alike: "H'20000010", "H'12".
namespace SimMemoryText
{

std::string HexAddress(uint64_t value);
inline std::string HexAddress(TargetAddress address)
{
    return HexAddress(uint64_t{address.Value()});
}
std::string HexByte(uint8_t value);
// "H'20000010 holds H'00, H'12 was written": what a read-back found.
std::string Mismatch(uint64_t address, uint8_t found, uint8_t wanted, const char* how);
inline std::string Mismatch(TargetAddress address, uint8_t found, uint8_t wanted, const char* how)
{
    return Mismatch(uint64_t{address.Value()}, found, wanted, how);
}

} // namespace SimMemoryText
