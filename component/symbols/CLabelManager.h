#pragma once
#include <cstdint>

#include "boundary/interfaces/Debugger.h"
#include "boundary/interfaces/Workbench.h"

class CDebuggerState;

// The session's labels. One of two families, replaced when the platform family
// changes.
class CLabelManager : public IQLabelManager2
{
public:
    explicit CLabelManager(CDebuggerState& state) : state_(state), serial_(NextSerial()) {}
    virtual ~CLabelManager() = default;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    IQLabelManager2* Primary() { return this; }
    uint64_t Serial() const { return serial_; }
    // True for the family driven by function name.
    virtual bool IsPlatformFunctionFamily() const = 0;

    void OnPlatformAttached(IQServiceRegistry* registry) { registry_ = registry; }
    // Drops the labels without telling anyone: the platform that gave them is gone.
    void ClearLabelsQuietly() { registry_ = nullptr; }
    bool PlatformAttached() const { return registry_ != nullptr; }

protected:
    CDebuggerState& state_;
    IQServiceRegistry* registry_ = nullptr;

private:
    static uint64_t NextSerial();
    uint64_t serial_;
};

class CVELLabelManager : public CLabelManager
{
public:
    using CLabelManager::CLabelManager;
    bool IsPlatformFunctionFamily() const override { return false; }
};

class CPDLabelManager : public CLabelManager
{
public:
    using CLabelManager::CLabelManager;
    bool IsPlatformFunctionFamily() const override { return true; }
};
