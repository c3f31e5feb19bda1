#include "platform/catalog/PlatformList.h"

#include <strings.h>

#include "boundary/Ids.h"

HRESULT PlatformList::QueryInterface(const Guid& iid, void** out)
{
    return AnswerFrom({Ids::IUnknown, Ids::PlatformList}, iid, static_cast<IQPlatformList*>(this), out);
}

HRESULT PlatformList::GetPlatformName(int32_t index, std::string& name)
{
    if (index < 0 || static_cast<size_t>(index) >= table_.platforms.size())
        return E_FAIL;
    name = table_.platforms[static_cast<size_t>(index)].name;
    return S_OK;
}

HRESULT PlatformList::GetCpuDriverName(const std::string& platform, std::string& driver)
{
    const PlatformEntry* entry = table_.Find(platform);
    if (entry == nullptr)
        return E_FAIL;
    driver = entry->cpuDriver;
    return S_OK;
}

HRESULT PlatformList::GetPlatformProperty(const std::string& platform, int32_t property, uint32_t& value)
{
    value = 0;
    const PlatformEntry* entry = table_.Find(platform);
    if (entry == nullptr)
        return E_FAIL;
    if (property != 1)
        return E_INVALIDARG;
    value = entry->alwaysConnected ? 1 : 0;
    return S_OK;
}

const ReaderEntry* PlatformList::ReaderAt(int32_t index) const
{
    if (index < 0 || static_cast<size_t>(index) >= table_.readers.size())
        return nullptr;
    return &table_.readers[static_cast<size_t>(index)];
}

HRESULT PlatformList::GetReaderAttribute(int32_t index, int32_t attribute, VariantBool& flag)
{
    flag = VARIANT_FALSE;
    const ReaderEntry* entry = ReaderAt(index);
    if (entry == nullptr)
        return E_FAIL;
    if (attribute != READER_SAVES_MEMORY && attribute != READER_VERIFIES)
        return E_INVALIDARG;
    const bool has = attribute == READER_SAVES_MEMORY ? entry->savesMemory : entry->verifies;
    flag = has ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT PlatformList::GetReaderName(int32_t index, std::string& name)
{
    const ReaderEntry* entry = ReaderAt(index);
    if (entry == nullptr)
        return E_FAIL;
    name = entry->name;
    return S_OK;
}

HRESULT PlatformList::FindReader(const std::string& name, int32_t& index)
{
    for (size_t i = 0; i < table_.readers.size(); ++i) {
        if (strcasecmp(table_.readers[i].name.c_str(), name.c_str()) == 0) {
            index = static_cast<int32_t>(i);
            return S_OK;
        }
    }
    return E_FAIL;
}

HRESULT PlatformList::IsFunctionPlatform(const std::string& name)
{
    const PlatformEntry* entry = table_.Find(name);
    return entry != nullptr && entry->functionFamily ? S_OK : S_FALSE;
}

HRESULT PlatformList::GetReaderPlatform(int32_t index, std::string& platform)
{
    const ReaderEntry* entry = ReaderAt(index);
    if (entry == nullptr)
        return E_FAIL;
    platform = entry->platform;
    return platform.empty() ? S_FALSE : S_OK;
}
