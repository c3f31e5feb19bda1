#pragma once
#include <cstdint>
#include <string>

class CDllResource;

// Texts by number. The resource module, once installed, is the source of every
// text; before that, and when it has no text of a number, the component's own
// table answers.
namespace StringTable
{

// The component's own text of a number, or nullptr.
const char* OwnText(uint32_t id);

// The text from the current source; empty when no source knows the number.
std::string Load(uint32_t id);

// Make a loaded module the source of all texts; nullptr goes back to the own table.
void SetSource(const CDllResource* module);
const CDllResource* Source();

} // namespace StringTable

// printf-style formatting into a std::string.
std::string FormatText(const char* format, ...) __attribute__((format(printf, 1, 2)));
