#include "component/memory/CCacheMemoryWithSize.h"

CCacheMemoryWithSize::CCacheMemoryWithSize(AccessSize accessSize, uint32_t /*alignment*/,
                                           IQPlatformMemory* memory, IQPlatformMemory2* memory2,
                                           IQPlatformMemory3* memory3, bool enabled)
    : CCache(memory, memory2, memory3, enabled), accessSize_(accessSize)
{
}

HRESULT CCacheMemoryWithSize::ReadPlatform(TargetAddress start, TargetAddress end, uint8_t* buffer)
{
    if (memory2_ != nullptr)
        return memory2_->ReadSized(start, end, accessSize_, buffer);
    return memory_ != nullptr ? memory_->ReadSized(start, end, accessSize_, buffer) : E_FAIL;
}

HRESULT CCacheMemoryWithSize::WritePlatformReporting(TargetAddress start, TargetAddress end,
                                                     VariantBool verify, const uint8_t* buffer,
                                                     VariantBool& failed, TargetAddress& address,
                                                     int32_t& written, int32_t& found)
{
    if (memory5_ == nullptr)
        return E_FAIL;
    return memory5_->WriteSizedVerifiedReporting(start, end, verify, accessSize_, buffer, failed, address,
                                                 written, found);
}

HRESULT CCacheMemoryWithSize::WritePlatformVerified(TargetAddress start, TargetAddress end,
                                                    VariantBool verify, const uint8_t* buffer)
{
    return memory3_ != nullptr ? memory3_->WriteSizedVerified(start, end, verify, accessSize_, buffer)
                               : E_FAIL;
}

HRESULT CCacheMemoryWithSize::WritePlatform(TargetAddress start, TargetAddress end, const uint8_t* buffer)
{
    if (memory2_ != nullptr)
        return memory2_->WriteSized(start, end, accessSize_, buffer);
    return memory_ != nullptr ? memory_->WriteSized(start, end, accessSize_, buffer) : E_FAIL;
}
