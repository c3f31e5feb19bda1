#include "component/frame/CDebuggerApp.h"

#include "boundary/Ids.h"
#include "component/frame/CDebuggerState.h"
#include "component/frame/StringTable.h"
#include "component/session/CDyxSessionDataCtrl.h"

CDebuggerApp& CDebuggerApp::Instance()
{
    static CDebuggerApp app;
    return app;
}

HRESULT CDebuggerApp::GetComponentVersion(int32_t* major, int32_t* minor)
{
    if (major)
        *major = 1;
    if (minor)
        *minor = 0;
    return S_OK;
}

HRESULT CDebuggerApp::LibraryRegister2(IQRegistrar* registrar)
{
    if (registrar == nullptr)
        return E_POINTER;
    // The display name always comes from the component's own table: no
    // resource module is installed when the workbench registers components.
    const std::string name = StringTable::OwnText(57640);
    static constexpr const Guid* kDataTypes[] = {&Ids::SessionDataType};
    registrar->RegisterComponent(name, 1, kDataTypes, 0, 1, 0, Ids::Component);
    registrar->RegisterDataType("Generic DYX Session", 1, 1, 0, Ids::SessionDataType);
    return S_OK;
}

HRESULT CDebuggerApp::CreateInstance(uint32_t id)
{
    std::unique_ptr<CDebuggerState> state = factory_ ? factory_() : std::make_unique<CDebuggerState>();
    auto session = std::make_unique<CDyxSessionDataCtrl>(*state, state->GetRunner());
    // A key in use is overwritten; the objects it held are the workbench's
    // mistake, and are destroyed rather than leaked.
    DestroyInstance(id);
    states_[id] = state.release();
    sessions_[id] = session.release();
    return S_OK;
}

HRESULT CDebuggerApp::QueryInterface2(uint32_t id, const Guid* iid, void** out)
{
    if (out == nullptr || iid == nullptr)
        return E_NOINTERFACE;
    *out = nullptr;
    CDebuggerState* state = FindState(id);
    CDyxSessionDataCtrl* session = FindSession(id);
    if (state != nullptr && state->QueryInterface(*iid, out) == S_OK)
        return S_OK;
    if (session != nullptr && session->QueryInterface(*iid, out) == S_OK)
        return S_OK;
    *out = nullptr;
    return E_NOINTERFACE;
}

HRESULT CDebuggerApp::DestroyInstance(uint32_t id)
{
    CDebuggerState* state = FindState(id);
    CDyxSessionDataCtrl* session = FindSession(id);
    states_.erase(id);
    sessions_.erase(id);
    delete state;
    delete session;
    return S_OK;
}

CDebuggerState* CDebuggerApp::FindState(uint32_t id) const
{
    auto it = states_.find(id);
    return it == states_.end() ? nullptr : it->second;
}

CDyxSessionDataCtrl* CDebuggerApp::FindSession(uint32_t id) const
{
    auto it = sessions_.find(id);
    return it == sessions_.end() ? nullptr : it->second;
}
