#include "support/FakePlatformFunctions.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace FakePd
{

Record& State()
{
    static Record record;
    return record;
}

void Reset()
{
    Record& r = State();
    for (uint32_t i = 0; i < kMemorySize; ++i)
        r.memory[i] = static_cast<uint8_t>(i);
    r.calls.clear();
    r.fail = false;
    r.symbols.clear();
}

} // namespace FakePd

namespace
{

void Log(const char* format, ...) __attribute__((format(printf, 1, 2)));
void Log(const char* format, ...)
{
    char line[256];
    va_list args;
    va_start(args, format);
    std::vsnprintf(line, sizeof line, format, args);
    va_end(args);
    FakePd::State().calls.emplace_back(line);
}

bool InMemory(uint32_t address, uint64_t length)
{
    return address + length <= FakePd::kMemorySize;
}

int Read(const char* name, uint32_t address, uint32_t length, uint8_t* buffer)
{
    Log("%s 0x%X %u", name, address, length);
    if (FakePd::State().fail || !InMemory(address, length))
        return 0;
    std::memcpy(buffer, FakePd::State().memory.data() + address, length);
    return 1;
}

int Write(const char* name, uint32_t address, uint32_t length, const uint8_t* buffer)
{
    Log("%s 0x%X %u", name, address, length);
    if (FakePd::State().fail || !InMemory(address, length))
        return 0;
    std::memcpy(FakePd::State().memory.data() + address, buffer, length);
    return 1;
}

int Move(const char* name, uint32_t start, uint32_t end, uint32_t destination)
{
    Log("%s 0x%X 0x%X 0x%X", name, start, end, destination);
    if (FakePd::State().fail || !InMemory(start, end - start + 1ull) ||
        !InMemory(destination, end - start + 1ull))
        return 0;
    auto& memory = FakePd::State().memory;
    std::memmove(memory.data() + destination, memory.data() + start, end - start + 1);
    return 1;
}

// The functions of one kind differ only in the name they log under.
const char* const kNames[] = {"IN1_Get_MemNC", "IN1_Get_Mem2NC", "IN1_Put_Mem", "IN1_Put_Mem2",
                              "IN1_Put_Mem4",  "IN1_Move",       "IN1_Move2",   "IN1_Move4"};
template <int N> int ReadAs(uint32_t address, uint32_t length, uint8_t* buffer)
{
    return Read(kNames[N], address, length, buffer);
}
template <int N> int WriteAs(uint32_t address, uint32_t length, uint8_t* buffer)
{
    return Write(kNames[N], address, length, buffer);
}
template <int N> int MoveAs(uint32_t start, uint32_t end, uint32_t destination)
{
    return Move(kNames[N], start, end, destination);
}

int Fill(uint32_t start, uint32_t end, uint32_t value, uint32_t size)
{
    Log("IN1_Fill 0x%X 0x%X 0x%X %u", start, end, value, size);
    if (FakePd::State().fail || size == 0 || size > 4 || end < start || !InMemory(start, end - start + 1ull))
        return 0;
    for (uint32_t at = start, i = 0; at <= end; ++at, i = (i + 1) % size)
        FakePd::State().memory[at] = static_cast<uint8_t>(value >> (8 * i));
    return 1;
}

// Digits only, in the radix given; 0 is taken as ten.
int Eval(const char* text, int32_t radix, int32_t reserved, uint32_t* value)
{
    Log("EXP_Eval %s %d %d", text, radix, reserved);
    errno = 0;
    char* end = nullptr;
    const unsigned long parsed = std::strtoul(text, &end, radix == 0 ? 10 : radix);
    if (FakePd::State().fail || *text == '\0' || *end != '\0' || errno != 0 || parsed > 0xFFFFFFFFul) {
        *value = 0xDEADBEEF;
        return 0;
    }
    *value = static_cast<uint32_t>(parsed);
    return 1;
}
template <class Real> int EvalReal(const char* text, Real* value)
{
    Log("%s %s", sizeof(Real) == sizeof(float) ? "EXP_Eval_FLOAT" : "EXP_Eval_DOUBLE", text);
    char* end = nullptr;
    const double parsed = std::strtod(text, &end);
    if (FakePd::State().fail || *text == '\0' || *end != '\0') {
        *value = -1;
        return 0;
    }
    *value = static_cast<Real>(parsed);
    return 1;
}
const char* ValToSym(int32_t reserved, uint32_t value)
{
    Log("LOAD_ValToSym %d 0x%X", reserved, value);
    auto& symbols = FakePd::State().symbols;
    auto it = symbols.find(value);
    return it != symbols.end() ? it->second.c_str() : nullptr;
}
int SymToVal(int32_t reserved, const char* name, uint32_t* value)
{
    Log("LOAD_SymToVal %d %s", reserved, name);
    for (const auto& [address, symbol] : FakePd::State().symbols)
        if (symbol == name)
            return *value = address, 1;
    return 0;
}

template <class Fn> void* Pointer(Fn fn)
{
    return reinterpret_cast<void*>(fn);
}

} // namespace

FakePlatformFunctions::FakePlatformFunctions()
    : offered_{{kNames[0], Pointer(&ReadAs<0>)},
               {kNames[1], Pointer(&ReadAs<1>)},
               {kNames[2], Pointer(&WriteAs<2>)},
               {kNames[3], Pointer(&WriteAs<3>)},
               {kNames[4], Pointer(&WriteAs<4>)},
               {kNames[5], Pointer(&MoveAs<5>)},
               {kNames[6], Pointer(&MoveAs<6>)},
               {kNames[7], Pointer(&MoveAs<7>)},
               {"IN1_Fill", Pointer(&Fill)},
               {"EXP_Eval", Pointer(&Eval)},
               {"EXP_Eval_FLOAT", Pointer(&EvalReal<float>)},
               {"EXP_Eval_DOUBLE", Pointer(&EvalReal<double>)},
               {"LOAD_ValToSym", Pointer(&ValToSym)},
               {"LOAD_SymToVal", Pointer(&SymToVal)}}
{
}

HRESULT FakePlatformFunctions::GetFunction(const std::string& name, void*& pointer)
{
    auto it = offered_.find(name);
    pointer = it != offered_.end() ? it->second : nullptr;
    return pointer != nullptr ? S_OK : E_FAIL;
}
