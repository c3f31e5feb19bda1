#include "component/disassembly/CDisassemble.h"

#include "boundary/Ids.h"
#include "boundary/interfaces/Platform.h"
#include "component/frame/CDebuggerState.h"
#include "component/run/CRunner.h"
#include "component/util/ObjectSerial.h"

namespace
{

// Reasons given to OnDataChanged.
constexpr int32_t kReasonPrograms = 2;
constexpr int32_t kReasonMemory = 4;
constexpr int32_t kReasonView = 8;
constexpr int32_t kReasonLabels = 0x10;
constexpr int32_t kReasonMemoryStepping = 0x20;
constexpr int32_t kReasonMemoryRunning = 0x40;

} // namespace

CDisassemble::CDisassemble(CDebuggerState& state, IQServiceRegistry* registry,
                           IQDisassemblyDataClient* client)
    : state_(state), registry_(registry), client_(client)
{
    ready_ = state_.IsConnected();
    programLoaded_ = state_.GetProgramCountA() > 0;
}

HRESULT CDisassemble::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQDisassemblyClient}, iid, static_cast<IQDisassemblyClient*>(this),
                      out);
}

HRESULT CDisassemble::Refresh()
{
    if (!windowActive_) {
        ForgetAll();
        client_->OnDataChanged(1);
    }
    return S_OK;
}

bool CDisassemble::ReadPC(uint32_t& pc) const
{
    auto* registers = GetServiceAs<IQPlatformRegisters>(registry_, Ids::IQPlatformRegisters);
    return registers != nullptr && registers->GetRegister(0, pc) == S_OK;
}

void CDisassemble::RefreshPC(bool force)
{
    uint32_t pc = 0;
    if (!ReadPC(pc) || (!force && pc == lastPC_))
        return;
    client_->OnStopLine(pc, lastFile_, lastLine_, 2);
    client_->OnPCLine(pc, lastFile_, lastLine_, 2);
    lastPC_ = pc;
}

void CDisassemble::OnEvent(const Event& event)
{
    const Guid& id = event.id;
    if (id == Ids::EVENT_DISCONNECTED || id == Ids::EVENT_INITIALISING) {
        ready_ = false;
        programLoaded_ = false;
        lastPC_ = 0;
    } else if (id == Ids::EVENT_CONNECTED) {
        windowActive_ = false;
        ForgetAll();
        ready_ = true;
        programLoaded_ = state_.GetProgramCountA() > 0;
    } else if (id == Ids::EVENT_PROGRAMS_CHANGED) {
        bool loaded = state_.GetProgramCountA() > 0;
        if (!windowActive_) {
            ForgetAll();
            if (loaded != programLoaded_)
                loaded ? client_->OnProgramLoaded() : client_->OnProgramUnloaded();
            client_->OnDataChanged(kReasonPrograms);
        }
        programLoaded_ = loaded;
        RefreshPC(true);
    } else if (id == Ids::EVENT_MEMORY_CHANGED) {
        if (!windowActive_) {
            ForgetAll();
            int32_t reason = (displayFlags_ & 1)               ? kReasonMemoryStepping
                             : state_.GetRunner()->IsRunning() ? kReasonMemoryRunning
                                                               : kReasonMemory;
            client_->OnDataChanged(reason);
        }
    } else if (id == Ids::EVENT_VIEW_REFRESH) {
        if (!windowActive_) {
            ForgetAll();
            client_->OnDataChanged(kReasonView);
        }
    } else if (id == Ids::EVENT_LABELS_CHANGED) {
        if (!windowActive_) {
            ForgetAll();
            client_->OnDataChanged(kReasonLabels);
        }
    } else if (id == Ids::EVENT_REGISTER_CHANGED) {
        RefreshPC(false);
    } else if (id == Ids::EVENT_TARGET_STOPPED) {
        uint32_t pc = 0;
        if (ReadPC(pc)) {
            client_->OnStopLine(pc, lastFile_, lastLine_, 1);
            lastPC_ = pc;
        }
    } else if (id == Ids::EVENT_TARGET_RUNNING) {
        client_->OnTargetRunning();
    }
}

void CDisassemble::OnEventNotify(const Event& event)
{
    const Guid& id = event.id;
    if (id == Ids::EVENT_DISCONNECTED || id == Ids::EVENT_INITIALISING) {
        client_->OnDisconnected();
    } else if (id == Ids::EVENT_CONNECTED) {
        client_->OnConnected();
        ReadPC(lastPC_);
    } else if (id == Ids::EVENT_TARGET_STOPPED) {
        client_->OnPCLine(lastPC_, lastFile_, lastLine_, 1);
    }
}

void CDisassemble::SetDisplayFlags(uint32_t flags)
{
    displayFlags_ = flags;
    client_->OnDisplayFlags(flags);
}
