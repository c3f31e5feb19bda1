#pragma once
#include <cstdint>
#include <string>

struct IQRecentListStore;

// The values of a recent list as the store keeps them: text, numbers as
// signed decimals of their 32 bits.
namespace MRUValues
{

// The key of entry `number`: the name with the number behind it ("File3").
std::string Numbered(const char* name, int number);

void WriteNumber(IQRecentListStore& store, const std::string& section, const std::string& key,
                 uint32_t value);

// False, and the value as it was, when the read fails or gives an empty text.
bool ReadText(IQRecentListStore& store, const std::string& section, const std::string& key,
              std::string& value);
// Converted as the C library does: blanks and a sign first, then the digits
// as far as they go, none giving 0; "-1" is 0xFFFFFFFF.
bool ReadNumber(IQRecentListStore& store, const std::string& section, const std::string& key,
                uint32_t& value);

} // namespace MRUValues
