#pragma once
#include <cstdint>
#include <string>

#include "boundary/Flags.h"
#include "boundary/Unknown.h"
#include "boundary/interfaces/LabelManager.h"

// The older kind of platform offers plain functions looked up by name rather
// than interfaces. Every function returns non-zero for success.

struct IQPlatformFunctions : IUnknown {
    // pointer: null when the platform has no function of that name.
    virtual HRESULT GetFunction(const std::string& name, void*& pointer) = 0; // 3
    // What the platform says of the last call that failed.
    virtual HRESULT GetLastErrorText(std::string& text) = 0; // 4
};

// The function of that name as its type, or null when the platform has none.
template <class Fn> Fn LookUpPlatformFunction(IQPlatformFunctions& functions, const char* name)
{
    void* pointer = nullptr;
    if (Failed(functions.GetFunction(name, pointer)))
        return nullptr;
    return reinterpret_cast<Fn>(pointer);
}

// The label list and the memory areas of a platform driven by function name,
// bounds inclusive. A platform that keeps no labels of its own leaves the list
// operations as they are: they fail.
struct IQPlatformFreeRun : IUnknown {
    // Borrowed: the record stays the platform's.
    virtual HRESULT GetLabelPointer(uint32_t, const LabelRecord*&) { return E_FAIL; }            // 3
    virtual HRESULT GetLabelCopy(uint32_t, LabelRecord&) { return E_FAIL; }                      // 4
    virtual HRESULT GetLabelCount(uint32_t&) { return E_FAIL; }                                  // 5
    virtual HRESULT GetAreaCount(uint32_t& count) = 0;                                           // 6
    virtual HRESULT GetAreaBounds(uint32_t index, TargetAddress& start, TargetAddress& end) = 0; // 7
};

// The functions' types, by what they do.
extern "C" {
// "IN1_Get_MemNC", "IN1_Get_Mem2NC", "IN1_Put_Mem", "IN1_Put_Mem2", "IN1_Put_Mem4":
// length in bytes; the number tells the access size.
typedef int (*PlatformMemoryAccessFn)(uint32_t address, uint32_t length, uint8_t* buffer);
// "IN1_Move", "IN1_Move2", "IN1_Move4": start..end inclusive copied to destination.
typedef int (*PlatformMoveFn)(uint32_t start, uint32_t end, uint32_t destination);
// "IN1_Fill": value's lowest `size` bytes, the first byte lowest, repeated.
typedef int (*PlatformFillFn)(uint32_t start, uint32_t end, uint32_t value, uint32_t size);
// "EXP_Eval": radix 2, 8, 10 or 16, or 0 for the platform's own default.
typedef int (*PlatformEvalFn)(const char* text, int32_t radix, int32_t reserved, uint32_t* value);
// "EXP_Eval_FLOAT"
typedef int (*PlatformEvalFloatFn)(const char* text, float* value);
// "EXP_Eval_DOUBLE"
typedef int (*PlatformEvalDoubleFn)(const char* text, double* value);
// "LOAD_ValToSym": the name of the symbol at value, or null; the text stays
// the platform's.
typedef const char* (*PlatformValToSymFn)(int32_t reserved, uint32_t value);
// "LOAD_SymToVal": non-zero when the platform knows the name.
typedef int (*PlatformSymToValFn)(int32_t reserved, const char* name, uint32_t* value);
}
