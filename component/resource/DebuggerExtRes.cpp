// The resource module: the component's texts, loaded by file name beside the
// component, with the version queries the component checks before using it.
#include <cstdint>
#include <cstring>

namespace
{

struct Text {
    uint32_t id;
    const char* text;
};

const Text kTexts[] = {
#define TESSEL_STRING(id, text) {id, text},
#include "component/frame/Strings.inc"
#undef TESSEL_STRING
};

// A result above 0 tells the caller that the buffer is too small and how big
// it must be.
int32_t CopyOut(const char* text, char* buffer, int32_t* size)
{
    if (buffer == nullptr || size == nullptr)
        return -1;
    auto needed = static_cast<int32_t>(std::strlen(text) + 1);
    if (*size < needed) {
        *size = needed;
        return 1;
    }
    std::memcpy(buffer, text, static_cast<size_t>(needed));
    return 0;
}

} // namespace

extern "C" {

int32_t GetDLLInterfaceVersion(int32_t* major, int32_t* minor)
{
    if (major == nullptr || minor == nullptr)
        return -1;
    *major = 1;
    *minor = 0;
    return 0;
}

int32_t GetDLLOrdinalVersion(int32_t* ordinal)
{
    if (ordinal == nullptr)
        return -1;
    *ordinal = 1;
    return 0;
}

int32_t GetDLLProductVersion(char* buffer, int32_t* size)
{
    return CopyOut("1.0", buffer, size);
}

int32_t GetDLLType(char* buffer, int32_t* size)
{
    return CopyOut("Resource", buffer, size);
}

int32_t GetDLLString(uint32_t id, char* buffer, int32_t* size)
{
    for (const auto& t : kTexts)
        if (t.id == id)
            return CopyOut(t.text, buffer, size);
    return -1;
}
}
