#pragma once
#include <cstdint>
#include <string>

#include "boundary/Flags.h"
#include "boundary/Unknown.h"

// What a disassembly view implements: the notices its server sends it.
struct IQDisassemblyDataClient : IUnknown {
    virtual HRESULT Reserved3() = 0;                                                                  // 3
    virtual HRESULT OnDataChanged(int32_t reason) = 0;                                                // 4
    virtual HRESULT OnConnected() = 0;                                                                // 5
    virtual HRESULT OnDisconnected() = 0;                                                             // 6
    virtual HRESULT OnProgramLoaded() = 0;                                                            // 7
    virtual HRESULT OnProgramUnloaded() = 0;                                                          // 8
    virtual HRESULT OnStopLine(uint32_t pc, const std::string& file, int32_t line, int32_t kind) = 0; // 9
    virtual HRESULT OnPCLine(uint32_t pc, const std::string& file, int32_t line, int32_t kind) = 0;   // 10
    virtual HRESULT OnTargetRunning() = 0;                                                            // 11
    virtual HRESULT OnBreakChanged(const std::string& file, int32_t line, uint32_t address,
                                   VariantBool exists,
                                   VariantBool enabled) = 0; // 12
    virtual HRESULT OnDisplayFlags(uint32_t flags) = 0;      // 13
};

// The first face of a view's server.
struct IQDisassemblyClient : IUnknown {
    virtual HRESULT Refresh() = 0; // 3
};
