#pragma once
#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A test program built by tests/firmware: its raw image and its symbols.
class FirmwareProgram
{
public:
    static constexpr uint32_t kFlashBase = 0x08000000;

    static std::optional<FirmwareProgram> Load(std::string_view name)
    {
        const std::string path = std::string(TESSEL_FIRMWARE_DIR) + "/" + std::string(name);
        std::ifstream image(path + ".bin", std::ios::binary);
        std::ifstream symbols(path + ".sym");
        if (!image || !symbols)
            return std::nullopt;
        FirmwareProgram firmware;
        firmware.image_.assign(std::istreambuf_iterator<char>(image), {});
        std::string address, type, symbol;
        while (symbols >> address >> type >> symbol)
            firmware.symbols_[symbol] = static_cast<uint32_t>(std::stoul(address, nullptr, 16));
        return firmware;
    }

    const std::vector<uint8_t>& Image() const { return image_; }
    // The symbol's address; 0 when the program has no such symbol.
    uint32_t Symbol(std::string_view name) const
    {
        auto it = symbols_.find(name);
        return it == symbols_.end() ? 0 : it->second;
    }

private:
    std::vector<uint8_t> image_;
    std::map<std::string, uint32_t, std::less<>> symbols_;
};
