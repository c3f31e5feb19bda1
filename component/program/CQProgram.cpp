#include "component/program/CQProgram.h"

#include <sstream>
#include <strings.h>

#include "boundary/Ids.h"
#include "boundary/interfaces/Component.h"
#include "boundary/interfaces/Platform.h"
#include "boundary/interfaces/Workbench.h"
#include "component/session/PlaceholderExpander.h"
#include "component/symbols/CLabelManager.h"
#include "component/util/MessageFormat.h"
#include "component/util/ObjectSerial.h"

namespace
{

// Labels know their module by a 32-bit number; every handle gets its own.
uint32_t NextModuleId()
{
    uint32_t id = 0;
    while (id == 0)
        id = static_cast<uint32_t>(NextObjectSerial());
    return id;
}

bool SameText(const std::string& a, const std::string& b)
{
    return strcasecmp(a.c_str(), b.c_str()) == 0;
}

} // namespace

CQProgram::CQProgram(const CDownloadModule& module, ProgramContext context, ProgramOwner& owner,
                     IQServiceRegistry* services)
    : CQProgram(module, module.DebugOnly != 0 ? 1 : 3, std::move(context), owner, services)
{
}

CQProgram::CQProgram(const CDownloadModule& module, int32_t loadMode, ProgramContext context,
                     ProgramOwner& owner, IQServiceRegistry* services)
    : fileName_(module.FileName), offset_(module.Offset), format_(module.Format), loadMode_(loadMode),
      verify_(module.Verify), accessSize_(module.AccessSize), autoDownload_(module.AutoDownload),
      context_(std::move(context)), owner_(owner), services_(services)
{
    if (!fileName_.empty() && !context_.WorkspaceName.empty() && !context_.ProjectName.empty())
        lastStatus_ = FileStatus::Of(ExpandedPath());
}

CQProgram CQProgram::ForTransfer(const std::string& fileName, uint32_t offset, const std::string& format,
                                 int32_t accessSize, ProgramContext context, ProgramOwner& owner,
                                 IQServiceRegistry* services)
{
    return CQProgram(CDownloadModule(fileName, offset, format, 0, 0, accessSize, 0), 2, std::move(context),
                     owner, services);
}

CQProgram::CQProgram(const CQProgram& other)
    : fileName_(other.fileName_), offset_(other.offset_), format_(other.format_), loadMode_(other.loadMode_),
      verify_(other.verify_), accessSize_(other.accessSize_), autoDownload_(other.autoDownload_),
      context_(other.context_), owner_(other.owner_), services_(other.services_), loaded_(other.loaded_),
      lastStatus_(other.lastStatus_)
{
}

CQProgram::~CQProgram()
{
    Close(services_);
}

HRESULT CQProgram::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQProgram, Ids::IQProgram2, Ids::IQProgram3}, iid,
                      static_cast<IQProgram3*>(this), out);
}

HRESULT CQProgram::GetFilePath(std::string& path)
{
    path = ExpandedPath();
    return path.empty() ? E_FAIL : S_OK;
}

HRESULT CQProgram::GetOffset(uint32_t& offset)
{
    offset = offset_;
    return S_OK;
}

HRESULT CQProgram::GetFormat(std::string& name)
{
    name = format_;
    return S_OK;
}

HRESULT CQProgram::IsLoaded()
{
    return loaded_ ? S_OK : E_FAIL;
}

HRESULT CQProgram::ClearAreas()
{
    areas_.Clear();
    return S_OK;
}

HRESULT CQProgram::AddArea(TargetAddress start, TargetAddress end)
{
    return areas_.AddArea(start, end) ? S_OK : E_INVALIDARG;
}

HRESULT CQProgram::GetAreaCount(uint32_t& count)
{
    count = static_cast<uint32_t>(areas_.Count());
    return S_OK;
}

HRESULT CQProgram::GetArea(uint32_t index, TargetAddress& start, TargetAddress& end)
{
    if (auto area = areas_.At(index)) {
        start = area->Start;
        end = area->End;
    }
    return S_OK;
}

HRESULT CQProgram::GetRawFileName(std::string& name)
{
    name = fileName_;
    return S_OK;
}

HRESULT CQProgram::IsVerifyOff()
{
    return verify_ == 0 ? S_OK : S_FALSE;
}

HRESULT CQProgram::SetVerify(VariantBool flag)
{
    verify_ = FromVariantBool(flag) ? 1 : 0;
    return S_OK;
}

HRESULT CQProgram::GetAccessSize(int32_t& size)
{
    size = accessSize_;
    return S_OK;
}

bool CQProgram::Open(IQServiceRegistry* services)
{
    Close(services);
    auto* factory = GetServiceAs<IQDriverFactory>(services, Ids::DriverFactory);
    if (factory == nullptr)
        return false;
    const int32_t mode = owner_.DriverMode();
    IUnknown* object = nullptr;
    if (owner_.UsesFunctionFamily()) {
        const std::string target = owner_.TargetPlatformName();
        if (factory->CheckReaderFor(format_, mode, 0, target) == S_OK)
            factory->CreateReaderFor(format_, services, -1, 0, mode, 0, target, &object);
    } else if (factory->CheckReader(format_, mode, 0) == S_OK) {
        factory->CreateReader(format_, services, -1, 0, mode, 0, &object);
    }
    if (object == nullptr)
        return false;
    readerObject_ = object;
    reader2_ = QueryAs<IQObjectReader2>(object, Ids::IQObjectReader2);
    if (reader2_ != nullptr)
        reader2_->AddRef();
    else if ((reader_ = QueryAs<IQObjectReader>(object, Ids::IQObjectReader)) != nullptr)
        reader_->AddRef();
    if (Failed(CreateHandle())) {
        Close(services);
        return false;
    }
    errorText_ = QueryAs<IQErrorReporter>(object, Ids::IQErrorReporter);
    return true;
}

void CQProgram::Close(IQServiceRegistry* services)
{
    DestroyHandle();
    IUnknown* object = readerObject_;
    readerObject_ = nullptr;
    IUnknown* reader = reader2_ != nullptr ? static_cast<IUnknown*>(reader2_) : reader_;
    reader_ = nullptr;
    reader2_ = nullptr;
    errorText_ = nullptr;
    if (object == nullptr)
        return;
    // The reader's last reference goes back to the factory that made it.
    if (reader != nullptr && reader->Release() != 0)
        return;
    if (auto* factory = GetServiceAs<IQDriverFactory>(services, Ids::DriverFactory))
        factory->ReleaseDriver(object, 0);
}

HRESULT CQProgram::CreateHandle()
{
    IUnknown* handle = nullptr;
    HRESULT hr = E_NOINTERFACE;
    if (reader2_ != nullptr)
        hr = reader2_->CreateModule(&handle, this);
    else if (reader_ != nullptr)
        hr = reader_->CreateModule(&handle, this);
    if (Failed(hr) || handle == nullptr)
        return Failed(hr) ? hr : E_FAIL;
    handle_ = handle;
    moduleId_ = NextModuleId();
    return S_OK;
}

void CQProgram::DestroyHandle()
{
    if (handle_ == nullptr)
        return;
    if (reader2_ != nullptr)
        reader2_->DestroyModule(handle_);
    else if (reader_ != nullptr)
        reader_->DestroyModule(handle_);
    handle_ = nullptr;
    moduleId_ = 0;
}

void CQProgram::Renew(CLabelManager& labels)
{
    if (handle_ != nullptr) {
        const uint32_t oldId = moduleId_;
        DestroyHandle();
        if (Succeeded(CreateHandle()) && moduleId_ != oldId)
            labels.ReassignModule(oldId, moduleId_);
    }
    loaded_ = false;
}

HRESULT CQProgram::GetSourceFiles(std::vector<std::string>& files)
{
    files.clear();
    auto* info = QueryAs<IQDebugInfo>(handle_, Ids::IQDebugInfo);
    std::string text;
    if (info == nullptr || Failed(info->GetSourceFiles(text)))
        return E_FAIL;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (!line.empty())
            files.push_back(line);
    return S_OK;
}

std::optional<FileStatus> CQProgram::ChangedStatus() const
{
    auto now = FileStatus::Of(ExpandedPath());
    if (now && lastStatus_ && !lastStatus_->TimesDiffer(*now))
        return std::nullopt;
    return now;
}

bool CQProgram::IsOutOfDate()
{
    auto changed = ChangedStatus();
    if (!changed)
        return false;
    lastStatus_ = changed;
    return true;
}

void CQProgram::CheckFile()
{
    if (ChangedStatus())
        loaded_ = false;
}

template <class... Values>
std::string CQProgram::WithFile(HRESULT code, const char* format, Values... values) const
{
    std::string text;
    if (errorText_ == nullptr || Failed(errorText_->GetErrorText(code, text)) || text.empty())
        return {};
    const std::string path = ExpandedPath();
    if (path.empty())
        return text;
    return text + MessageFormat::Format(format, path.c_str(), values...);
}

std::string CQProgram::MakeErrorText(HRESULT code) const
{
    return WithFile(code, "\r\n\r\nFile: %s");
}

std::string CQProgram::MakeErrorTextAt(HRESULT code, TargetAddress address) const
{
    return WithFile(code, "\r\n\r\nFile:\r\n%s\r\nAddress:\r\n0x%08X", address.Value());
}

std::string CQProgram::MakeVerifyErrorText(HRESULT code, TargetAddress address, int32_t memoryValue,
                                           int32_t fileValue) const
{
    return WithFile(code, "\r\n\r\nFile: %s\r\nAddress: 0x%08X\r\nValue in memory: %d\r\nValue in file: %d",
                    address.Value(), memoryValue, fileValue);
}

bool CQProgram::Matches(const std::string& name, const std::string& format,
                        std::optional<uint32_t> offset) const
{
    return (SameText(name, fileName_) || SameText(name, ExpandedPath())) && SameText(format, format_) &&
           (!offset || *offset == offset_);
}

std::string CQProgram::Key() const
{
    return CDownloadModule::Key(fileName_, offset_, format_, accessSize_);
}

std::string CQProgram::ExpandedPath() const
{
    // The session names no configuration: the active one stands in.
    return PlaceholderExpander(services_).ExpandFor(fileName_, context_.WorkspaceName, context_.ProjectName,
                                                    {});
}

CDownloadModule CQProgram::Module() const
{
    return CDownloadModule(fileName_, offset_, format_, loadMode_ == 1 ? 1 : 0, verify_, accessSize_,
                           autoDownload_);
}
