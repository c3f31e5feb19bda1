#pragma once
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

// The function-name platform's own symbols: what its evaluating function
// resolves labels against and what its value-to-symbol function answers. It
// is empty until someone defines names (a program load, or a test).
class LegacySymbols
{
public:
    // A name defined again takes the new value.
    void Define(const std::string& name, uint32_t value) { byName_[name] = value; }
    void Clear() { byName_.clear(); }
    std::optional<uint32_t> Find(std::string_view name) const;
    // The first name in name order that has the value, or null. The text stays
    // valid until the table changes.
    const char* NameAt(uint32_t value) const;

private:
    std::map<std::string, uint32_t, std::less<>> byName_;
};
