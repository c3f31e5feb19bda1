#pragma once
#include <string>

#include "boundary/Unknown.h"

// The platform catalogue: which platforms are installed and what they are.
struct IQPlatformList : IUnknown {
    // 31: S_OK when the named platform is of the family driven by function name.
    virtual HRESULT IsFunctionPlatform(const std::string& name) = 0;
};

// Answered by a target driver: the names it goes by.
struct IQTargetNames : IUnknown {
    virtual HRESULT GetTargetNames(std::string& a, std::string& b) = 0; // 13
};

// Answered by a target driver: slot 3 gives 0 for the kind that records commands.
struct IQTargetKind : IUnknown {
    virtual HRESULT GetKind() = 0; // 3
};

// Answered by the platform when it keeps its own symbols: slot 3 gives 0.
struct IQPlatformSymbols : IUnknown {
    virtual HRESULT UsesPlatformSymbols() = 0; // 3
};

// A service that other tools forward pairs of values through.
struct IQForwardTarget : IUnknown {
    virtual HRESULT Forward(int32_t a, int32_t b) = 0; // 3
};

// The target's registers; index 0 is the program counter.
struct IQPlatformRegisters : IUnknown {
    virtual HRESULT GetRegister(uint32_t index, uint32_t& value) = 0;
};

// The workbench's session host: slot 31 gives 0 when the workbench hosts
// several sessions and only the active one may move the position marker.
struct IQSessionHost : IUnknown {
    virtual HRESULT IsMultiSessionHost() = 0; // 31
};

// Told the target's description at each connection.
struct IQConnectionListener : IUnknown {
    virtual HRESULT OnTargetConnected(const std::string& targetText) = 0; // 3
};
