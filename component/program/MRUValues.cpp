#include "component/program/MRUValues.h"

#include <cstdlib>
#include <utility>

#include "boundary/interfaces/Workbench.h"

namespace MRUValues
{

std::string Numbered(const char* name, int number)
{
    return name + std::to_string(number);
}

void WriteNumber(IQRecentListStore& store, const std::string& section, const std::string& key, uint32_t value)
{
    store.WriteValue(section, key, std::to_string(static_cast<int32_t>(value)));
}

bool ReadText(IQRecentListStore& store, const std::string& section, const std::string& key,
              std::string& value)
{
    std::string text;
    if (Failed(store.ReadValue(section, key, text)) || text.empty())
        return false;
    value = std::move(text);
    return true;
}

bool ReadNumber(IQRecentListStore& store, const std::string& section, const std::string& key, uint32_t& value)
{
    std::string text;
    if (!ReadText(store, section, key, text))
        return false;
    // Out of the range of long it stops at the limit, as the C library does;
    // the field keeps the low 32 bits.
    value = static_cast<uint32_t>(std::strtol(text.c_str(), nullptr, 10));
    return true;
}

} // namespace MRUValues
