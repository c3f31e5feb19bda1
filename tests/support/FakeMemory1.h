#pragma once
#include "FakeTarget.h"
#include "MemoryOpsNotOffered.h"

// The first interface generation over a FakeTarget; its calls are tagged 1.
class FakeMemory1 : public MemoryOpsNotOffered1
{
public:
    explicit FakeMemory1(FakeTarget& target) : target_(target) {}

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT Read(TargetAddress start, TargetAddress end, uint8_t* buffer) override;
    HRESULT Write(TargetAddress start, TargetAddress end, const uint8_t* buffer) override;
    HRESULT ReadSized(TargetAddress start, TargetAddress end, AccessSize accessSize,
                      uint8_t* buffer) override;
    HRESULT WriteSized(TargetAddress start, TargetAddress end, AccessSize accessSize,
                       const uint8_t* buffer) override;
    HRESULT Refresh() override { return S_OK; }

private:
    FakeTarget& target_;
};
