// A resource module for tests, wrong in the one way its build definition names.
#include <cstdint>
#include <cstring>

namespace
{

int32_t g_productCalls = 0;
int32_t g_lastProductSize = 0;
bool g_lastBufferCleared = false;

int32_t CopyOut(const char* text, char* buffer, int32_t* size)
{
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

#ifndef RESMOD_NO_INTERFACE_VERSION
int32_t GetDLLInterfaceVersion(int32_t* major, int32_t* minor)
{
#ifdef RESMOD_INTERFACE_20
    *major = 2;
#else
    *major = 1;
#endif
    *minor = 0;
    return 0;
}
#endif

int32_t GetDLLOrdinalVersion(int32_t* ordinal)
{
#ifdef RESMOD_ORDINAL_2
    *ordinal = 2;
#else
    *ordinal = 1;
#endif
    return 0;
}

int32_t GetDLLProductVersion(char* buffer, int32_t* size)
{
    ++g_productCalls;
    g_lastProductSize = *size;
#ifdef RESMOD_SMALL_BUFFER
    // Claims to need a buffer of 2000 bytes the first time.
    if (g_productCalls == 1) {
        *size = 2000;
        return 1;
    }
    g_lastBufferCleared = true;
    for (int32_t i = 0; i < *size; ++i)
        if (buffer[i] != 0)
            g_lastBufferCleared = false;
#endif
#ifdef RESMOD_PRODUCT_100
    return CopyOut("1.00", buffer, size);
#else
    return CopyOut("1.0", buffer, size);
#endif
}

#ifndef RESMOD_NO_TYPE
int32_t GetDLLType(char* buffer, int32_t* size)
{
#ifdef RESMOD_WRONG_TYPE
    return CopyOut("Library", buffer, size);
#else
    return CopyOut("Resource", buffer, size);
#endif
}
#endif

int32_t GetDLLString(uint32_t id, char* buffer, int32_t* size)
{
    if (id == 57640)
        return CopyOut("Tessel Debugger (from module)", buffer, size);
    return -1;
}

// What the tests read back.
int32_t ResmodProductCalls()
{
    return g_productCalls;
}
int32_t ResmodLastProductSize()
{
    return g_lastProductSize;
}
int32_t ResmodLastBufferCleared()
{
    return g_lastBufferCleared ? 1 : 0;
}
}
