#include "app/ComponentLibrary.h"

#include <dlfcn.h>

ComponentLibrary::~ComponentLibrary()
{
    if (handle_ != nullptr)
        dlclose(handle_);
}

bool ComponentLibrary::Load(const std::string& path, std::string& error)
{
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        const char* why = dlerror();
        error = "Cannot load component " + path + (why ? std::string(": ") + why : std::string());
        return false;
    }
    auto find = [&](const char* name) -> void* {
        void* p = dlsym(handle, name);
        if (p == nullptr && error.empty())
            error = "Component " + path + " has no entry point " + name;
        return p;
    };
    error.clear();
    version_ = reinterpret_cast<VersionFn>(find("GetComponentVersion"));
    register_ = reinterpret_cast<RegisterFn>(find("LibraryRegister2"));
    create_ = reinterpret_cast<InstanceFn>(find("CreateInstance"));
    query_ = reinterpret_cast<QueryFn>(find("QueryInterface2"));
    destroy_ = reinterpret_cast<InstanceFn>(find("DestroyInstance"));
    if (!error.empty()) {
        dlclose(handle);
        return false;
    }
    handle_ = handle;
    return true;
}

HRESULT ComponentLibrary::GetComponentVersion(int32_t& major, int32_t& minor) const
{
    return version_ ? version_(&major, &minor) : E_FAIL;
}
HRESULT ComponentLibrary::LibraryRegister2(IQRegistrar* registrar) const
{
    return register_ ? register_(registrar) : E_FAIL;
}
HRESULT ComponentLibrary::CreateInstance(uint32_t id) const
{
    return create_ ? create_(id) : E_FAIL;
}
HRESULT ComponentLibrary::QueryInterface2(uint32_t id, const Guid& iid, void** out) const
{
    return query_ ? query_(id, &iid, out) : E_NOINTERFACE;
}
HRESULT ComponentLibrary::DestroyInstance(uint32_t id) const
{
    return destroy_ ? destroy_(id) : E_FAIL;
}
