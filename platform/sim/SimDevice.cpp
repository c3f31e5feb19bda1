#include "platform/sim/SimDevice.h"

#include <strings.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/sim/SimVariant.h"

namespace fs = std::filesystem;

namespace
{

// Evaluation boards whose flash starts at 0, so that firmware linked for the
// board runs here unchanged. Peripherals as the bare cores have them.
constexpr std::string_view kLm3s6965 = R"(# LM3S6965: 256 KiB flash, 64 KiB SRAM
flash      0x00000000 0x00040000 rx  flash
ram        0x20000000 0x00010000 rwx sram
peripheral 0x40000000 0x20000000 rw  peripherals
peripheral 0xE0000000 0x00100000 rw  system
)";

constexpr std::string_view kLm3s811 = R"(# LM3S811: 64 KiB flash, 8 KiB SRAM
flash      0x00000000 0x00010000 rx  flash
ram        0x20000000 0x00002000 rwx sram
peripheral 0x40000000 0x20000000 rw  peripherals
peripheral 0xE0000000 0x00100000 rw  system
)";

// A map is a few lines; anything longer is not one.
constexpr std::streamsize kLargestFile = 64 * 1024;

std::string DeviceNames()
{
    std::string names;
    for (const SimDevice& device : SimDevice::All())
        names += (names.empty() ? "" : ", ") + std::string(device.name);
    return names;
}

std::optional<std::string> ReadMapFile(const std::string& choice, const fs::path& path, std::string& error)
{
    std::error_code ec;
    if (!fs::exists(path, ec)) {
        error = "No device or device file named " + choice + " (devices: " + DeviceNames() + ")";
        return std::nullopt;
    }
    // Only a plain file: reading a pipe or a device could wait forever.
    std::ifstream in;
    if (fs::is_regular_file(path, ec))
        in.open(path, std::ios::binary);
    std::string text(static_cast<size_t>(kLargestFile) + 1, '\0');
    if (!in.is_open() || in.read(text.data(), kLargestFile + 1).bad()) {
        error = "Cannot read the device file " + choice;
        return std::nullopt;
    }
    text.resize(static_cast<size_t>(in.gcount()));
    if (in.gcount() > kLargestFile) {
        error = "Device file " + choice + " is larger than 64 KiB";
        return std::nullopt;
    }
    return text;
}

} // namespace

const std::vector<SimDevice>& SimDevice::All()
{
    static const std::vector<SimDevice> devices = [] {
        std::vector<SimDevice> list;
        for (const SimVariant& core : SimVariant::All())
            list.push_back({core.name, core.name, core.description});
        list.push_back({"lm3s6965", "cortex-m3", kLm3s6965});
        list.push_back({"lm3s811", "cortex-m3", kLm3s811});
        return list;
    }();
    return devices;
}

const SimDevice* SimDevice::Find(std::string_view name)
{
    for (const SimDevice& device : All())
        if (device.name.size() == name.size() &&
            strncasecmp(device.name.data(), name.data(), name.size()) == 0)
            return &device;
    return nullptr;
}

std::string SimDevice::VariantOf(const std::string& choice, const std::string& platformVariant)
{
    const SimDevice* device = Find(choice);
    return device != nullptr ? std::string(device->variant) : platformVariant;
}

std::optional<SimTarget::Config> SimDevice::Configure(const std::string& choice, const std::string& folder,
                                                      const std::string& platformVariant, std::string& error)
{
    SimTarget::Config config;
    config.variant = VariantOf(choice, platformVariant);
    if (choice.empty())
        return config;
    SimMapParse parsed;
    if (const SimDevice* device = Find(choice)) {
        parsed = device->Map();
    } else {
        auto text = ReadMapFile(choice, fs::path(folder) / choice, error);
        if (!text)
            return std::nullopt;
        parsed = SimMemoryMap::Parse(*text);
    }
    if (!parsed.map) {
        error = "Device file " + choice + ": " + parsed.error;
        return std::nullopt;
    }
    config.map = std::move(parsed.map);
    return config;
}
