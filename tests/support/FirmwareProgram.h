#pragma once
#include <cstdint>
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

    static std::optional<FirmwareProgram> Load(std::string_view name);

    const std::vector<uint8_t>& Image() const { return image_; }
    // The symbol's address; 0 when the program has no such symbol.
    uint32_t Symbol(std::string_view name) const;

private:
    std::vector<uint8_t> image_;
    std::map<std::string, uint32_t, std::less<>> symbols_;
};
