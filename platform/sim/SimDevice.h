#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sim/SimTarget.h"

// A part the simulator can be: the core it has and its memory map.
struct SimDevice {
    std::string_view name;
    // The core: a SimVariant's name.
    std::string_view variant;
    // Its memory map, in the form SimMemoryMap reads.
    std::string_view description;

    SimMapParse Map() const { return SimMemoryMap::Parse(description); }

    // The bare cores first, as their platforms make them, then the parts.
    static const std::vector<SimDevice>& All();
    // By name, in any case.
    static const SimDevice* Find(std::string_view name);
    // The core a choice (see Configure) gives, `platformVariant` for a file or nothing.
    static std::string VariantOf(const std::string& choice, const std::string& platformVariant);

    // What a session chose as its device, made into a target's configuration
    // without its callbacks: a device's name, or the path of a file holding a
    // memory map (relative to `folder`), which keeps the platform's core; empty:
    // the platform's own core and map. Empty with a message that names the file,
    // the line and what is wrong when the choice cannot be used.
    static std::optional<SimTarget::Config> Configure(const std::string& choice, const std::string& folder,
                                                      const std::string& platformVariant, std::string& error);
};
