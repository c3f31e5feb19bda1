#pragma once
#include <string>

#include "boundary/Event.h"
#include "boundary/Unknown.h"

struct IQServiceRegistry;

// What the workbench calls on every component it holds.
struct IQComponent : IUnknown {
    virtual HRESULT OnEvent(const Event& event) = 0;                           // 3
    virtual HRESULT Initialise(IQServiceRegistry* registry, int32_t flag) = 0; // 4
    virtual HRESULT Reserved5() = 0;                                           // 5
    virtual HRESULT Reserved6() = 0;                                           // 6
    virtual HRESULT Terminate(int32_t flag) = 0;                               // 7
};

// Text of a result code, answered by every object that has codes of its own.
struct IQErrorReporter : IUnknown {
    virtual HRESULT GetErrorText(HRESULT code, std::string& text) = 0; // 3
};

struct IQRegistryClient : IUnknown {
    virtual HRESULT OnRegistry(IUnknown* argument) = 0; // 3
};

// Deferred calls come back here on the main thread.
struct IQPostMessageClient : IUnknown {
    virtual HRESULT OnPostedMessage(uint32_t value) = 0; // 3
};

// Timers of the post-message service fire here, on the main thread.
struct IQTimerClient : IUnknown {
    virtual HRESULT OnTimer(uint32_t id) = 0; // 3
};

struct IQFileMonitorClient : IUnknown {
    virtual HRESULT OnFileChanged(const std::string& path) = 0; // 3
};
