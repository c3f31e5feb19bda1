#pragma once
#include <memory>
#include <optional>
#include <string>

#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/Debugger.h"
#include "boundary/interfaces/Workbench.h"

class CDebuggerState;
class CRunner;
class CDllResource;
class CCmd;
class CDownloadModuleFileManager;

// The second half of a debugger instance: what the workbench sees as the
// owner of the session's data. It installs the resource module the texts come
// from.
class CDyxSessionDataCtrl : public IQRegistryClient,
                            public IQComponent,
                            public IQErrorReporter,
                            public IQWorkSpaceExtendedClient
{
public:
    CDyxSessionDataCtrl(CDebuggerState& state, CRunner* runner);
    virtual ~CDyxSessionDataCtrl();

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT OnRegistry(IUnknown*) override { return S_OK; }
    HRESULT OnEvent(const Event& event) override;
    HRESULT Initialise(IQServiceRegistry* registry, int32_t flag) override;
    HRESULT Reserved5() override { return S_OK; }
    HRESULT Reserved6() override { return S_OK; }
    HRESULT Terminate(int32_t flag) override;
    HRESULT GetErrorText(HRESULT code, std::string& text) override;

    // IQWorkSpaceExtendedClient
    HRESULT WorkspaceClosing(Name ws) override;
    HRESULT WorkspaceClosed(Name) override;
    HRESULT SessionLeaving(Name, Name, Name, Name) override { return S_OK; }
    HRESULT SessionLeft(Name, Name project, Name, Name) override;
    HRESULT SessionOpening(Name ws, Name project, Name cfg, Name session) override;
    HRESULT SessionOpened(Name ws, Name project, Name cfg, Name session) override;

    const CDllResource* Resource() const { return resource_.get(); }
    CDownloadModuleFileManager* FileManager() const { return fileManager_.get(); }

    // Where the component's own file is looked for. Tests and packagers point
    // it elsewhere; nullopt goes back to the file that holds this code.
    static void OverrideModulePath(std::optional<std::string> path);

private:
    void InstallResourceModule();
    void ShowMessage(const std::string& text, MessageIcon icon);

    CDebuggerState& state_;
    CRunner* runner_;
    IQServiceRegistry* registry_ = nullptr;
    IQErrorTable* errorTable_ = nullptr;
    std::unique_ptr<CDllResource> resource_;
    // The commands that exist from the start of the session.
    std::unique_ptr<CCmd> evaluate_;
    std::unique_ptr<CCmd> connect_;
    // The files of debug-only projects, for as long as the session control lives.
    std::unique_ptr<CDownloadModuleFileManager> fileManager_;
};
