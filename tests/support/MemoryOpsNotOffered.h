#pragma once
#include "boundary/interfaces/PlatformMemory.h"

// The operations a cache never calls, answered as a platform without them
// would, so that a fake for the cache spells out only reads and writes.

struct MemoryOpsNotOffered2 : IQPlatformMemory2 {
    HRESULT CanCompare() override { return S_FALSE; }
    HRESULT CanCopy() override { return S_FALSE; }
    HRESULT CanFill() override { return S_FALSE; }
    HRESULT CanFind() override { return S_FALSE; }
    HRESULT CanFindAlternate() override { return S_FALSE; }
    HRESULT CanVerify() override { return S_FALSE; }
    HRESULT CanTest() override { return S_FALSE; }
    HRESULT GetAreaCount(uint32_t&) override { return E_NOTIMPL; }
    HRESULT GetArea(uint32_t, TargetAddress&, TargetAddress&, uint32_t&, uint32_t&, VariantBool&,
                    VariantBool&, VariantBool&, VariantBool&) override
    {
        return E_NOTIMPL;
    }
    HRESULT Compare(TargetAddress, TargetAddress, TargetAddress, AccessSize, uint8_t&, uint8_t&,
                    TargetAddress&) override
    {
        return E_NOTIMPL;
    }
    HRESULT Copy(TargetAddress, TargetAddress, TargetAddress, VariantBool, AccessSize, uint8_t&, uint8_t&,
                 TargetAddress&) override
    {
        return E_NOTIMPL;
    }
    HRESULT Fill(TargetAddress, TargetAddress, uint32_t, const uint8_t*) override { return E_NOTIMPL; }
    HRESULT Find(TargetAddress, TargetAddress, uint32_t, uint32_t, uint32_t, const uint8_t*, const uint8_t*,
                 TargetAddress&) override
    {
        return E_NOTIMPL;
    }
    HRESULT Verify(TargetAddress, TargetAddress, const uint8_t*) override { return E_NOTIMPL; }
    HRESULT Test(TargetAddress, TargetAddress) override { return E_NOTIMPL; }
    HRESULT SetDownloadMode(uint32_t) override { return E_NOTIMPL; }
};
