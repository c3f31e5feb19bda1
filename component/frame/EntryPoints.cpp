// The five functions the workbench finds by name. Everything else of the
// component is reached through the interfaces they hand out.
#include "boundary/Guid.h"
#include "boundary/HResult.h"
#include "component/frame/CDebuggerApp.h"

extern "C" {

HRESULT GetComponentVersion(int32_t* major, int32_t* minor)
{
    return CDebuggerApp::Instance().GetComponentVersion(major, minor);
}

HRESULT LibraryRegister2(IQRegistrar* registrar)
{
    return CDebuggerApp::Instance().LibraryRegister2(registrar);
}

HRESULT CreateInstance(uint32_t id)
{
    return CDebuggerApp::Instance().CreateInstance(id);
}

HRESULT QueryInterface2(uint32_t id, const Guid* iid, void** out)
{
    return CDebuggerApp::Instance().QueryInterface2(id, iid, out);
}

HRESULT DestroyInstance(uint32_t id)
{
    return CDebuggerApp::Instance().DestroyInstance(id);
}
}
