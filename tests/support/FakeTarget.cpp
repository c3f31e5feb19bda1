#include "FakeTarget.h"

uint8_t FakeTarget::ByteAt(TargetAddress address) const
{
    const auto it = written_.find(address);
    return it != written_.end() ? it->second : Pattern(address);
}

HRESULT FakeTarget::Read(Op op, int generation, TargetAddress start, TargetAddress end, AccessSize size,
                         uint8_t* buffer)
{
    calls.push_back({op, generation, start, end, size});
    if (failingReads > 0) {
        --failingReads;
        return failCode;
    }
    if (end < start)
        return E_INVALIDARG;
    for (uint64_t a = start.Value(); a <= end.Value(); ++a)
        buffer[a - start.Value()] = ByteAt(TargetAddress(static_cast<uint32_t>(a)));
    return S_OK;
}

HRESULT FakeTarget::Write(Op op, int generation, TargetAddress start, TargetAddress end, AccessSize size,
                          const uint8_t* buffer)
{
    calls.push_back({op, generation, start, end, size});
    if (end < start)
        return E_INVALIDARG;
    for (uint64_t a = start.Value(); a <= end.Value(); ++a)
        written_[TargetAddress(static_cast<uint32_t>(a))] = buffer[a - start.Value()];
    return writeResult;
}
