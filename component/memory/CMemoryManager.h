#pragma once
#include <cstdint>

#include "boundary/interfaces/Debugger.h"
#include "boundary/interfaces/Workbench.h"

class CDebuggerState;

// Target memory of the session. One of two families, each able to disable
// memory access; replaced when the platform family changes.
class CMemoryManager : public IQMemoryManager
{
public:
    explicit CMemoryManager(CDebuggerState& state);
    virtual ~CMemoryManager() = default;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    IQMemoryManager* Primary() { return this; }
    uint64_t Serial() const { return serial_; }
    virtual bool IsPlatformFunctionFamily() const = 0;

    // The platform is going away: nothing may be read from it any more.
    void OnPlatformGoing() { platformPresent_ = false; }
    void AttachPlatform(IQServiceRegistry* registry)
    {
        registry_ = registry;
        platformPresent_ = true;
        RefreshMemory();
    }
    void DetachPlatform()
    {
        registry_ = nullptr;
        platformPresent_ = false;
        RefreshMemory();
    }
    bool PlatformPresent() const { return platformPresent_; }
    // The memory map changed on the platform's side.
    void ReloadAreas() { RefreshMemory(); }
    // Whatever was read before is stale: the target ran, stepped or reset.
    void RefreshMemory() { ++generation_; }
    // Memory access can be kept closed, for instance until the connection
    // batch has set the target up; a refused access is remembered.
    void DisableMemory() { disabled_ = true; }
    void EnableMemory() { disabled_ = false; }
    bool IsMemoryDisabled() const { return disabled_; }
    void NoteAccessWhileDisabled() { accessedWhileDisabled_ = true; }
    bool WasAccessedWhileDisabled()
    {
        bool was = accessedWhileDisabled_;
        accessedWhileDisabled_ = false;
        return was;
    }
    // Grows by one at every refresh; what was read in an older generation is stale.
    uint64_t Generation() const { return generation_; }

protected:
    CDebuggerState& state_;

private:
    uint64_t serial_;
    IQServiceRegistry* registry_ = nullptr;
    bool platformPresent_ = false;
    uint64_t generation_ = 0;
    bool disabled_ = false;
    bool accessedWhileDisabled_ = false;
};

class CVELMemoryManagerDisableAble : public CMemoryManager
{
public:
    using CMemoryManager::CMemoryManager;
    bool IsPlatformFunctionFamily() const override { return false; }
};

class CPDMemoryManagerDisableAble : public CMemoryManager
{
public:
    using CMemoryManager::CMemoryManager;
    bool IsPlatformFunctionFamily() const override { return true; }
};
