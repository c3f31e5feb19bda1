#pragma once
#include <cstdint>

#include "boundary/Flags.h"
#include "boundary/Unknown.h"
#include "boundary/Variant.h"

// Target memory as the debug platform offers it, in five generations; a later
// generation is asked of an earlier one. Ranges are first..last inclusive, and
// a buffer holds last - first + 1 bytes. A platform that lacks an operation of
// a generation it offers answers E_NOTIMPL (0x80004001).

// The first generation: the memory map, plain and sized access, and whole-range
// operations without details of a failure.
struct IQPlatformMemory : IUnknown {
    // What it carries is the platform's own.
    virtual HRESULT GetMemoryInfo(Variant& info) = 0;  // 3
    virtual HRESULT GetAreaCount(uint32_t& count) = 0; // 4
    // flags: bit 0 or 1 sized access; bits 2, 4 and 5 the three attributes.
    virtual HRESULT GetArea(uint32_t index, TargetAddress& start, TargetAddress& end, uint32_t& byteOrder,
                            uint32_t& info, uint32_t& flags) = 0;                             // 5
    virtual HRESULT Read(TargetAddress start, TargetAddress end, uint8_t* buffer) = 0;        // 7
    virtual HRESULT Write(TargetAddress start, TargetAddress end, const uint8_t* buffer) = 0; // 8
    virtual HRESULT ReadSized(TargetAddress start, TargetAddress end, AccessSize accessSize,
                              uint8_t* buffer) = 0; // 9
    virtual HRESULT WriteSized(TargetAddress start, TargetAddress end, AccessSize accessSize,
                               const uint8_t* buffer) = 0;                                          // 10
    virtual HRESULT Compare(TargetAddress start, TargetAddress end, TargetAddress destination) = 0; // 11
    virtual HRESULT Copy(TargetAddress start, TargetAddress end, TargetAddress destination) = 0;    // 12
    virtual HRESULT Fill(TargetAddress start, TargetAddress end, uint32_t patternLength,
                         const uint8_t* pattern) = 0; // 13
    virtual HRESULT Find(TargetAddress start, TargetAddress end, uint32_t patternLength,
                         const uint8_t* pattern,
                         TargetAddress& found) = 0;                                          // 14
    virtual HRESULT Verify(TargetAddress start, TargetAddress end, const uint8_t* data) = 0; // 15
    virtual HRESULT Test(TargetAddress start, TargetAddress end) = 0;                        // 16
    virtual HRESULT Refresh() = 0;                                                           // 17
    virtual HRESULT SetDownloadMode(uint32_t flag) = 0;                                      // 18
};

// The second generation, preferred when present: says what it offers, reports
// where a compare or copy failed, and knows the page size that suits the
// connection best.
struct IQPlatformMemory2 : IUnknown {
    // S_OK when the operation is offered.
    virtual HRESULT CanCompare() = 0;                  // 3
    virtual HRESULT CanCopy() = 0;                     // 4
    virtual HRESULT CanFill() = 0;                     // 5
    virtual HRESULT CanFind() = 0;                     // 6
    virtual HRESULT CanFindAlternate() = 0;            // 7
    virtual HRESULT CanVerify() = 0;                   // 8
    virtual HRESULT CanTest() = 0;                     // 9
    virtual HRESULT GetAreaCount(uint32_t& count) = 0; // 10
    virtual HRESULT GetArea(uint32_t index, TargetAddress& start, TargetAddress& end, uint32_t& byteOrder,
                            uint32_t& info, VariantBool& sized, VariantBool& attribute1,
                            VariantBool& attribute2,
                            VariantBool& attribute3) = 0;                                     // 11
    virtual HRESULT Read(TargetAddress start, TargetAddress end, uint8_t* buffer) = 0;        // 13
    virtual HRESULT Write(TargetAddress start, TargetAddress end, const uint8_t* buffer) = 0; // 14
    virtual HRESULT ReadSized(TargetAddress start, TargetAddress end, AccessSize accessSize,
                              uint8_t* buffer) = 0; // 15
    virtual HRESULT WriteSized(TargetAddress start, TargetAddress end, AccessSize accessSize,
                               const uint8_t* buffer) = 0; // 16
    // first and second: the differing bytes at address.
    virtual HRESULT Compare(TargetAddress start, TargetAddress end, TargetAddress destination,
                            AccessSize accessSize, uint8_t& first, uint8_t& second,
                            TargetAddress& address) = 0; // 17
    virtual HRESULT Copy(TargetAddress start, TargetAddress end, TargetAddress destination,
                         VariantBool verify, AccessSize accessSize, uint8_t& first, uint8_t& second,
                         TargetAddress& address) = 0; // 18
    virtual HRESULT Fill(TargetAddress start, TargetAddress end, uint32_t patternLength,
                         const uint8_t* pattern) = 0; // 19
    // mask: a byte of memory matches where (memory & mask) == (pattern & mask).
    virtual HRESULT Find(TargetAddress start, TargetAddress end, uint32_t flag1, uint32_t flag2,
                         uint32_t patternLength, const uint8_t* pattern, const uint8_t* mask,
                         TargetAddress& address) = 0;                                        // 20
    virtual HRESULT Verify(TargetAddress start, TargetAddress end, const uint8_t* data) = 0; // 21
    virtual HRESULT Test(TargetAddress start, TargetAddress end) = 0;                        // 22
    virtual HRESULT Refresh() = 0;                                                           // 23
    virtual HRESULT SetDownloadMode(uint32_t flag) = 0;                                      // 24
    virtual HRESULT GetPageSize(uint32_t& size) = 0;                                         // 25
};

// Writes and fills that read back what they wrote when `verify` is set.
struct IQPlatformMemory3 : IUnknown {
    virtual HRESULT FindEx(TargetAddress start, TargetAddress end, uint32_t flag1, uint32_t flag2,
                           uint32_t flag3, uint32_t patternLength, const uint8_t* pattern,
                           const uint8_t* mask,
                           TargetAddress& address) = 0; // 29
    virtual HRESULT WriteVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                  const uint8_t* buffer) = 0; // 30
    virtual HRESULT FillVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                 uint32_t patternLength, const uint8_t* pattern) = 0; // 31
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
