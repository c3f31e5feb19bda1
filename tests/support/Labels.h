#pragma once
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>

// A small symbol table shared by the tests; BEEF is a label that is also a hex word.
inline std::optional<uint64_t> TestLabels(std::string_view name)
{
    static const std::map<std::string_view, uint64_t> labels{
        {"main", 0x1000}, {"_stack_top", 0x20008000}, {"loop.1", 7}, {"BEEF", 1}};
    auto it = labels.find(name);
    return it == labels.end() ? std::nullopt : std::optional(it->second);
}
