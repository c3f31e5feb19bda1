#pragma once
#include <cstdint>
#include <initializer_list>

#include "boundary/Guid.h"
#include "boundary/HResult.h"

// Every interface starts with these three operations, slots 0 to 2. Objects of
// this system are not reference counted: AddRef answers 1 and Release 0, and an
// object lives as long as its owner says. There is no virtual destructor: it
// would take a slot, and no one deletes an object through an interface.
struct IUnknown {
    virtual HRESULT QueryInterface(const Guid& iid, void** out) = 0;
    virtual uint32_t AddRef() = 0;
    virtual uint32_t Release() = 0;

protected:
    ~IUnknown() = default;
};

// For objects owned by someone: AddRef and Release in one line.
#define TESSEL_NOT_REFCOUNTED                                                                                \
    uint32_t AddRef() override                                                                               \
    {                                                                                                        \
        return 1;                                                                                            \
    }                                                                                                        \
    uint32_t Release() override                                                                              \
    {                                                                                                        \
        return 0;                                                                                            \
    }

// Typed QueryInterface for callers.
template <class T> T* QueryAs(IUnknown* object, const Guid& iid)
{
    void* out = nullptr;
    if (object == nullptr || object->QueryInterface(iid, &out) != S_OK)
        return nullptr;
    return static_cast<T*>(out);
}

// QueryInterface of an object whose identities all give the same face.
inline HRESULT AnswerFrom(std::initializer_list<Guid> ids, const Guid& iid, void* face, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    for (const auto& id : ids) {
        if (id == iid) {
            *out = face;
            return S_OK;
        }
    }
    *out = nullptr;
    return E_NOINTERFACE;
}
