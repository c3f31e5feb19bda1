#pragma once
#include <cstdint>
#include <string>

#include "boundary/Flags.h"
#include "boundary/TargetAddress.h"
#include "boundary/Unknown.h"

// What an object reader and the module handles it makes offer, and what they
// are handed: the program a module belongs to, and the task through which a
// load reports progress and learns of a cancel.

namespace Ids
{
inline constexpr Guid IQObjectReader = "{A849574E-DE13-11D3-8AF5-00AA0026624A}"_guid;
inline constexpr Guid IQObjectReader2 = "{71F8A9D0-5355-4926-AB20-AF14ED5F4911}"_guid;
inline constexpr Guid IQModuleLoader = "{F83B6980-1893-11D5-8BBC-F08CF2154371}"_guid;
inline constexpr Guid IQDebugInfo = "{EC4C10B6-F454-416E-8E7A-4924A559AB53}"_guid;
inline constexpr Guid IQLineTable = "{DD809377-8379-47B4-B9A9-1B9F2ECD987B}"_guid;
inline constexpr Guid IQModuleVariables = "{80B94A20-1317-11D5-BC4E-006097BC78CC}"_guid;
inline constexpr Guid IQProgram = "{40FED9CC-73A0-4AC1-8449-DB540F0DC77C}"_guid;
inline constexpr Guid IQProgram2 = "{66303D42-F2D1-4C07-A47B-8F94859B05FB}"_guid;
inline constexpr Guid IQProgram3 = "{4947CBAB-E6F4-47D5-ACAD-2029ADE6713B}"_guid;
inline constexpr Guid IQTC = "{4F3042EB-AC56-43C9-8233-727457F2E7BA}"_guid;
inline constexpr Guid IQTCP = "{1CF8C010-3668-4AA9-ABC0-4F74A98FB901}"_guid;
inline constexpr Guid ModuleListener = "{3820B0DF-56F5-4F64-9521-86E9433289C9}"_guid;
inline constexpr Guid IQTCPObject = "{6457AE49-A2CD-4D4F-8D15-C65F638805C2}"_guid;
inline constexpr Guid IQTCPObjectLoad = "{E16A2223-96C9-49A0-AF41-2986FF1D6F77}"_guid;
inline constexpr Guid IQTCPObjectLoad2 = "{C29CF544-4775-4705-A816-B68E66A3A650}"_guid;
inline constexpr Guid IQTCPObjectSave = "{058A4B80-E2F4-4E34-AB59-6091B1E695AA}"_guid;
inline constexpr Guid IQTCPObjectVerify = "{058A4B81-E2F4-4E34-AB59-6091B1E695AA}"_guid;
// Asked of the label manager service: takes the labels of the module being
// loaded, with the manager's current module as their owner.
} // namespace Ids

// A module at run time, as the reader sees it: where its file is and what the
// load wrote.
struct IQProgram : IUnknown {
    virtual HRESULT GetFilePath(std::string& path) = 0;                                    // 3
    virtual HRESULT GetOffset(uint32_t& offset) = 0;                                       // 4
    virtual HRESULT GetFormat(std::string& name) = 0;                                      // 5
    virtual HRESULT IsLoaded() = 0;                                                        // 6
    virtual HRESULT ClearAreas() = 0;                                                      // 7
    virtual HRESULT AddArea(TargetAddress start, TargetAddress end) = 0;                   // 8
    virtual HRESULT GetAreaCount(uint32_t& count) = 0;                                     // 9
    virtual HRESULT GetArea(uint32_t index, TargetAddress& start, TargetAddress& end) = 0; // 10
};

struct IQProgram2 : IQProgram {
    // The file name as stored, placeholders unexpanded.
    virtual HRESULT GetRawFileName(std::string& name) = 0; // 11
    // S_OK when the download does not verify, S_FALSE when it does.
    virtual HRESULT IsVerifyOff() = 0;               // 12
    virtual HRESULT SetVerify(VariantBool flag) = 0; // 13
};

struct IQProgram3 : IQProgram2 {
    virtual HRESULT GetAccessSize(int32_t& size) = 0; // 14
};

// Status of a task: 0 running, 1 cancelled, 2 done, 3 failed.
enum TaskStatus : int32_t { TASK_RUNNING = 0, TASK_CANCELLED = 1, TASK_DONE = 2, TASK_FAILED = 3 };

struct IQTC : IUnknown {
    virtual HRESULT OnFinished() = 0;               // 3
    virtual HRESULT GetStatus(int32_t& status) = 0; // 4
    virtual HRESULT GetResultCode() = 0;            // 5
};
struct IQTCP : IQTC {
    virtual HRESULT SetProgressRange(uint32_t upper) = 0;       // 6
    virtual HRESULT SetProgressPosition(uint32_t position) = 0; // 7
};
struct IQTCPObject : IQTCP {
    virtual HRESULT SetStatus(int32_t status) = 0;             // 8
    virtual HRESULT SetResultCode(HRESULT code) = 0;           // 9
    virtual HRESULT IsSave() = 0;                              // 10
    virtual HRESULT GetFileName(std::string& name) = 0;        // 11
    virtual HRESULT GetStartAddress(TargetAddress& value) = 0; // 12
};

struct IQTCPObjectLoad : IQTCPObject {
};
// A load that verifies what it wrote tells the first difference here.
struct IQTCPObjectLoad2 : IQTCPObjectLoad {
    virtual HRESULT Reserved13() = 0; // 13, answers E_NOTIMPL
    virtual HRESULT ReportMismatch(TargetAddress address, int32_t inMemory, int32_t inFile) = 0; // 14
};
// A save covers GetStartAddress to GetEndAddress, both inclusive.
struct IQTCPObjectSave : IQTCPObject {
    virtual HRESULT GetEndAddress(TargetAddress& value) = 0; // 13
};
struct IQTCPObjectVerify : IQTCPObject {
    virtual HRESULT ReportMismatchAddress(TargetAddress address) = 0;                            // 13
    virtual HRESULT ReportMismatch(TargetAddress address, int32_t inMemory, int32_t inFile) = 0; // 14
};

// The reader object the factory gives: it makes one module handle per program.
struct IQObjectReader2 : IUnknown {
    virtual HRESULT CreateModule(IUnknown** handle, IQProgram* program) = 0; // 3
    virtual HRESULT DestroyModule(IUnknown* handle) = 0;                     // 4
};

// The older generation of the same, still offered by older readers.
struct IQObjectReader : IUnknown {
    virtual HRESULT CreateModule(IUnknown** handle, IQProgram* program) = 0; // 3
    virtual HRESULT DestroyModule(IUnknown* handle) = 0;                     // 4
};

// Load modes: 1 debug data only, 2 object only, 3 both.
struct IQModuleLoader : IUnknown {
    virtual HRESULT Load(IQTCPObject* task, int32_t mode) = 0; // 3
    virtual HRESULT Save(IQTCPObject* task, int32_t mode) = 0; // 4
    virtual HRESULT Verify(IQTCPObject* task) = 0;             // 5
};

// Collects the functions of one name from each module asked.
struct IQFunctionList : IUnknown {
    virtual HRESULT GetName(std::string& name) = 0;                                  // 3
    virtual HRESULT AddFunction(const std::string& name, TargetAddress address) = 0; // 4
};

struct IQDebugInfo : IUnknown {
    virtual HRESULT GetAddressSource(TargetAddress address, std::string& file, uint32_t& line) = 0;       // 5
    virtual HRESULT GetSourceAddress(const std::string& file, uint32_t line, TargetAddress& address) = 0; // 6
    virtual HRESULT ListFunctions(IQFunctionList* list) = 0;                   // 11
    virtual HRESULT HoldsAddress(TargetAddress address, uint16_t& flag) = 0;   // 12
    virtual HRESULT QueryDebugData(uintptr_t a, uintptr_t b, uintptr_t c) = 0; // 13
    // Our own: the source files the module's debug data names, one a line.
    virtual HRESULT GetSourceFiles(std::string& files) = 0;
};

struct IQLineTable : IUnknown {
    virtual HRESULT FindFunction(const std::string& name, TargetAddress& address) = 0; // 3
    virtual HRESULT GetLineRange(const std::string& file, uint32_t line, TargetAddress& start,
                                 TargetAddress& end) = 0; // 14
    virtual HRESULT GetAddressLines(TargetAddress address, std::string& file, uint32_t& firstLine,
                                    uint32_t& lastLine) = 0; // 15
};

// A variable's value: its bytes in the target's order, most significant first.
struct IQModuleVariables : IUnknown {
    virtual HRESULT GetVariable(const std::string& name, uint32_t& size, std::string& data, int32_t& kind,
                                std::string& typeText, std::string& valueText) = 0; // 11
};

// Told of each module handle that a load brought in or that went again.
struct IQModuleListener : IUnknown {
    virtual HRESULT OnModuleLoaded(IUnknown* handle) = 0;   // 3
    virtual HRESULT OnModuleUnloaded(IUnknown* handle) = 0; // 4
};
