#pragma once
#include <cstdint>
#include <string>

#include "boundary/Event.h"
#include "boundary/interfaces/Disassembly.h"
#include "boundary/interfaces/Workbench.h"

class CDebuggerState;

// The server of one disassembly view. Events reach it in two passes: first
// every server drops what an event made stale, then every server tells its
// view, so no view redraws from a server that has not caught up yet.
class CDisassemble : public IQDisassemblyClient
{
public:
    CDisassemble(CDebuggerState& state, IQServiceRegistry* registry, IQDisassemblyDataClient* client);
    virtual ~CDisassemble() = default;

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED
    HRESULT Refresh() override;

    // First pass of an event.
    virtual void OnEvent(const Event& event);
    // Second pass of an event.
    virtual void OnEventNotify(const Event& event);
    // Bit 0: a step sequence is under way; bit 1: it runs without refresh.
    void SetDisplayFlags(uint32_t flags);

    bool Ready() const { return ready_; }
    uint32_t DisplayFlags() const { return displayFlags_; }
    IQDisassemblyDataClient* Client() const { return client_; }

private:
    bool ReadPC(uint32_t& pc) const;
    void RefreshPC(bool force);
    void ForgetAll() { stale_ = true; }

    CDebuggerState& state_;
    IQServiceRegistry* registry_;
    IQDisassemblyDataClient* client_;
    bool ready_ = false;
    bool programLoaded_ = false;
    bool windowActive_ = false;
    bool stale_ = true;
    uint32_t displayFlags_ = 0;
    uint32_t lastPC_ = 0;
    std::string lastFile_;
    int32_t lastLine_ = 0;
};
