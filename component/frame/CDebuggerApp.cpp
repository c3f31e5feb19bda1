#include "component/frame/CDebuggerApp.h"

#include "boundary/Ids.h"
#include "component/frame/StringTable.h"

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
    // Without a registrar there is nothing to tell; the load still succeeds.
    if (registrar == nullptr)
        return S_OK;
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
    // A key in use is the workbench's mistake: the instance it held is ended
    // as the workbench would have ended it, rather than leaked or left
    // registered after its death.
    if (CDebuggerState* old = FindState(id))
        old->Terminate(1);
    if (CDyxSessionDataCtrl* old = FindSession(id))
        old->Terminate(1);
    DestroyInstance(id);
    states_[id] = std::move(state);
    sessions_[id] = std::move(session);
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
    // Both keys go before either object: a destructor finds the instance unlisted.
    std::unique_ptr<CDebuggerState> state;
    std::unique_ptr<CDyxSessionDataCtrl> session;
    if (auto it = states_.find(id); it != states_.end()) {
        state = std::move(it->second);
        states_.erase(it);
    }
    if (auto it = sessions_.find(id); it != sessions_.end()) {
        session = std::move(it->second);
        sessions_.erase(it);
    }
    // The controller refers to the state, so it goes first.
    session.reset();
    state.reset();
    return S_OK;
}

CDebuggerState* CDebuggerApp::FindState(uint32_t id) const
{
    auto it = states_.find(id);
    return it == states_.end() ? nullptr : it->second.get();
}

CDyxSessionDataCtrl* CDebuggerApp::FindSession(uint32_t id) const
{
    auto it = sessions_.find(id);
    return it == sessions_.end() ? nullptr : it->second.get();
}
