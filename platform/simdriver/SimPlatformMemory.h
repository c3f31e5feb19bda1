#pragma once
#include "boundary/interfaces/PlatformMemory.h"

class SimTarget;

// The simulated target's memory as the platform offers it: the debugger reads
// and writes any mapped byte while the target is halted. The simulator has no
// bus widths, so a sized access moves the same bytes as a plain one.
class SimPlatformMemory final : public IQPlatformMemory,
                                public IQPlatformMemory2,
                                public IQPlatformMemory3,
                                public IQPlatformMemory5
{
public:
    explicit SimPlatformMemory(SimTarget& target) : target_(target) {}

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT Read(TargetAddress start, TargetAddress end, uint8_t* buffer) override;
    HRESULT Write(TargetAddress start, TargetAddress end, const uint8_t* buffer) override;
    HRESULT ReadSized(TargetAddress start, TargetAddress end, AccessSize size, uint8_t* buffer) override;
    HRESULT WriteSized(TargetAddress start, TargetAddress end, AccessSize size,
                       const uint8_t* buffer) override;
    HRESULT Refresh() override { return S_OK; }
    HRESULT GetPageSize(uint32_t& size) override;
    HRESULT WriteVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                          const uint8_t* buffer) override;
    HRESULT WriteSizedVerified(TargetAddress start, TargetAddress end, VariantBool verify, AccessSize size,
                               const uint8_t* buffer) override;
    HRESULT WriteVerifiedReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                   const uint8_t* buffer, VariantBool& failed, TargetAddress& address,
                                   int32_t& written, int32_t& found) override;
    HRESULT WriteSizedVerifiedReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                        AccessSize size, const uint8_t* buffer, VariantBool& failed,
                                        TargetAddress& address, int32_t& written, int32_t& found) override;

    // Codes of the error table for the two ways memory access fails.
    static constexpr HRESULT kCannotRead = static_cast<HRESULT>(0x80043092u);
    static constexpr HRESULT kCannotWrite = static_cast<HRESULT>(0x80043093u);
    static constexpr HRESULT kVerifyFailed = static_cast<HRESULT>(0x80042022u);

private:
    SimTarget& target_;
};
