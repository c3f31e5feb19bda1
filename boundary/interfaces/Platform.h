#pragma once
#include <string>

#include "boundary/Flags.h"
#include "boundary/Unknown.h"

// What an object reader can do besides loading, as the catalogue's
// GetReaderAttribute asks it.
enum ReaderAttribute : int32_t {
    READER_SAVES_MEMORY = 2, // writes a range of target memory to a file
    READER_VERIFIES = 8,     // compares target memory with a file
};

// The platform catalogue: which platforms and object readers are installed.
struct IQPlatformList : IUnknown {
    // Our own: the installed platforms by index, the default one first.
    virtual HRESULT GetPlatformName(int32_t index, std::string& name) = 0; // 3
    // Failure means that the platform is not installed.
    virtual HRESULT GetCpuDriverName(const std::string& platform, std::string& driver) = 0; // 14
    virtual HRESULT GetPlatformProperty(const std::string& platform, int32_t property,
                                        uint32_t& value) = 0; // 15
    // Of the reader at an index: VARIANT_TRUE when it has the attribute.
    virtual HRESULT GetReaderAttribute(int32_t index, int32_t attribute, VariantBool& flag) = 0; // 16
    virtual HRESULT GetReaderName(int32_t index, std::string& name) = 0;                         // 17
    virtual HRESULT FindReader(const std::string& name, int32_t& index) = 0;                     // 18
    // 31: S_OK when the named platform is of the family driven by function name.
    virtual HRESULT IsFunctionPlatform(const std::string& name) = 0;
    // 32: S_OK when the reader belongs to one platform, whose name it gives.
    virtual HRESULT GetReaderPlatform(int32_t index, std::string& platform) = 0;
};

struct IQServiceRegistry;

// Creates and releases drivers and readers. The "For" forms serve platforms
// driven by function name. `mode` is the workbench's driver creation mode.
struct IQDriverFactory : IUnknown {
    virtual HRESULT ReleaseDriver(IUnknown* object, int32_t flag) = 0; // 3
    virtual HRESULT CreateCpuDriver(const std::string& name, IQServiceRegistry* registry, int32_t a,
                                    int32_t mode, int32_t b, IUnknown** out) = 0; // 4
    virtual HRESULT CreateTargetDriver(const std::string& platform, IQServiceRegistry* registry, int32_t a,
                                       int32_t mode, int32_t b, IUnknown** out) = 0; // 5
    virtual HRESULT CreateReader(const std::string& name, IQServiceRegistry* registry, int32_t a, int32_t b,
                                 int32_t mode, int32_t c, IUnknown** out) = 0;                   // 6
    virtual HRESULT CheckCpuDriver(const std::string& name, int32_t mode, int32_t a) = 0;        // 8
    virtual HRESULT CheckTargetDriver(const std::string& platform, int32_t mode, int32_t a) = 0; // 9
    virtual HRESULT CheckReader(const std::string& name, int32_t mode, int32_t a) = 0;           // 10
    virtual HRESULT CreateCpuDriverFor(const std::string& name, IQServiceRegistry* registry, int32_t a,
                                       int32_t mode, int32_t b, const std::string& platform,
                                       IUnknown** out) = 0; // 13
    virtual HRESULT CreateReaderFor(const std::string& name, IQServiceRegistry* registry, int32_t a,
                                    int32_t b, int32_t mode, int32_t c, const std::string& platform,
                                    IUnknown** out) = 0; // 14
    virtual HRESULT CheckCpuDriverFor(const std::string& name, int32_t mode, int32_t a,
                                      const std::string& platform) = 0; // 15
    virtual HRESULT CheckReaderFor(const std::string& name, int32_t mode, int32_t a,
                                   const std::string& platform) = 0; // 16
};

// Asked of a CPU driver.
struct IQCpuDetails : IUnknown {
    // Two numbers that pass from the CPU driver to the target driver unread.
    virtual HRESULT GetIdentity(uint32_t& first, uint32_t& second) = 0; // 4
    // Lines separated by "\n".
    virtual HRESULT GetDescription(std::string& text) = 0; // 5
};

// Asked of the CPU details; may be missing.
struct IQCpuOptions : IUnknown {
    // 6: the default of the option that limits disassembly memory access.
    virtual HRESULT GetLimitDisassemblyDefault() = 0;
};

// Asked of a target driver: holding it is what "connected" means.
struct IQTargetCore : IUnknown {
    virtual HRESULT Goodbye() = 0;                                       // 4
    virtual HRESULT GetDescription(std::string& text) = 0;               // 5
    virtual HRESULT SetCpuIdentity(uint32_t first, uint32_t second) = 0; // 6
};

// Asked of a target driver; may be missing.
struct IQTargetControl : IUnknown {
    virtual HRESULT CanDisconnect() = 0;    // 8: S_OK when it may go
    virtual HRESULT Goodbye() = 0;          // 9
    virtual HRESULT TakeOverDownload() = 0; // 12
};

// The workbench's extras: slot 31 gives 0 when drivers are made in mode 1.
struct IQHostExtras : IUnknown {
    virtual HRESULT GetDriverCreationMode() = 0; // 31
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

// The limits of the target's address space: the lowest and the highest address.
struct IQForwardTarget : IUnknown {
    virtual HRESULT Forward(uint32_t& low, uint32_t& limit) = 0; // 3
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

// Told the target's name at each connection and disconnection.
struct IQConnectionListener : IUnknown {
    virtual HRESULT OnTargetConnected(const std::string& targetText) = 0;    // 3
    virtual HRESULT OnTargetDisconnected(const std::string& targetText) = 0; // 4
};
