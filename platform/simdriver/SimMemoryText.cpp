#include "platform/simdriver/SimMemoryText.h"

#include <cstdio>

namespace SimMemoryText
{

std::string HexAddress(uint64_t value)
{
    char text[16];
    std::snprintf(text, sizeof text, "H'%08X", static_cast<unsigned>(value));
    return text;
}

std::string HexByte(uint8_t value)
{
    char text[8];
    std::snprintf(text, sizeof text, "H'%02X", value);
    return text;
}

std::string Mismatch(uint64_t address, uint8_t found, uint8_t wanted, const char* how)
{
    return HexAddress(address) + " holds " + HexByte(found) + ", " + HexByte(wanted) + " was " + how;
}

} // namespace SimMemoryText
