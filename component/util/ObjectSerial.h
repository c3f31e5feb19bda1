#pragma once
#include <cstdint>
#include <initializer_list>

#include "boundary/Unknown.h"

// Each replaceable manager carries a serial number, so that a caller can tell a
// rebuilt manager from the one it replaced even when it lands at the same address.
uint64_t NextObjectSerial();

// QueryInterface over a fixed list of identifiers that all give the same face.
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
