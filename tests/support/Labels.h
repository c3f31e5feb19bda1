#pragma once
#include <cstdint>
#include <optional>
#include <string_view>

// A small symbol table shared by the tests; BEEF is a label that is also a hex word.
inline std::optional<uint64_t> TestLabels(std::string_view name)
{
    if (name == "main")
        return 0x1000;
    if (name == "_stack_top")
        return 0x20008000;
    if (name == "loop.1")
        return 7;
    if (name == "BEEF")
        return 1;
    if (name == "GHOST")
        return 0x42;
    return std::nullopt;
}
