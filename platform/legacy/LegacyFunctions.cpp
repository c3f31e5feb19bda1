#include "platform/legacy/LegacyFunctions.h"

#include <cstdint>
#include <string>

#include "boundary/interfaces/PlatformFunctions.h"
#include "platform/eval/EvalErrors.h"
#include "platform/legacy/LegacyPlatform.h"

// Every function answers non-zero for success; a failure leaves its text with
// the platform. Memory moves in memory order whatever the access size: the
// size only says in what units the length must come. The target is
// big-endian: a value given as a number is stored most significant byte first.

namespace
{

int Refuse(std::string text)
{
    LegacyPlatform::SetLastError(std::move(text));
    return 0;
}

// Every call starts with no error, so that the text of an old failure is
// never taken for the explanation of a later one.
LegacyPlatform* Bound()
{
    LegacyPlatform::SetLastError({});
    LegacyPlatform* platform = LegacyPlatform::Current();
    if (platform == nullptr)
        LegacyPlatform::SetLastError("No function-name target is connected");
    return platform;
}

// The memory's own account of its last failure: the detail when it has one.
int RefuseFromMemory(SimPlatformMemory& memory, HRESULT code)
{
    std::string text = memory.LastFailureDetail();
    if (text.empty() && Failed(memory.GetErrorText(code, text)))
        text = "Memory access failed";
    return Refuse(std::move(text));
}

// A length of `length` bytes from address, in units of `unit`; the text of
// what is wrong with it, or empty.
std::string CheckLength(TargetAddress address, uint64_t length, uint32_t unit)
{
    if (length == 0)
        return "The length is 0";
    if (length % unit != 0)
        return "Length " + std::to_string(length) + " is not a multiple of the access size " +
               std::to_string(unit);
    if (!AddressRange::Sized(address, length))
        return "The range runs past H'FFFFFFFF";
    return {};
}

int Access(uint32_t address, uint32_t length, uint8_t* buffer, uint32_t unit, bool write)
{
    LegacyPlatform* platform = Bound();
    if (platform == nullptr)
        return 0;
    if (buffer == nullptr)
        return Refuse("No buffer was given");
    if (std::string wrong = CheckLength(address, length, unit); !wrong.empty())
        return Refuse(std::move(wrong));
    SimPlatformMemory& memory = platform->Memory();
    const AddressRange range = *AddressRange::Sized(address, length);
    const HRESULT hr = write ? memory.Write(range.First(), range.Last(), buffer)
                             : memory.Read(range.First(), range.Last(), buffer);
    return Succeeded(hr) ? 1 : RefuseFromMemory(memory, hr);
}

int MoveUnits(uint32_t start, uint32_t end, uint32_t destination, uint32_t unit)
{
    LegacyPlatform* platform = Bound();
    if (platform == nullptr)
        return 0;
    if (end < start)
        return Refuse("The start address must be lower than the end address.");
    if (std::string wrong = CheckLength(destination, uint64_t{end} - start + 1, unit); !wrong.empty())
        return Refuse(std::move(wrong));
    SimPlatformMemory& memory = platform->Memory();
    const HRESULT hr = memory.Copy(start, end, destination);
    return Succeeded(hr) ? 1 : RefuseFromMemory(memory, hr);
}

// A radix the platform reads: 2, 8, 10 or 16, or 0 for its default of 16.
bool KnownRadix(int32_t radix)
{
    return radix == 0 || radix == 2 || radix == 8 || radix == 10 || radix == 16;
}

// An integer expression in the radix (0: the default, 16, which the
// platform's evaluator keeps) as a 32-bit value, unsigned or signed.
bool EvaluateInteger(LegacyPlatform& platform, const char* text, int32_t radix, uint32_t& value)
{
    ExpressionEvaluator& evaluator = platform.Evaluator();
    if (Failed(evaluator.TextToUInt32Radix(text, radix, value))) {
        Refuse(evaluator.LastErrorText());
        return false;
    }
    return true;
}

// A real number first, as strtod reads the whole trimmed text; a text that is
// no real number is read as an integer expression, taken as signed.
template <class Real>
int EvaluateReal(const char* text, Real* value,
                 HRESULT (ExpressionEvaluator::*parse)(const std::string&, Real&))
{
    LegacyPlatform* platform = Bound();
    if (platform == nullptr)
        return 0;
    if (text == nullptr || value == nullptr)
        return Refuse("No text or no result was given");
    Real real = 0;
    const HRESULT hr = (platform->Evaluator().*parse)(text, real);
    if (Succeeded(hr)) {
        *value = real;
        return 1;
    }
    if (hr != QE_EVAL_SYNTAX)
        return Refuse(platform->Evaluator().LastErrorText());
    uint32_t integer = 0;
    if (!EvaluateInteger(*platform, text, 0, integer))
        return 0;
    *value = static_cast<Real>(static_cast<int32_t>(integer));
    return 1;
}

} // namespace

extern "C" {

static int LegacyGetMem(uint32_t address, uint32_t length, uint8_t* buffer)
{
    return Access(address, length, buffer, 1, false);
}

static int LegacyGetMem2(uint32_t address, uint32_t length, uint8_t* buffer)
{
    return Access(address, length, buffer, 2, false);
}

static int LegacyPutMem(uint32_t address, uint32_t length, uint8_t* buffer)
{
    return Access(address, length, buffer, 1, true);
}

static int LegacyPutMem2(uint32_t address, uint32_t length, uint8_t* buffer)
{
    return Access(address, length, buffer, 2, true);
}

static int LegacyPutMem4(uint32_t address, uint32_t length, uint8_t* buffer)
{
    return Access(address, length, buffer, 4, true);
}

static int LegacyMove(uint32_t start, uint32_t end, uint32_t destination)
{
    return MoveUnits(start, end, destination, 1);
}

static int LegacyMove2(uint32_t start, uint32_t end, uint32_t destination)
{
    return MoveUnits(start, end, destination, 2);
}

static int LegacyMove4(uint32_t start, uint32_t end, uint32_t destination)
{
    return MoveUnits(start, end, destination, 4);
}

static int LegacyFill(uint32_t start, uint32_t end, uint32_t value, uint32_t size)
{
    LegacyPlatform* platform = Bound();
    if (platform == nullptr)
        return 0;
    if (size < 1 || size > 4)
        return Refuse("Fill size " + std::to_string(size) + " is not 1, 2, 3 or 4");
    // The target keeps the most significant byte first: the family's value
    // forms turn every element round for that, and the fill's value must
    // land in memory as an edit of the same value would.
    uint8_t pattern[4];
    for (uint32_t i = 0; i < size; ++i)
        pattern[i] = static_cast<uint8_t>(value >> (8 * (size - 1 - i)));
    SimPlatformMemory& memory = platform->Memory();
    const HRESULT hr = memory.Fill(start, end, size, pattern);
    return Succeeded(hr) ? 1 : RefuseFromMemory(memory, hr);
}

static int LegacyEval(const char* text, int32_t radix, int32_t, uint32_t* value)
{
    LegacyPlatform* platform = Bound();
    if (platform == nullptr)
        return 0;
    if (text == nullptr || value == nullptr)
        return Refuse("No text or no result was given");
    if (!KnownRadix(radix))
        return Refuse("Invalid radix " + std::to_string(radix));
    uint32_t result = 0;
    if (!EvaluateInteger(*platform, text, radix, result))
        return 0;
    *value = result;
    return 1;
}

static int LegacyEvalFloat(const char* text, float* value)
{
    return EvaluateReal(text, value, &ExpressionEvaluator::TextToFloat);
}

static int LegacyEvalDouble(const char* text, double* value)
{
    return EvaluateReal(text, value, &ExpressionEvaluator::TextToDouble);
}

static const char* LegacyValToSym(int32_t, uint32_t value)
{
    LegacyPlatform* platform = LegacyPlatform::Current();
    return platform != nullptr ? platform->Symbols().NameAt(value) : nullptr;
}

static int LegacySymToVal(int32_t, const char* name, uint32_t* value)
{
    LegacyPlatform* platform = LegacyPlatform::Current();
    if (platform == nullptr || name == nullptr || value == nullptr)
        return 0;
    const std::optional<uint32_t> found = platform->Symbols().Find(name);
    if (!found)
        return 0;
    *value = *found;
    return 1;
}

} // extern "C"

namespace
{

// Fn is named at each use, so a function whose type differs from the
// platform's does not compile: a mismatch would only show as a crash in the caller.
template <class Fn> void* Untyped(Fn function)
{
    return reinterpret_cast<void*>(function);
}

} // namespace

void* LegacyFunction(std::string_view name)
{
    struct Entry {
        std::string_view name;
        void* function;
    };
    const Entry table[] = {
        {"IN1_Move", Untyped<PlatformMoveFn>(LegacyMove)},
        {"IN1_Move2", Untyped<PlatformMoveFn>(LegacyMove2)},
        {"IN1_Move4", Untyped<PlatformMoveFn>(LegacyMove4)},
        {"IN1_Fill", Untyped<PlatformFillFn>(LegacyFill)},
        {"IN1_Get_MemNC", Untyped<PlatformMemoryAccessFn>(LegacyGetMem)},
        {"IN1_Get_Mem2NC", Untyped<PlatformMemoryAccessFn>(LegacyGetMem2)},
        {"IN1_Put_Mem", Untyped<PlatformMemoryAccessFn>(LegacyPutMem)},
        {"IN1_Put_Mem2", Untyped<PlatformMemoryAccessFn>(LegacyPutMem2)},
        {"IN1_Put_Mem4", Untyped<PlatformMemoryAccessFn>(LegacyPutMem4)},
        {"EXP_Eval", Untyped<PlatformEvalFn>(LegacyEval)},
        {"EXP_Eval_FLOAT", Untyped<PlatformEvalFloatFn>(LegacyEvalFloat)},
        {"EXP_Eval_DOUBLE", Untyped<PlatformEvalDoubleFn>(LegacyEvalDouble)},
        {"LOAD_ValToSym", Untyped<PlatformValToSymFn>(LegacyValToSym)},
        {"LOAD_SymToVal", Untyped<PlatformSymToValFn>(LegacySymToVal)},
    };
    for (const Entry& entry : table)
        if (entry.name == name)
            return entry.function;
    return nullptr;
}
