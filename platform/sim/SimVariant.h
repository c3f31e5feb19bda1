#pragma once
#include <string_view>
#include <vector>

// A CPU variant the simulator offers, with its built-in platform description.
struct SimVariant {
    std::string_view name;
    // The Unicorn CPU model, kept as int so this header stays free of Unicorn.
    int cpuModel;
    std::string_view description;

    static const SimVariant* Find(std::string_view name);
    static const std::vector<SimVariant>& All();
};
