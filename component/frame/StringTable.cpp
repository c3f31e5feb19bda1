#include "component/frame/StringTable.h"

#include <cstdarg>
#include <cstdio>
#include <unordered_map>

#include "component/frame/CDllResource.h"

namespace StringTable
{
namespace
{

const std::unordered_map<uint32_t, const char*>& OwnTable()
{
    static const std::unordered_map<uint32_t, const char*> table = {
#define TESSEL_STRING(id, text) {id, text},
#include "component/frame/Strings.inc"
#undef TESSEL_STRING
    };
    return table;
}

const CDllResource* g_source = nullptr;

} // namespace

const char* OwnText(uint32_t id)
{
    auto it = OwnTable().find(id);
    return it == OwnTable().end() ? nullptr : it->second;
}

std::string Load(uint32_t id)
{
    if (g_source != nullptr) {
        if (auto text = g_source->LoadText(id))
            return *text;
    }
    const char* own = OwnText(id);
    return own ? own : std::string();
}

void SetSource(const CDllResource* module)
{
    g_source = module;
}
const CDllResource* Source()
{
    return g_source;
}

} // namespace StringTable

std::string FormatText(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    va_list copy;
    va_copy(copy, args);
    int n = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    std::string out;
    if (n > 0) {
        out.resize(static_cast<size_t>(n) + 1);
        std::vsnprintf(out.data(), out.size(), format, args);
        out.resize(static_cast<size_t>(n));
    }
    va_end(args);
    return out;
}
