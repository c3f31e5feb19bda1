#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "boundary/interfaces/ObjectReader.h"
#include "component/program/CDownloadModule.h"
#include "component/program/CMemoryLoadDataList.h"
#include "component/program/FileStatus.h"
#include "component/program/ProgramOwner.h"

struct IQServiceRegistry;
struct IQErrorReporter;
class CLabelManager;

// A download module at run time: its attributes with their placeholders, the
// platform's reader and module handle for its file, the file's status at the
// last load and the ranges the load wrote. Object readers report their load
// areas through it. It is owned by one owner, who opens it after making it
// and closes it before destroying it (the destructor closes what is left).
//
// Closed (no handle) or Open. A failed Open leaves it Closed; the getters and
// GetFilePath work in both states.
class CQProgram final : public IQProgram3
{
public:
    // Load mode 1 (debug data only) for a debug-only module, else 3 (both).
    CQProgram(const CDownloadModule& module, ProgramContext context, ProgramOwner& owner,
              IQServiceRegistry* services);
    // For one save or verify: object only, no verify, no automatic download.
    static CQProgram ForTransfer(const std::string& fileName, uint32_t offset, const std::string& format,
                                 int32_t accessSize, ProgramContext context, ProgramOwner& owner,
                                 IQServiceRegistry* services);
    // The copy takes the attributes, the context, the file status and the
    // loaded mark, and starts Closed with no areas: a module handle belongs
    // to the program it was made for, which its reader reports to.
    CQProgram(const CQProgram& other);
    CQProgram& operator=(const CQProgram&) = delete;
    ~CQProgram();

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT GetFilePath(std::string& path) override;                                    // 3
    HRESULT GetOffset(uint32_t& offset) override;                                       // 4
    HRESULT GetFormat(std::string& name) override;                                      // 5
    HRESULT IsLoaded() override;                                                        // 6
    HRESULT ClearAreas() override;                                                      // 7
    HRESULT AddArea(TargetAddress start, TargetAddress end) override;                   // 8
    HRESULT GetAreaCount(uint32_t& count) override;                                     // 9
    HRESULT GetArea(uint32_t index, TargetAddress& start, TargetAddress& end) override; // 10
    HRESULT GetRawFileName(std::string& name) override;                                 // 11
    HRESULT IsVerifyOff() override;                                                     // 12
    HRESULT SetVerify(VariantBool flag) override;                                       // 13
    HRESULT GetAccessSize(int32_t& size) override;                                      // 14

    // Makes the reader for the format through the factory service, and the
    // module handle; false, and Closed, when either cannot be had.
    bool Open(IQServiceRegistry* services);
    // Gives the handle and the reader back.
    void Close(IQServiceRegistry* services);
    // Before a load: a fresh module handle, the old one's labels moved to the
    // new one's id; the program is no longer loaded.
    void Renew(CLabelManager& labels);
    bool IsOpen() const { return handle_ != nullptr; }

    // The source files the module's debug data names; E_FAIL when Closed or
    // when the handle has no debug data.
    HRESULT GetSourceFiles(std::vector<std::string>& files);

    // True when the file was rebuilt (either time changed) since the status
    // was last taken, which it then takes; false for a missing file.
    bool IsOutOfDate();
    // The same test; a change clears the loaded mark, the status stays.
    void CheckFile();

    // The reader's text for the code, with the file behind it; empty when the
    // reader has none (the caller falls back on the error table).
    std::string MakeErrorText(HRESULT code) const;
    std::string MakeErrorTextAt(HRESULT code, TargetAddress address) const;
    std::string MakeVerifyErrorText(HRESULT code, TargetAddress address, int32_t memoryValue,
                                    int32_t fileValue) const;

    // The commands' identity test: the name against the raw or the expanded
    // file name and the format, both without regard to case, and the offset
    // when one is given.
    bool Matches(const std::string& name, const std::string& format, std::optional<uint32_t> offset) const;
    // The module key of the program's attributes.
    std::string Key() const;
    // The attributes as a module of the session's list (the file name raw).
    CDownloadModule Module() const;

    // The module's id on its labels: non-zero while Open, a new one with each
    // handle; 0 when Closed.
    uint32_t ModuleId() const { return moduleId_; }
    IUnknown* ModuleHandle() const { return handle_; }
    const CMemoryLoadDataList& Areas() const { return areas_; }

    int32_t LoadMode() const { return loadMode_; }
    void SetLoadMode(int32_t mode) { loadMode_ = mode; }
    int32_t AutoDownload() const { return autoDownload_; }
    void SetAutoDownload(int32_t flag) { autoDownload_ = flag; }
    void SetRawFileName(std::string name) { fileName_ = std::move(name); }
    void SetLoaded(bool loaded) { loaded_ = loaded; }

private:
    CQProgram(const CDownloadModule& module, int32_t loadMode, ProgramContext context, ProgramOwner& owner,
              IQServiceRegistry* services);
    std::string ExpandedPath() const;
    // The file's status now, and whether its times differ from the last one.
    std::optional<FileStatus> ChangedStatus() const;
    HRESULT CreateHandle();
    void DestroyHandle();
    // The reader's text for the code, with the file's line filled in behind it.
    template <class... Values> std::string WithFile(HRESULT code, const char* format, Values... values) const;

    std::string fileName_;
    uint32_t offset_ = 0;
    std::string format_;
    int32_t loadMode_ = 3;
    int32_t verify_ = 0;
    int32_t accessSize_ = 1;
    int32_t autoDownload_ = 0;
    ProgramContext context_;
    ProgramOwner& owner_;
    IQServiceRegistry* services_ = nullptr;
    bool loaded_ = false;

    IUnknown* handle_ = nullptr;
    uint32_t moduleId_ = 0;
    // At most one of the two generations is set.
    IQObjectReader* reader_ = nullptr;
    IQObjectReader2* reader2_ = nullptr;
    IUnknown* readerObject_ = nullptr;
    IQErrorReporter* errorText_ = nullptr;
    std::optional<FileStatus> lastStatus_;
    CMemoryLoadDataList areas_;
};
