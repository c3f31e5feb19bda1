#include "FakeMemory1.h"

#include "boundary/Ids.h"
#include "component/util/ObjectSerial.h"

using Op = FakeTarget::Op;

HRESULT FakeMemory1::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::IQPlatformMemory}, iid, static_cast<IQPlatformMemory*>(this), out);
}

HRESULT FakeMemory1::Read(TargetAddress start, TargetAddress end, uint8_t* buffer)
{
    return target_.Read(Op::Read, 1, start, end, 1, buffer);
}

HRESULT FakeMemory1::Write(TargetAddress start, TargetAddress end, const uint8_t* buffer)
{
    return target_.Write(Op::Write, 1, start, end, 1, buffer);
}

HRESULT FakeMemory1::ReadSized(TargetAddress start, TargetAddress end, AccessSize accessSize, uint8_t* buffer)
{
    return target_.Read(Op::ReadSized, 1, start, end, accessSize, buffer);
}

HRESULT FakeMemory1::WriteSized(TargetAddress start, TargetAddress end, AccessSize accessSize,
                                const uint8_t* buffer)
{
    return target_.Write(Op::WriteSized, 1, start, end, accessSize, buffer);
}
