#include "component/frame/CDllResource.h"

#include <dlfcn.h>

#include <vector>

#include "component/frame/StringTable.h"

namespace
{

using VersionPairFn = int32_t (*)(int32_t*, int32_t*);
using VersionFn = int32_t (*)(int32_t*);
using TextFn = int32_t (*)(char*, int32_t*);
using StringFn = int32_t (*)(uint32_t, char*, int32_t*);

constexpr int32_t kFirstBufferSize = 1024;

// Calls a text export, growing the buffer once when it says it is too small.
template <class Call> std::optional<std::string> CallWithBuffer(Call call)
{
    int32_t size = kFirstBufferSize;
    std::vector<char> buffer(static_cast<size_t>(size), '\0');
    int32_t result = call(buffer.data(), &size);
    if (result > 0) {
        if (size <= 0 || size > (1 << 24))
            return std::nullopt;
        buffer.assign(static_cast<size_t>(size), '\0');
        result = call(buffer.data(), &size);
    }
    if (result != 0)
        return std::nullopt;
    buffer.back() = '\0';
    return std::string(buffer.data());
}

} // namespace

CDllResource::CDllResource(std::string fileName) : fileName_(std::move(fileName)) {}

CDllResource::CDllResource(const CDllResource& other)
{
    Assign(other);
}

CDllResource::~CDllResource()
{
    Close();
}

CDllResource& CDllResource::Assign(const CDllResource& other)
{
    if (this == &other)
        return *this;
    Close();
    fileName_ = other.fileName_;
    productVersion_ = other.productVersion_;
    type_ = other.type_;
    interfaceMajor_ = other.interfaceMajor_;
    interfaceMinor_ = other.interfaceMinor_;
    ordinalVersion_ = other.ordinalVersion_;
    if (other.handle_ != nullptr)
        Open();
    return *this;
}

bool CDllResource::Open()
{
    Close();
    handle_ = dlopen(fileName_.c_str(), RTLD_NOW | RTLD_LOCAL);
    return handle_ != nullptr;
}

void CDllResource::Close()
{
    if (StringTable::Source() == this)
        StringTable::SetSource(nullptr);
    if (handle_ != nullptr)
        dlclose(handle_);
    handle_ = nullptr;
}

bool CDllResource::ReadInterfaceVersionOf(void* handle, int32_t& major, int32_t& minor)
{
    if (handle == nullptr)
        return false;
    auto fn = reinterpret_cast<VersionPairFn>(dlsym(handle, "GetDLLInterfaceVersion"));
    return fn != nullptr && fn(&major, &minor) == 0;
}

bool CDllResource::ReadInterfaceVersion()
{
    return ReadInterfaceVersionOf(handle_, interfaceMajor_, interfaceMinor_);
}

bool CDllResource::ReadOrdinalVersion()
{
    auto fn = handle_ ? reinterpret_cast<VersionFn>(dlsym(handle_, "GetDLLOrdinalVersion")) : nullptr;
    return fn != nullptr && fn(&ordinalVersion_) == 0;
}

std::optional<std::string> CDllResource::ReadTextExport(const char* name) const
{
    auto fn = handle_ ? reinterpret_cast<TextFn>(dlsym(handle_, name)) : nullptr;
    if (fn == nullptr)
        return std::nullopt;
    return CallWithBuffer([fn](char* buffer, int32_t* size) { return fn(buffer, size); });
}

bool CDllResource::ReadProductVersion()
{
    auto text = ReadTextExport("GetDLLProductVersion");
    if (!text)
        return false;
    productVersion_ = *text;
    return true;
}

bool CDllResource::ReadType()
{
    // A module without a type is not a failure here: its type stays empty and
    // the type check rejects it.
    if (handle_ == nullptr)
        return false;
    if (dlsym(handle_, "GetDLLType") == nullptr)
        return true;
    auto text = ReadTextExport("GetDLLType");
    if (!text)
        return false;
    type_ = *text;
    return true;
}

std::optional<std::string> CDllResource::LoadText(uint32_t id) const
{
    auto fn = handle_ ? reinterpret_cast<StringFn>(dlsym(handle_, "GetDLLString")) : nullptr;
    if (fn == nullptr)
        return std::nullopt;
    return CallWithBuffer([fn, id](char* buffer, int32_t* size) { return fn(id, buffer, size); });
}

std::unique_ptr<CDllResource> CDllResource::Load(const std::string& fileName, std::string& error)
{
    auto module = std::make_unique<CDllResource>(fileName);
    if (!module->Open()) {
        error = "Error loading resource DLL " + fileName;
        return nullptr;
    }
    if (!module->ReadInterfaceVersion()) {
        error = FormatText("Cannot read the interface version of resource DLL %s", fileName.c_str());
        return nullptr;
    }
    if (!module->ReadProductVersion()) {
        error = FormatText("Cannot read the product version of resource DLL %s", fileName.c_str());
        return nullptr;
    }
    if (!module->ReadOrdinalVersion()) {
        error = FormatText("Cannot read the ordinal version of resource DLL %s", fileName.c_str());
        return nullptr;
    }
    if (!module->ReadType()) {
        error = FormatText("Cannot read the type of resource DLL %s", fileName.c_str());
        return nullptr;
    }
    if (module->type_ != "Resource") {
        error = FormatText("Dll %s is not a resources Dll", fileName.c_str());
        return nullptr;
    }
    if (!module->InterfaceEquals(1, 0) || module->ordinalVersion_ != 1 || module->productVersion_ != "1.0") {
        error = "Incorrect version of Resources - exiting";
        return nullptr;
    }
    StringTable::SetSource(module.get());
    return module;
}

std::string CDllResource::InterfaceVersionText() const
{
    return FormatText("%d.%d", interfaceMajor_, interfaceMinor_);
}

std::string CDllResource::OrdinalVersionText() const
{
    return FormatText("%d", ordinalVersion_);
}

bool CDllResource::InterfaceAtLeast(int32_t major, int32_t minor) const
{
    return interfaceMajor_ > major || (interfaceMajor_ == major && interfaceMinor_ >= minor);
}

bool CDllResource::InterfaceEquals(int32_t major, int32_t minor) const
{
    return interfaceMajor_ == major && interfaceMinor_ == minor;
}
