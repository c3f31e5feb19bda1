#pragma once
#include <initializer_list>

#include "boundary/Guid.h"
#include "boundary/HResult.h"

// The workbench's services are single-interface objects, so every identity they
// answer maps to the same pointer; this keeps each QueryInterface to one line.
inline HRESULT AnswerQuery(const Guid& iid, void** out, void* self, std::initializer_list<Guid> answered)
{
    if (out == nullptr)
        return E_POINTER;
    for (const Guid& id : answered) {
        if (id == iid) {
            *out = self;
            return S_OK;
        }
    }
    *out = nullptr;
    return E_NOINTERFACE;
}
