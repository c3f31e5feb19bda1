#pragma once
#include <cstdint>

#include "boundary/Flags.h"
#include "boundary/Unknown.h"

// Target memory as the debug platform offers it, in five generations; a later
// generation is asked of an earlier one. Ranges are first..last inclusive, and
// a buffer holds last - first + 1 bytes.

// The first generation: plain and sized access.
struct IQPlatformMemory : IUnknown {
    virtual HRESULT Read(TargetAddress start, TargetAddress end, uint8_t* buffer) = 0;        // 7
    virtual HRESULT Write(TargetAddress start, TargetAddress end, const uint8_t* buffer) = 0; // 8
    virtual HRESULT ReadSized(TargetAddress start, TargetAddress end, AccessSize accessSize,
                              uint8_t* buffer) = 0; // 9
    virtual HRESULT WriteSized(TargetAddress start, TargetAddress end, AccessSize accessSize,
                               const uint8_t* buffer) = 0; // 10
    virtual HRESULT Refresh() = 0;                         // 17
};

// The second generation, preferred when present; it also knows the page size
// that suits the connection best.
struct IQPlatformMemory2 : IUnknown {
    virtual HRESULT Read(TargetAddress start, TargetAddress end, uint8_t* buffer) = 0;        // 13
    virtual HRESULT Write(TargetAddress start, TargetAddress end, const uint8_t* buffer) = 0; // 14
    virtual HRESULT ReadSized(TargetAddress start, TargetAddress end, AccessSize accessSize,
                              uint8_t* buffer) = 0; // 15
    virtual HRESULT WriteSized(TargetAddress start, TargetAddress end, AccessSize accessSize,
                               const uint8_t* buffer) = 0; // 16
    virtual HRESULT Refresh() = 0;                         // 23
    virtual HRESULT GetPageSize(uint32_t& size) = 0;       // 25
};

// Writes that read back what they wrote when `verify` is set.
struct IQPlatformMemory3 : IUnknown {
    virtual HRESULT WriteVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                  const uint8_t* buffer) = 0; // 30
    virtual HRESULT WriteSizedVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                       AccessSize accessSize, const uint8_t* buffer) = 0; // 32
};

// Whether the platform runs long operations under its own progress display.
struct IQPlatformMemory4 : IUnknown {
    virtual HRESULT GetLongOperationsOffered(VariantBool& offered) = 0; // 34
};

// Verified writes that tell where the read-back differed: `failed` is set,
// and `written` and `found` are the values at `address`.
struct IQPlatformMemory5 : IUnknown {
    virtual HRESULT WriteVerifiedReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                           const uint8_t* buffer, VariantBool& failed, TargetAddress& address,
                                           int32_t& written, int32_t& found) = 0; // 42
    virtual HRESULT WriteSizedVerifiedReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                                AccessSize accessSize, const uint8_t* buffer,
                                                VariantBool& failed, TargetAddress& address, int32_t& written,
                                                int32_t& found) = 0; // 43
};
