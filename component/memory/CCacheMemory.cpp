#include "component/memory/CCacheMemory.h"

// The second generation is preferred; without any platform memory there is
// nothing to reach, which is a failure and not a crash.

HRESULT CCacheMemory::ReadPlatform(TargetAddress start, TargetAddress end, uint8_t* buffer)
{
    if (memory2_ != nullptr)
        return memory2_->Read(start, end, buffer);
    return memory_ != nullptr ? memory_->Read(start, end, buffer) : E_FAIL;
}

HRESULT CCacheMemory::WritePlatformReporting(TargetAddress start, TargetAddress end, VariantBool verify,
                                             const uint8_t* buffer, VariantBool& failed,
                                             TargetAddress& address, int32_t& written, int32_t& found)
{
    if (memory5_ == nullptr)
        return E_FAIL;
    return memory5_->WriteVerifiedReporting(start, end, verify, buffer, failed, address, written, found);
}

HRESULT CCacheMemory::WritePlatformVerified(TargetAddress start, TargetAddress end, VariantBool verify,
                                            const uint8_t* buffer)
{
    return memory3_ != nullptr ? memory3_->WriteVerified(start, end, verify, buffer) : E_FAIL;
}

HRESULT CCacheMemory::WritePlatform(TargetAddress start, TargetAddress end, const uint8_t* buffer)
{
    if (memory2_ != nullptr)
        return memory2_->Write(start, end, buffer);
    return memory_ != nullptr ? memory_->Write(start, end, buffer) : E_FAIL;
}
