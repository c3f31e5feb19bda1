#include "component/session/CDyxSessionDataCtrl.h"

#include "boundary/Ids.h"
#include "component/command/CCmdConnect.h"
#include "component/command/CCmdEvaluate.h"
#include "component/frame/CDebuggerState.h"
#include "component/frame/CDllResource.h"
#include "component/program/CDownloadModuleFileManager.h"
#include "component/symbols/CLabelManager.h"
#include "component/util/PathUtil.h"

namespace
{

std::optional<std::string>& ModulePathOverride()
{
    static std::optional<std::string> path;
    return path;
}

} // namespace

void CDyxSessionDataCtrl::OverrideModulePath(std::optional<std::string> path)
{
    ModulePathOverride() = path;
}

CDyxSessionDataCtrl::CDyxSessionDataCtrl(CDebuggerState& state, CRunner* runner)
    : state_(state), runner_(runner)
{
}

CDyxSessionDataCtrl::~CDyxSessionDataCtrl() = default;

HRESULT CDyxSessionDataCtrl::QueryInterface(const Guid& iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (iid == Ids::IUnknown || iid == Ids::SessionDataType)
        *out = static_cast<IQRegistryClient*>(this);
    else if (iid == Ids::IQComponent)
        *out = static_cast<IQComponent*>(this);
    else if (iid == Ids::IQErrorReporter)
        *out = static_cast<IQErrorReporter*>(this);
    else if (iid == Ids::IQWorkSpaceExtendedClient)
        *out = static_cast<IQWorkSpaceExtendedClient*>(this);
    return *out ? S_OK : E_NOINTERFACE;
}

HRESULT CDyxSessionDataCtrl::OnEvent(const Event&)
{
    return S_OK;
}

HRESULT CDyxSessionDataCtrl::GetErrorText(HRESULT code, std::string& text)
{
    return errorTable_ ? errorTable_->GetText(code, text) : E_FAIL;
}

void CDyxSessionDataCtrl::ShowMessage(const std::string& text, MessageIcon icon)
{
    if (auto* box = GetServiceAs<IQMessageBox>(registry_, Ids::MessageBoxService))
        box->ShowMessage(text, icon);
}

HRESULT CDyxSessionDataCtrl::Initialise(IQServiceRegistry* registry, int32_t flag)
{
    if (!flag || registry == nullptr)
        return S_OK;
    registry_ = registry;
    errorTable_ = GetServiceAs<IQErrorTable>(registry, Ids::ErrorTable);
    InstallResourceModule();
    // Without a resource module the component's own texts stand in, so the
    // questions and error texts are registered either way and the session
    // keeps working.
    state_.RegisterPrompts();
    state_.RegisterErrorTexts();
    fileManager_ = std::make_unique<CDownloadModuleFileManager>(state_.FileManagerFace(), registry);
    state_.SetFileManager(fileManager_.get());
    evaluate_ = std::make_unique<CCmdEvaluate>(registry);
    connect_ = std::make_unique<CCmdConnect>(registry, state_);
    registry->RegisterProvider(Ids::IQWorkSpaceExtendedClient, static_cast<IQWorkSpaceExtendedClient*>(this));
    return S_OK;
}

void CDyxSessionDataCtrl::InstallResourceModule()
{
    auto own = ModulePathOverride() ? ModulePathOverride() : PathUtil::OwnModulePath();
    if (!own || own->empty()) {
        ShowMessage("Cannot obtain module. File name missing.\nPlease read User Guide to create/install a "
                    "new version.",
                    MessageIcon::Stop);
        ShowMessage("Application will now exit", MessageIcon::Information);
        return;
    }
    std::string file = PathUtil::Join(PathUtil::DirectoryOf(*own), "DebuggerExtRes.dll");
    std::string error;
    resource_ = CDllResource::Load(file, error);
    if (!resource_)
        ShowMessage(error, MessageIcon::Stop);
}

HRESULT CDyxSessionDataCtrl::Terminate(int32_t flag)
{
    if (!flag)
        return S_OK;
    if (registry_ != nullptr)
        registry_->UnregisterProvider(Ids::IQWorkSpaceExtendedClient,
                                      static_cast<IQWorkSpaceExtendedClient*>(this));
    state_.SetFileManager(nullptr);
    fileManager_.reset();
    connect_.reset();
    evaluate_.reset();
    resource_.reset();
    registry_ = nullptr;
    errorTable_ = nullptr;
    return S_OK;
}

HRESULT CDyxSessionDataCtrl::SessionOpening(Name ws, Name project, Name cfg, Name session)
{
    state_.SetSessionKey(ws, project, cfg, session);
    return state_.OpenSession(true, false, false);
}

HRESULT CDyxSessionDataCtrl::SessionOpened(Name, Name, Name, Name)
{
    state_.FinishOpenSession();
    return S_OK;
}

HRESULT CDyxSessionDataCtrl::WorkspaceClosed(Name)
{
    if (fileManager_)
        fileManager_->ClearAll();
    return S_OK;
}

// The session's modules leave its project's file lists until their next download.
HRESULT CDyxSessionDataCtrl::SessionLeft(Name, Name project, Name, Name)
{
    if (!fileManager_)
        return S_OK;
    const ProgramList& programs = state_.GetPrograms();
    for (int32_t i = 0; i < programs.Count(); ++i) {
        std::string path;
        programs.At(i)->GetFilePath(path);
        fileManager_->ForgetModule(project, path);
    }
    return S_OK;
}

HRESULT CDyxSessionDataCtrl::WorkspaceClosing(Name)
{
    HRESULT hr = state_.CloseSession();
    if (state_.GetLabels() != nullptr && state_.GetPlatformMode() == PLATFORM_MODE_VEL)
        state_.GetLabels()->ClearLabelsQuietly();
    return hr;
}
