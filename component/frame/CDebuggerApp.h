#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <unordered_map>

#include "boundary/interfaces/Workbench.h"
#include "component/frame/CDebuggerState.h"
#include "component/session/CDyxSessionDataCtrl.h"

// The component's one process-wide object: the registry of its instances.
// Each instance id maps to a debugger state and its session controller; the
// maps own both from CreateInstance to DestroyInstance.
class CDebuggerApp
{
public:
    using StateFactory = std::function<std::unique_ptr<CDebuggerState>()>;

    static CDebuggerApp& Instance();

    HRESULT GetComponentVersion(int32_t* major, int32_t* minor);
    HRESULT LibraryRegister2(IQRegistrar* registrar);
    HRESULT CreateInstance(uint32_t id);
    HRESULT QueryInterface2(uint32_t id, const Guid* iid, void** out);
    HRESULT DestroyInstance(uint32_t id);

    CDebuggerState* FindState(uint32_t id) const;
    CDyxSessionDataCtrl* FindSession(uint32_t id) const;
    size_t InstanceCount() const { return states_.size(); }

    // How a state is made; a different factory serves tests that watch the
    // objects' lives. An empty one restores the plain state.
    void SetStateFactory(StateFactory factory) { factory_ = std::move(factory); }

private:
    // Declared state first, so that at unload too the controllers go first.
    std::unordered_map<uint32_t, std::unique_ptr<CDebuggerState>> states_;
    std::unordered_map<uint32_t, std::unique_ptr<CDyxSessionDataCtrl>> sessions_;
    StateFactory factory_;
};
