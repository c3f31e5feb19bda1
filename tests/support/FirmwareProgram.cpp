#include "support/FirmwareProgram.h"

#include <fstream>
#include <iterator>
#include <sstream>

namespace
{
std::string PathOf(std::string_view name, const char* extension)
{
    return std::string(TESSEL_FIRMWARE_DIR) + "/" + std::string(name) + extension;
}
} // namespace

std::optional<FirmwareProgram> FirmwareProgram::Load(std::string_view name)
{
    std::ifstream image(PathOf(name, ".bin"), std::ios::binary);
    std::ifstream symbols(PathOf(name, ".sym"));
    if (!image || !symbols)
        return std::nullopt;
    FirmwareProgram firmware;
    firmware.image_.assign(std::istreambuf_iterator<char>(image), {});
    std::string line;
    while (std::getline(symbols, line)) {
        std::istringstream fields(line);
        std::string address, type, symbol;
        if (fields >> address >> type >> symbol)
            firmware.symbols_[symbol] = static_cast<uint32_t>(std::stoul(address, nullptr, 16));
    }
    return firmware;
}

uint32_t FirmwareProgram::Symbol(std::string_view name) const
{
    auto it = symbols_.find(name);
    return it == symbols_.end() ? 0 : it->second;
}
