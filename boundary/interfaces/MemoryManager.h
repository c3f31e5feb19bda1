#pragma once
#include <cstdint>

#include "boundary/Flags.h"
#include "boundary/Unknown.h"
#include "boundary/Variant.h"

// The one road to target memory for the rest of the system. Addresses are 32
// bits and ranges first..last inclusive. accessSize is 1, 2, 4 or 8 bytes; a
// buffer of the plain operations holds values most significant byte first, a
// buffer of the ...Values operations this system's own integers.
struct IQMemoryManager : IUnknown {
    virtual HRESULT GetMemoryInfo(Variant& info) = 0;  // 3
    virtual HRESULT GetAreaCount(uint32_t& count) = 0; // 4
    // index 0xFFFFFFFF: the lowest start and the highest end of all areas.
    virtual HRESULT GetAreaBounds(uint32_t index, TargetAddress& start, TargetAddress& end) = 0; // 5
    virtual HRESULT ReadMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                               uint8_t* buffer) = 0; // 6
    virtual HRESULT WriteMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                const uint8_t* buffer) = 0; // 7
    virtual HRESULT CompareMemorySimple(TargetAddress start, TargetAddress end,
                                        TargetAddress destination) = 0; // 8
    virtual HRESULT CopyMemorySimple(TargetAddress start, TargetAddress end,
                                     TargetAddress destination) = 0; // 9
    virtual HRESULT FillMemory(TargetAddress start, TargetAddress end, uint32_t patternLength,
                               const uint8_t* pattern) = 0; // 10
    virtual HRESULT FindMemorySimple(TargetAddress start, TargetAddress end, uint32_t patternLength,
                                     const uint8_t* pattern, TargetAddress& found) = 0;            // 11
    virtual HRESULT VerifyMemory(TargetAddress start, TargetAddress end, const uint8_t* data) = 0; // 12
    virtual HRESULT TestMemory(TargetAddress start, TargetAddress end) = 0;                        // 13
    virtual HRESULT RefreshMemory() = 0;                                                           // 14
    virtual HRESULT RefreshMemoryAgain() = 0;                                                      // 15
    virtual HRESULT ReadMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                     uint8_t* buffer) = 0; // 16
    virtual HRESULT WriteMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                      const uint8_t* buffer) = 0; // 17
};

// The later generations in one face: the identifiers of generations 2, 3 and 4
// answer this face too, since each only adds slots at the end.
struct IQMemoryManager5 : IUnknown {
    // S_OK if the platform offers the operation, 1 if not.
    virtual HRESULT GetCanCompare() = 0;                                                         // 3
    virtual HRESULT GetCanCopy() = 0;                                                            // 4
    virtual HRESULT GetCanFill() = 0;                                                            // 5
    virtual HRESULT GetCanFind() = 0;                                                            // 6
    virtual HRESULT GetCanFindAlternate() = 0;                                                   // 7
    virtual HRESULT GetCanVerify() = 0;                                                          // 8
    virtual HRESULT GetCanTest() = 0;                                                            // 9
    virtual HRESULT GetAreaCount(uint32_t& count) = 0;                                           // 10
    virtual HRESULT GetAreaBounds(uint32_t index, TargetAddress& start, TargetAddress& end) = 0; // 11
    virtual HRESULT ReadMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                               uint8_t* buffer) = 0; // 12
    virtual HRESULT WriteMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                const uint8_t* buffer) = 0; // 13
    virtual HRESULT CompareMemory(TargetAddress start, TargetAddress end, TargetAddress destination,
                                  AccessSize accessSize, uint8_t& first, uint8_t& second,
                                  TargetAddress& address) = 0; // 14
    virtual HRESULT CopyMemory(TargetAddress start, TargetAddress end, TargetAddress destination,
                               VariantBool verify, AccessSize accessSize, uint8_t& first, uint8_t& second,
                               TargetAddress& address) = 0; // 15
    virtual HRESULT FillMemory(TargetAddress start, TargetAddress end, uint32_t patternLength,
                               const uint8_t* pattern) = 0; // 16
    virtual HRESULT FindMemory(TargetAddress start, TargetAddress end, uint32_t flag1, uint32_t flag2,
                               uint32_t patternLength, const uint8_t* pattern, const uint8_t* mask,
                               TargetAddress& address) = 0;                                        // 17
    virtual HRESULT VerifyMemory(TargetAddress start, TargetAddress end, const uint8_t* data) = 0; // 18
    virtual HRESULT TestMemory(TargetAddress start, TargetAddress end) = 0;                        // 19
    virtual HRESULT RefreshMemory() = 0;                                                           // 20
    virtual HRESULT RefreshMemoryAgain() = 0;                                                      // 21
    virtual HRESULT ReadMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                     uint8_t* buffer) = 0; // 22
    virtual HRESULT WriteMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                      const uint8_t* buffer) = 0; // 23
    // The same as the two reads, past the caches.
    virtual HRESULT ReadMemoryDirect(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                     uint8_t* buffer) = 0; // 24
    virtual HRESULT ReadMemoryValuesDirect(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                           uint8_t* buffer) = 0; // 25
    virtual HRESULT SetCacheEnabled(VariantBool enabled) = 0;    // 26
    virtual HRESULT GetCacheEnabled() = 0;                       // 27
    virtual HRESULT FindMemoryEx(TargetAddress start, TargetAddress end, uint32_t flag1, uint32_t flag2,
                                 uint32_t flag3, uint32_t patternLength, const uint8_t* pattern,
                                 const uint8_t* mask, TargetAddress& address) = 0; // 28
    virtual HRESULT WriteMemoryVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                        AccessSize accessSize, const uint8_t* buffer) = 0; // 29
    virtual HRESULT FillMemoryVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                       uint32_t patternLength, const uint8_t* pattern) = 0; // 30
    virtual HRESULT WriteMemoryValuesVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                              AccessSize accessSize, const uint8_t* buffer) = 0; // 31
    virtual HRESULT VerifyMemoryReporting(TargetAddress start, TargetAddress end, const uint8_t* data,
                                          TargetAddress& address, VariantBool& failed) = 0; // 32
    // failed: set where the read-back differed; written and found are the
    // values at address.
    virtual HRESULT FillMemoryReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                        uint32_t patternLength, const uint8_t* pattern, VariantBool& failed,
                                        TargetAddress& address, int32_t& written, int32_t& found) = 0; // 33
    virtual HRESULT WriteMemoryReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                         AccessSize accessSize, const uint8_t* buffer, VariantBool& failed,
                                         TargetAddress& address, int32_t& written, int32_t& found) = 0; // 34
    virtual HRESULT WriteMemoryValuesReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                               AccessSize accessSize, const uint8_t* buffer,
                                               VariantBool& failed, TargetAddress& address, int32_t& written,
                                               int32_t& found) = 0; // 35
};

// The same slots for the command line: they reach memory even while the
// ordinary faces are closed during a connection.
struct IQMemoryManagerCmdLine : IQMemoryManager {
};
struct IQMemoryManagerCmdLine5 : IQMemoryManager5 {
};
