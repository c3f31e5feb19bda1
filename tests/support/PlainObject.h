#pragma once
#include "boundary/Ids.h"
#include "boundary/Unknown.h"

// An object with no interface beyond IUnknown, to stand in as a service or provider.
class PlainObject final : public IUnknown
{
public:
    HRESULT QueryInterface(const Guid& iid, void** out) override
    {
        return AnswerFrom({Ids::IUnknown}, iid, this, out);
    }
    TESSEL_NOT_REFCOUNTED
};
