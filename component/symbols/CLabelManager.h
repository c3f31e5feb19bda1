#pragma once
#include <cstdint>
#include <string>

#include "boundary/interfaces/LabelManager.h"
#include "boundary/interfaces/Workbench.h"

class CDebuggerState;

// The session's labels as the rest of the system sees them. One of two
// families, chosen by the debugger state for the platform and replaced, labels
// and all, when the platform family changes. The manager is published in the
// instance's registry for as long as it lives.
class CLabelManager : public IQLabelManager2, public IQLabelManagerInternal
{
public:
    CLabelManager(IQServiceRegistry* registry, CDebuggerState& owner);
    virtual ~CLabelManager();
    CLabelManager(const CLabelManager&) = delete;
    CLabelManager& operator=(const CLabelManager&) = delete;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    // The console has no chooser to show, so the choice is always cancelled.
    HRESULT SelectLabel(std::string& name) override;

    // True when record.Name names a label of this module (any module for 0).
    virtual bool FindLabelInModule(LabelRecord& record, uint32_t module, bool exact) = 0;
    // Drops the labels without a log line: the platform that gave them is gone.
    virtual void ClearLabelsQuietly() = 0;
    virtual void RemoveModuleLabels(uint32_t module) = 0;
    // The module stamped on labels added from now on; 0 outside a load.
    virtual void SetCurrentModule(uint32_t module) = 0;
    virtual void SetDeferred(bool deferred) = 0;
    virtual void ReassignModule(uint32_t oldModule, uint32_t newModule) = 0;
    virtual HRESULT OnPlatformAttached(IQServiceRegistry* registry) = 0;

    // The program's entry, "_main" in any case, of this module only.
    bool GetEntryLabelAddress(uint32_t module, TargetAddress& address);

    IQLabelManager2* Primary() { return this; }
    uint64_t Serial() const { return serial_; }
    // True for the family driven by function name.
    virtual bool IsPlatformFunctionFamily() const = 0;

protected:
    IQServiceRegistry* registry_;
    CDebuggerState& owner_;
    uint32_t currentModule_ = 0;

private:
    uint64_t serial_;
};
