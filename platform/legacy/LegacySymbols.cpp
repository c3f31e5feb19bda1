#include "platform/legacy/LegacySymbols.h"

std::optional<uint32_t> LegacySymbols::Find(std::string_view name) const
{
    auto it = byName_.find(name);
    if (it == byName_.end())
        return std::nullopt;
    return it->second;
}

const char* LegacySymbols::NameAt(uint32_t value) const
{
    for (const auto& [name, at] : byName_)
        if (at == value)
            return name.c_str();
    return nullptr;
}
