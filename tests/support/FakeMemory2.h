#pragma once
#include "FakeTarget.h"
#include "MemoryOpsNotOffered.h"

// The later interface generations over a FakeTarget; calls are tagged with
// the generation that served them. The fifth generation can be withheld.
class FakeMemory2 : public MemoryOpsNotOffered2, public MemoryOpsNotOffered3, public IQPlatformMemory5
{
public:
    FakeMemory2(FakeTarget& target, uint32_t pageSize) : target_(target), pageSize_(pageSize) {}

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT Read(TargetAddress start, TargetAddress end, uint8_t* buffer) override;
    HRESULT Write(TargetAddress start, TargetAddress end, const uint8_t* buffer) override;
    HRESULT ReadSized(TargetAddress start, TargetAddress end, AccessSize accessSize,
                      uint8_t* buffer) override;
    HRESULT WriteSized(TargetAddress start, TargetAddress end, AccessSize accessSize,
                       const uint8_t* buffer) override;
    HRESULT Refresh() override { return S_OK; }
    HRESULT GetPageSize(uint32_t& size) override;

    HRESULT WriteVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                          const uint8_t* buffer) override;
    HRESULT WriteSizedVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                               AccessSize accessSize, const uint8_t* buffer) override;

    HRESULT WriteVerifiedReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                   const uint8_t* buffer, VariantBool& failed, TargetAddress& address,
                                   int32_t& written, int32_t& found) override;
    HRESULT WriteSizedVerifiedReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                        AccessSize accessSize, const uint8_t* buffer, VariantBool& failed,
                                        TargetAddress& address, int32_t& written, int32_t& found) override;

    bool offerFifth = true;
    HRESULT pageSizeResult = S_OK;

private:
    HRESULT Report(HRESULT hr, TargetAddress start, VariantBool& failed, TargetAddress& address,
                   int32_t& written, int32_t& found);

    FakeTarget& target_;
    uint32_t pageSize_;
};
