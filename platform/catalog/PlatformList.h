#pragma once
#include "boundary/interfaces/Platform.h"
#include "platform/catalog/PlatformTable.h"

// The catalogue of installed platforms and object readers, over a table.
class PlatformList final : public IQPlatformList
{
public:
    explicit PlatformList(const PlatformTable& table) : table_(table) {}

    HRESULT QueryInterface(const Guid& iid, void** out) override;
    TESSEL_NOT_REFCOUNTED

    HRESULT GetPlatformName(int32_t index, std::string& name) override;
    HRESULT GetCpuDriverName(const std::string& platform, std::string& driver) override;
    HRESULT GetPlatformProperty(const std::string& platform, int32_t property, uint32_t& value) override;
    HRESULT GetReaderAttribute(int32_t index, int32_t attribute, VariantBool& flag) override;
    HRESULT GetReaderName(int32_t index, std::string& name) override;
    HRESULT FindReader(const std::string& name, int32_t& index) override;
    HRESULT IsFunctionPlatform(const std::string& name) override;
    HRESULT GetReaderPlatform(int32_t index, std::string& platform) override;

private:
    const ReaderEntry* ReaderAt(int32_t index) const;

    const PlatformTable& table_;
};
