#pragma once
#include <cstdint>

#include "boundary/interfaces/Debugger.h"

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
    void OnPlatformAttached() { platformPresent_ = true; }
    bool PlatformPresent() const { return platformPresent_; }

protected:
    CDebuggerState& state_;

private:
    uint64_t serial_;
    bool platformPresent_ = false;
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
