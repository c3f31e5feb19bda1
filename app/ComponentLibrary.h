#pragma once
#include <cstdint>
#include <string>

#include "boundary/interfaces/Workbench.h"

// A component loaded by file name, with its five entry points found by name.
class ComponentLibrary
{
public:
    ComponentLibrary() = default;
    ~ComponentLibrary();
    ComponentLibrary(const ComponentLibrary&) = delete;
    ComponentLibrary& operator=(const ComponentLibrary&) = delete;

    // False with a message when the file cannot be loaded or lacks an entry point.
    bool Load(const std::string& path, std::string& error);
    bool Loaded() const { return handle_ != nullptr; }

    HRESULT GetComponentVersion(int32_t& major, int32_t& minor) const;
    HRESULT LibraryRegister2(IQRegistrar* registrar) const;
    HRESULT CreateInstance(uint32_t id) const;
    HRESULT QueryInterface2(uint32_t id, const Guid& iid, void** out) const;
    HRESULT DestroyInstance(uint32_t id) const;

    template <class T> T* Query(uint32_t id, const Guid& iid) const
    {
        void* out = nullptr;
        return QueryInterface2(id, iid, &out) == S_OK ? static_cast<T*>(out) : nullptr;
    }

private:
    using VersionFn = HRESULT (*)(int32_t*, int32_t*);
    using RegisterFn = HRESULT (*)(IQRegistrar*);
    using InstanceFn = HRESULT (*)(uint32_t);
    using QueryFn = HRESULT (*)(uint32_t, const Guid*, void**);

    void* handle_ = nullptr;
    VersionFn version_ = nullptr;
    RegisterFn register_ = nullptr;
    InstanceFn create_ = nullptr;
    QueryFn query_ = nullptr;
    InstanceFn destroy_ = nullptr;
};
