#pragma once
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// A firmware image of the test build, empty when it is missing.
inline std::vector<uint8_t> FirmwareImage(const std::string& name)
{
    std::ifstream in(std::string(TESSEL_FIRMWARE_DIR) + "/" + name + ".bin", std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {});
}
