#pragma once
#include <cstdint>
#include <memory>
#include <string>

#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/MemoryManager.h"
#include "boundary/interfaces/Workbench.h"

class CMemoryManagerCmdLine;

// What both families of memory manager share: the faces the workbench finds
// them by, what the platform offers, the command recording, and the switch
// that closes memory access while a connection is being set up. Its life is
// the debugger state's affair.
class CMemoryManager : public IQMemoryManager, public IQMemoryManager5, public IQErrorReporter
{
public:
    // Registers the manager under every memory identifier, and the text of a
    // refused access with the error table.
    explicit CMemoryManager(IQServiceRegistry* host);
    virtual ~CMemoryManager();
    CMemoryManager(const CMemoryManager&) = delete;
    CMemoryManager& operator=(const CMemoryManager&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    // What the platform offers; S_OK if it does, 1 if not.
    HRESULT GetCanCompare() override { return Answer(CanCompare); }
    HRESULT GetCanCopy() override { return Answer(CanCopy); }
    HRESULT GetCanFill() override { return Answer(CanFill); }
    HRESULT GetCanFind() override { return Answer(CanFind); }
    HRESULT GetCanFindAlternate() override { return Answer(CanFindAlternate); }
    HRESULT GetCanVerify() override { return Answer(CanVerify); }
    HRESULT GetCanTest() override { return Answer(CanTest); }

    // Both lines share these operations; naming them here settles which base
    // a call inside the class means.
    HRESULT GetMemoryInfo(Variant& info) override = 0;
    HRESULT GetAreaCount(uint32_t& count) override = 0;
    HRESULT GetAreaBounds(uint32_t index, TargetAddress& start, TargetAddress& end) override = 0;
    HRESULT ReadMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                       uint8_t* buffer) override = 0;
    HRESULT WriteMemory(TargetAddress start, TargetAddress end, AccessSize accessSize,
                        const uint8_t* buffer) override = 0;
    HRESULT FillMemory(TargetAddress start, TargetAddress end, uint32_t patternLength,
                       const uint8_t* pattern) override = 0;
    HRESULT VerifyMemory(TargetAddress start, TargetAddress end, const uint8_t* data) override = 0;
    HRESULT TestMemory(TargetAddress start, TargetAddress end) override = 0;
    HRESULT RefreshMemory() override = 0;
    HRESULT RefreshMemoryAgain() override = 0;
    HRESULT ReadMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                             uint8_t* buffer) override = 0;
    HRESULT WriteMemoryValues(TargetAddress start, TargetAddress end, AccessSize accessSize,
                              const uint8_t* buffer) override = 0;

    // The platform's side, for the debugger state.
    virtual bool HasPlatformMemory2() const { return false; }
    virtual bool HasPlatformMemory3() const { return false; }
    virtual bool HasPlatformMemory4() const { return false; }
    virtual bool HasPlatformMemory5() const { return false; }
    // Finds the platform's memory services through locator; the platform has
    // been connected.
    virtual HRESULT AttachPlatform(IQServiceRegistry* locator) = 0;
    // Forgets the platform; it is about to go.
    virtual HRESULT DetachPlatform() = 0;
    // The platform's memory map changed.
    virtual HRESULT ReloadAreas() = 0;
    virtual HRESULT SetDownloadMode(bool on) = 0;
    // The one way every write goes. size: an access size for the first two,
    // a pattern length for the fill. mode 0 plain, 1 verified, 2 verified and
    // reporting where the read-back differed (the out pointers may be null).
    virtual HRESULT WriteMemoryEx(TargetAddress start, TargetAddress end, VariantBool verify, uint32_t size,
                                  const uint8_t* buffer, VariantBool* failed, TargetAddress* address,
                                  int32_t* written, int32_t* found, int32_t mode) = 0;
    virtual HRESULT WriteMemoryValuesEx(TargetAddress start, TargetAddress end, VariantBool verify,
                                        uint32_t size, const uint8_t* buffer, VariantBool* failed,
                                        TargetAddress* address, int32_t* written, int32_t* found,
                                        int32_t mode) = 0;
    virtual HRESULT FillMemoryEx(TargetAddress start, TargetAddress end, VariantBool verify, uint32_t size,
                                 const uint8_t* buffer, VariantBool* failed, TargetAddress* address,
                                 int32_t* written, int32_t* found, int32_t mode) = 0;
    virtual bool IsPlatformFunctionFamily() const = 0;

    // A connection in progress can keep memory closed: reads give 0xFF and
    // everything else is refused, except through the command line's face.
    void DisableMemory()
    {
        Disabled = true;
        AccessedWhileDisabled = false;
    }
    void EnableMemory()
    {
        Disabled = false;
        AccessedWhileDisabled = false;
    }
    bool WasAccessedWhileDisabled() const { return AccessedWhileDisabled; }
    bool IsMemoryDisabled() const { return Disabled; }
    HRESULT GetDisabledCode() const { return DisabledCode; }

    uint64_t Serial() const { return serial_; }
    // Grows at every refresh; what was read in an older generation is stale.
    uint64_t Generation() const { return generation_; }

    // Texts of the command that would do what an operation does, for the
    // workbench's macro recorder.
    static std::string SizeWord(uint32_t accessSize);
    static std::string VerifyWord(VariantBool verify);
    // "0x" and the pattern's bytes from the last to the first, no leading zeros.
    static std::string FillDataText(uint32_t patternLength, const uint8_t* pattern);

protected:
    // Gives the command to the macro recorder while one is recording.
    void Record(const std::string& command) const;
    void RecordFill(TargetAddress start, TargetAddress end, uint32_t patternLength, const uint8_t* pattern,
                    VariantBool verify) const;
    void NoteRefresh() { ++generation_; }

    bool CanCompare = false;
    bool CanCopy = false;
    bool CanFill = false;
    bool CanFind = false;
    bool CanFindAlternate = false;
    bool CanVerify = false;
    bool CanTest = false;
    IQServiceRegistry* Host;
    bool AccessedWhileDisabled = false;
    bool Disabled = false;
    HRESULT DisabledCode = E_FAIL;

private:
    friend class CMemoryManagerCmdLine;
    static HRESULT Answer(bool flag) { return flag ? S_OK : S_FALSE; }

    std::unique_ptr<CMemoryManagerCmdLine> cmdLine_;
    uint64_t serial_;
    uint64_t generation_ = 0;
};
